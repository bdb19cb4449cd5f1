#include "services/logexportservice.h"

#include "device/faults.h"
#include "time/virtualclock.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <future>

namespace panelhost {

using LCD::RepairMode::LogExportReport;

namespace {

constexpr Milliseconds PartTime = 50; // between the reports

LogExportReport::State stateOf(int error)
{
    switch (error) {
    case ENODEV:
    case ENOENT:
    case ENOTDIR:
    case ENXIO:
        return LogExportReport::NoStick;
    case ENOSPC:
    case EDQUOT:
        return LogExportReport::Full;
    case EROFS:
    case EACCES:
    case EPERM:
        return LogExportReport::ReadOnly;
    default:
        return LogExportReport::Failed;
    }
}

LogExportReport reportOf(const ExportWriter &writer)
{
    LogExportReport report;
    report.percent = writer.percent();
    if (writer.state() == ExportWriter::State::Done) {
        report.state = LogExportReport::Done;
        report.detail = writer.names().join(QStringLiteral(", ")).toStdString();
    } else if (writer.state() == ExportWriter::State::Failed) {
        report.state = stateOf(writer.error());
        report.detail = qt_error_string(writer.error()).toStdString();
    }
    return report;
}

}

/// A running export. The scheduled work owns it. Its destructor waits for the part that is being written.
struct LogExportService::Export
{
    Export(const QString &directory, const ExportWriter::Collect &collect, const Listener &exportListener)
        : writer(directory, collect), listener(exportListener)
    {
    }

    ExportWriter writer; ///< used by `part` while that is valid
    Listener listener;
    std::atomic<bool> isCancelled = false;
    std::future<void> part;
};

void LogExportService::startExport(const Listener &listener)
{
    cancelExport();
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdLogExport.startExport"));
    const auto collectLines = [this, lastLine = m_journal.count()] { return collect(lastLine); };
    const auto begun = std::make_shared<Export>(m_options.directory, collectLines, listener);
    m_current = begun;
    proceed(begun);
}

void LogExportService::cancelExport()
{
    const auto running = m_current.lock();
    m_current.reset();
    if (!running)
        return;
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdLogExport.cancelExport"));
    running->isCancelled = true;
}

// The journal goes on while its lines are collected.
QVector<ExportWriter::File> LogExportService::collect(qint64 lastLine) const
{
    QByteArray journal = m_options.sessionLine;
    const QVector<Journal::Entry> entries = m_journal.entries();
    for (const Journal::Entry &entry : entries) {
        if (entry.sequence <= lastLine)
            journal += entry.toJsonLine() + '\n';
    }
    QVector<ExportWriter::File> files{{QStringLiteral("-journal.jsonl"), journal}};
    if (m_options.deriveRuns)
        files.append({QStringLiteral("-runs.jsonl"), m_options.deriveRuns(journal)});
    return files;
}

void LogExportService::scheduleNext(const std::shared_ptr<Export> &running)
{
    VirtualClock::instance().schedule(PartTime, [this, running] { proceed(running); });
}

// While the clock runs by the wall clock, nothing waits for the stick. Otherwise each part takes the same virtual time.
void LogExportService::proceed(const std::shared_ptr<Export> &running)
{
    std::future<void> &part = running->part;
    const bool isBusy = part.valid() && VirtualClock::instance().isPaced()
        && part.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
    if (isBusy)
        return scheduleNext(running);
    if (part.valid()) {
        part.get();
        if (running->isCancelled)
            return;
        report(*running);
        if (running->writer.state() != ExportWriter::State::Writing)
            return;
    }
    // Read here, so that it doesn't depend on the speed of the machine which part a fault affects.
    const ExportWriter::StickFaults faults{m_faults.isOn(QStringLiteral("usb-stick-missing")),
                                           m_faults.isOn(QStringLiteral("usb-stick-read-only")),
                                           m_faults.isOn(QStringLiteral("usb-stick-full"))};
    part = std::async(std::launch::async, [&writer = running->writer, faults] { writer.writeNext(faults); });
    scheduleNext(running);
}

void LogExportService::report(const Export &running)
{
    const LogExportReport report = reportOf(running.writer);
    m_journal.add(Journal::Kind::Event, QStringLiteral("lcdLogExport.report"),
                  {{QStringLiteral("state"), report.state},
                   {QStringLiteral("percent"), report.percent},
                   {QStringLiteral("detail"), QString::fromStdString(report.detail)}});
    if (running.listener)
        running.listener(report);
}

}
