#pragma once

#include "completemachinetestwidget.h"
#include "machineoperator.h"
#include "recordingframe.h"
#include "singletestsupport.h"

#include <memory>

/// The page of the complete machine test with a recording frame and recording services. Its signal is added to the
/// recorded calls.
class MachinePage
{
public:
    MachinePage();
    ~MachinePage();

    /// Replaces the page by a new one.
    void make();
    QStringList take() { return host.calls.take(); }
    /// Shows the entry screen. Clears the recorded calls.
    void enter();
    void clickLeft() { Q_EMIT frameOf(*widget)->signalLeftBtnClicked(false); }
    void clickRight() { Q_EMIT frameOf(*widget)->signalRightBtnClicked(false); }
    void goBack() { Q_EMIT frameOf(*widget)->signalBackPrevious(); }
    /// Passes the phases of a run that has just started, up to @p phase.
    void passTo(int phase);
    /// Enters the page, starts a run and passes the phases before @p phase. Clears the recorded calls.
    void startAndPassTo(int phase);

    /// All log lines since the creation of the page.
    LogCapture log;
    RecordingHost host;
    KeyListWidget menu{host, MachineOperator::keys()};
    MachineOperator operate{host, [this] { clickRight(); }};
    std::unique_ptr<LCD::FactoryModeImpl::CompleteMachineTestWidget> widget;
};
