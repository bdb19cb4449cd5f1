#include "commands/playoutputs.h"

#include "diagnostics/reporterror.h"
#include "output/replacefile.h"
#include "reports/htmlreport.h"
#include "reports/junitreport.h"

#include <QtCore/QDir>

namespace panelhost {

namespace {

constexpr const char *ReportFiles[] = {"report.html", "report.xml"};

bool makeDirectory(const QString &path, QString *error)
{
    if (path.isEmpty() || QDir().mkpath(path))
        return true;
    *error = QStringLiteral("The directory \"%1\" can't be created.").arg(path);
    return false;
}

}

PlayOutputs::PlayOutputs(const CommandLine &line, const QVector<Scenario> &scenarios)
    : m_report(line.parser.value(QStringLiteral("report"))),
      m_journalPath(line.parser.value(QStringLiteral("journal"))),
      m_screenshots(line.parser.value(QStringLiteral("screenshots"))),
      m_force(line.parser.isSet(QStringLiteral("force"))), m_check(inputFiles(line.session))
{
    for (const auto &scenario : scenarios) {
        for (const auto &file : scenario.files) {
            if (file != QLatin1String("-"))
                m_check.addInput(file);
        }
    }
    m_journal.setErrorHandler([this](const QString &error) { reportOnce(error); });
}

QString PlayOutputs::reportFile(const char *name) const
{
    return QDir(m_report).filePath(QString::fromLatin1(name));
}

bool PlayOutputs::check(QString *error)
{
    if (!m_journalPath.isEmpty() && !m_check.addOutput(QStringLiteral("--journal"), m_journalPath, m_force, error))
        return false;
    if (m_report.isEmpty())
        return true;
    for (const char *name : ReportFiles) {
        for (const auto &path : {reportFile(name), partialPath(reportFile(name))}) {
            if (!m_check.addOutput(QStringLiteral("--report"), path, m_force, error))
                return false;
        }
    }
    return true;
}

bool PlayOutputs::open(QString *error)
{
    return check(error) && makeDirectory(m_report, error) && makeDirectory(m_screenshots, error)
        && (m_journalPath.isEmpty() || m_journal.open(m_journalPath, LineFile::IfExists::Overwrite, error));
}

void PlayOutputs::addSessionLine(const QByteArray &line)
{
    if (m_journal.isOpen() && !line.isEmpty())
        m_journal.append(line);
}

void PlayOutputs::addEntry(const Journal::Entry &entry)
{
    if (m_journal.isOpen())
        m_journal.append(entry.toJsonLine() + '\n');
}

void PlayOutputs::writeScreenshot(const QString &scenarioFile, const StepResult &step)
{
    if (m_screenshots.isEmpty() || step.png.isEmpty())
        return;
    const auto path = QDir(m_screenshots).filePath(m_names.fileName(scenarioFile, step.screenshot));
    QString error;
    if (m_check.isFree(QStringLiteral("--screenshots"), path, &error))
        replace(path, step.png);
    else
        reportOnce(error);
}

void PlayOutputs::writeReport(const ScenarioResults &results)
{
    if (m_report.isEmpty())
        return;
    replace(reportFile(ReportFiles[0]), htmlReport(results));
    replace(reportFile(ReportFiles[1]), junitReport(results));
}

void PlayOutputs::replace(const QString &path, const QByteArray &content)
{
    QString error;
    if (!replaceFile(path, content, &error))
        reportOnce(error);
}

void PlayOutputs::close()
{
    m_journal.close();
    if (!m_journal.error().isEmpty())
        reportOnce(m_journal.error());
}

void PlayOutputs::reportOnce(const QString &error)
{
    const std::lock_guard lock(m_mutex);
    if (m_errors.contains(error))
        return;
    m_errors.append(error);
    reportError(error);
}

bool PlayOutputs::hasFailed() const
{
    const std::lock_guard lock(m_mutex);
    return !m_errors.isEmpty();
}

QStringList PlayOutputs::files() const
{
    QStringList files;
    if (!m_journalPath.isEmpty())
        files.append(m_journalPath);
    if (!m_report.isEmpty())
        files.append(reportFile(ReportFiles[0]));
    if (!m_screenshots.isEmpty())
        files.append(m_screenshots);
    return files;
}

}
