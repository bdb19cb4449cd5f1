#include "servicetests.h"

#include "lcd/repairmode/ifactoryreset.h"
#include "lcd/repairmode/ilogexport.h"
#include "mirel/api.h"
#include "owntest.h"
#include "reportqueue.h"

#include <QtCore/QDebug>

namespace LCD::RepairPages {

namespace {

using LCD::RepairMode::IFactoryReset;
using LCD::RepairMode::ILogExport;
using LCD::RepairMode::LogExportReport;

// The service has no translated texts, so the page shows a text of its own.
void logReason(const char *work, const std::string &reason)
{
    qWarning().noquote() << work << "failed:" << QString::fromStdString(reason);
}

class LogExport : public OwnTest
{
public:
    void start() override;
    void restore() override;

    QString heading() const override { return {}; }
    QVector<PageLine> lines() const override { return {{text("RepairExportWriting").arg(m_report.percent)}}; }
    QVector<PageLine> remarks() const override;
    QString startCaption() const override { return text("RepairExport"); }
    QString againCaption() const override { return text("RepairExportAgain"); }
    QString verdictText() const override
    {
        return text(state() == TestState::Passed ? "RepairExportDone" : "RepairExportFailed");
    }
    QString leftCaption() const override { return text("RepairCancel"); }
    void pressLeft() override;

private:
    void onReport(int run, const LogExportReport &report);
    void fail(const std::string &detail);

    ILogExport *m_service = mirel::api::get().service<ILogExport>("lcdLogExport");
    int m_run = 0; ///< number of the export; reports of earlier ones are late
    LogExportReport m_report;
    ReportQueue m_reports{this};
};

void LogExport::start()
{
    OwnTest::start();
    m_report = {};
    const int run = ++m_run;
    m_service->startExport(m_reports.listener([this, run](const LogExportReport &report) { onReport(run, report); }));
}

void LogExport::onReport(int run, const LogExportReport &report)
{
    if (run != m_run || state() != TestState::Running)
        return;
    m_report = report;
    if (report.state == LogExportReport::Done)
        setPass();
    else if (report.state != LogExportReport::Writing)
        fail(report.detail);
    Q_EMIT changed();
}

void LogExport::fail(const std::string &detail)
{
    logReason("Log export", detail);
    setNotPass();
}

void LogExport::pressLeft()
{
    restore();
    reTest();
}

void LogExport::restore()
{
    if (state() == TestState::Running)
        m_service->cancelExport();
}

// The files, or why there are none.
QVector<PageLine> LogExport::remarks() const
{
    switch (m_report.state) {
    case LogExportReport::NoStick:
        return {{text("RepairExportNoStick"), notPassColor()}};
    case LogExportReport::Full:
        return {{text("RepairExportFull"), notPassColor()}};
    case LogExportReport::ReadOnly:
        return {{text("RepairExportReadOnly"), notPassColor()}};
    case LogExportReport::Writing:
    case LogExportReport::Done:
        return {{QString::fromStdString(m_report.detail)}};
    case LogExportReport::Failed:
        break;
    }
    return {{text("RepairExportBroken"), notPassColor()}};
}

/// The right button, which has the focus, leads away from the reset.
class FactoryReset : public OwnTest
{
public:
    void start() override
    {
        m_isConfirmed = false;
        OwnTest::start();
    }

    QString heading() const override;
    QVector<PageLine> remarks() const override
    {
        return state() == TestState::Failed ? QVector<PageLine>{{text("RepairResetError"), notPassColor()}}
                                            : QVector<PageLine>();
    }
    QString startCaption() const override { return text("RepairReset"); }
    QString againCaption() const override { return text("RepairResetAgain"); }
    QString verdictText() const override
    {
        return text(state() == TestState::Passed ? "RepairResetDone" : "RepairResetFailed");
    }
    bool leavesWhenPassed() const override { return true; }
    QString leftCaption() const override { return m_isConfirmed ? QString() : text("RepairReset"); }
    QString rightCaption() const override { return m_isConfirmed ? QString() : text("RepairCancel"); }
    PageButton dangerousButton() const override;
    void pressLeft() override;
    void pressRight() override { reTest(); }

private:
    void onResult(bool ok, const std::string &message);

    IFactoryReset *m_service = mirel::api::get().service<IFactoryReset>("lcdFactoryReset");
    bool m_isConfirmed = false;
    ReportQueue m_reports{this};
};

QString FactoryReset::heading() const
{
    if (state() != TestState::Running)
        return {};
    return text(m_isConfirmed ? "RepairResetRunning" : "RepairResetConfirm");
}

// While the device asks whether it should be reset, the left button resets it. Else the right one leads there.
PageButton FactoryReset::dangerousButton() const
{
    return state() == TestState::Running ? PageButton::Left : PageButton::Right;
}

void FactoryReset::pressLeft()
{
    m_isConfirmed = true;
    m_service->resetDevice(m_reports.listener([this](bool ok, const std::string &message) { onResult(ok, message); }));
}

void FactoryReset::onResult(bool ok, const std::string &message)
{
    if (state() != TestState::Running || !m_isConfirmed)
        return;
    if (ok) {
        setPass();
    } else {
        logReason("Factory reset", message);
        setNotPass();
    }
    Q_EMIT changed();
}

}

std::unique_ptr<PageTest> makeLogExport()
{
    return std::make_unique<LogExport>();
}

std::unique_ptr<PageTest> makeFactoryReset()
{
    return std::make_unique<FactoryReset>();
}

}
