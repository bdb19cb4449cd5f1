#pragma once

#include "commands/commands.h"
#include "output/linefile.h"
#include "output/outputcheck.h"
#include "playing/scenarioresult.h"
#include "playing/screenshotnames.h"
#include "scenario/scenario.h"

#include <mutex>

namespace panelhost {

/// The output files of `play`, written during playing: the journal line by line, each screenshot when it is taken, the
/// report from time to time. Failures are written to the standard error output, each once. GUI thread, except for
/// addEntry(), which is thread-safe.
class PlayOutputs
{
public:
    PlayOutputs(const CommandLine &line, const QVector<Scenario> &scenarios);

    bool wantsReport() const { return !m_report.isEmpty(); }
    bool wantsScreenshots() const { return !m_report.isEmpty() || !m_screenshots.isEmpty(); }
    /// Makes the directories and opens the journal. Returns false, with a sentence in @p error, if that is impossible
    /// or if an input file would be overwritten.
    bool open(QString *error);

    /// Adds the line that the journal of a session begins with; empty if there is none.
    void addSessionLine(const QByteArray &line);
    void addEntry(const Journal::Entry &entry);
    void writeScreenshot(const QString &scenarioFile, const StepResult &step);
    void writeReport(const ScenarioResults &results);
    void close();
    /// True if any file could not be written.
    bool hasFailed() const;
    /// Returns the paths of the files that were written, for a message.
    QStringList files() const;

private:
    bool check(QString *error);
    void reportOnce(const QString &error);
    QString reportFile(const char *name) const;
    void replace(const QString &path, const QByteArray &content);

    const QString m_report;
    const QString m_journalPath;
    const QString m_screenshots;
    const bool m_force;
    OutputCheck m_check;
    ScreenshotNames m_names;
    mutable std::mutex m_mutex;
    QStringList m_errors;
    LineFile m_journal;
};

}
