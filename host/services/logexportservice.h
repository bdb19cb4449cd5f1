#pragma once

#include "journal/journal.h"
#include "lcd/repairmode/ilogexport.h"
#include "services/exportwriter.h"

#include <memory>

namespace panelhost {

class Faults;

/// What a log export writes, and where to.
struct LogExportOptions
{
    QString directory;      ///< where the USB stick is mounted; empty: there is none
    QByteArray sessionLine; ///< the first line of the exported journal, with its end; empty: none
    /// Derives the test runs of a journal, one JSON object per line. Called on any thread. Empty: no runs are exported.
    std::function<QByteArray(const QByteArray &journal)> deriveRuns;
};

/// Service "lcdLogExport": writes the journal and its test runs. The files are written on a thread of its own, so that
/// a slow stick blocks neither the GUI thread nor the device's thread. Reports come on the device's thread.
class LogExportService final : public LCD::RepairMode::ILogExport
{
public:
    LogExportService(const LogExportOptions &options, Journal &journal, const Faults &faults)
        : m_options(options), m_journal(journal), m_faults(faults)
    {
    }

    void startExport(const Listener &listener) override;
    void cancelExport() override;

private:
    struct Export;

    QVector<ExportWriter::File> collect(qint64 lastLine) const;
    void proceed(const std::shared_ptr<Export> &running);
    void report(const Export &running);
    void scheduleNext(const std::shared_ptr<Export> &running);

    const LogExportOptions m_options;
    Journal &m_journal;
    const Faults &m_faults;
    std::weak_ptr<Export> m_current;
};

}
