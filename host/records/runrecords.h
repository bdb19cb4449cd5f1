#pragma once

#include "records/recordsoptions.h"
#include "records/sessionruns.h"

namespace panelhost {

/// What a command that opens sessions does for run records, by its options: saves the runs, and begins journals with
/// a session line. GUI thread, but for add().
class RunRecords
{
public:
    /// Whether runs are saved if neither option nor variable says where.
    enum class Default {
        Save,
        DoNotSave
    };

    ~RunRecords();

    /// The options --records, --unit, --station and --operator.
    static QList<QCommandLineOption> options();

    /// Returns false, with one sentence in @p error, for a wrong value. Nothing is opened yet; what can't be opened or
    /// saved later is told to @p listener on any thread.
    bool open(const QCommandLineParser &parser, Default fallback, const RunSaver::Listener &listener, QString *error);

    /// A session begins. Returns the line, with its end, that its journal begins with; empty if runs aren't saved and
    /// nobody has said who is tested.
    QByteArray beginSession(const QString &language, const QString &share);
    void add(const Journal::Entry &entry);
    void endSession();

    /// Waits until all runs were saved. Returns false, after a sentence to the listener, if some could not be.
    bool finish();

private:
    std::unique_ptr<RunSaver> m_saver;
    std::unique_ptr<SessionRuns> m_sessionRuns;
    RunSaver::Listener m_listener;
    QString m_unit;
    QString m_station;
    QString m_operator;
};

}
