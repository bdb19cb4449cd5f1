#include "window/windowfiles.h"

#include "diagnostics/reporterror.h"
#include "output/outputcheck.h"
#include "window/panelwindow.h"
#include "window/windowoptions.h"

#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

// "file: reason" without the directory, for the window.
QString shortened(const QString &error, const QString &path)
{
    return QFileInfo(path).fileName() + error.mid(path.size());
}

}

bool WindowFiles::open(const Session::Options &device, const WindowOptions &options, const QString &recording,
                       QString *error)
{
    m_recording = recording;
    m_ifExists = options.force ? LineFile::IfExists::Overwrite : LineFile::IfExists::Refuse;
    OutputCheck check(inputFiles(device));
    const QList<QPair<QString, QString>> outputs = {{QStringLiteral("--journal"), options.journal},
                                                    {QStringLiteral("--screenshot"), options.screenshot},
                                                    {QStringLiteral("--layout"), options.layout}};
    if (!recording.isEmpty() && !check.addOutput(QStringLiteral("record"), recording, true, error))
        return false;
    for (const auto &output : outputs) {
        if (!output.second.isEmpty() && !check.addOutput(output.first, output.second, options.force, error))
            return false;
    }
    return options.journal.isEmpty() || m_journal.open(options.journal, LineFile::IfExists::Overwrite, error);
}

bool WindowFiles::beginRecording(Session &session, QString *error)
{
    if (m_recording.isEmpty())
        return true;
    m_writer = std::make_unique<ScenarioWriter>(m_recording, session);
    const bool isOpen = m_writer->open(m_ifExists, error);
    if (!isOpen)
        m_writer.reset();
    return isOpen;
}

void WindowFiles::addSessionLine(const QByteArray &line)
{
    if (m_journal.isOpen() && !line.isEmpty())
        m_journal.append(line);
}

Journal::Sink WindowFiles::journalSink()
{
    if (!m_journal.isOpen())
        return {};
    return [this](const Journal::Entry &entry) { m_journal.append(entry.toJsonLine() + '\n'); };
}

void WindowFiles::watchRecording(PanelWindow &window)
{
    window.setRecording(QFileInfo(m_recording).fileName());
    QObject::connect(m_writer.get(), &ScenarioWriter::failed, &window, [this, &window](const QString &error) {
        reportError(error);
        window.setRecording({});
        window.addFailure(PanelWindow::tr("Recording ended: %1").arg(shortened(error, m_recording)));
    });
}

// A failure can occur on any thread.
void WindowFiles::watchJournal(PanelWindow &window)
{
    window.setJournalFile(QFileInfo(m_journal.path()).fileName());
    const auto report = [this, &window](const QString &error) {
        reportError(error);
        QMetaObject::invokeMethod(
            &window,
            [this, &window, error] {
                window.addFailure(PanelWindow::tr("Journal ended: %1").arg(shortened(error, m_journal.path())));
            },
            Qt::QueuedConnection);
    };
    if (m_journal.error().isEmpty())
        m_journal.setErrorHandler(report);
    else
        report(m_journal.error());
}

void WindowFiles::showIn(PanelWindow &window)
{
    if (m_writer)
        watchRecording(window);
    if (m_journal.isOpen())
        watchJournal(window);
}

void WindowFiles::reportFailures()
{
    const auto report = [](const QString &error) { reportError(error); };
    if (m_writer)
        QObject::connect(m_writer.get(), &ScenarioWriter::failed, m_writer.get(), report);
    if (!m_journal.error().isEmpty())
        report(m_journal.error());
    m_journal.setErrorHandler(report);
}

// What the component does while the session ends isn't recorded.
void WindowFiles::close(Session &session)
{
    session.journal().setSink({});
    if (m_writer)
        m_writer->close();
    m_journal.setErrorHandler({});
    m_journal.close();
}

bool WindowFiles::hasFailed() const
{
    return !m_journal.error().isEmpty() || (m_writer && !m_writer->error().isEmpty());
}

}
