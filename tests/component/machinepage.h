#pragma once

#include "completemachinetestwidget.h"
#include "machineoperator.h"
#include "recordingframe.h"
#include "singletestsupport.h"

#include <memory>

/// The page of the complete machine test between a recording frame and recording services. Its signal is written
/// among their calls.
class MachinePage
{
public:
    MachinePage();
    ~MachinePage();

    /// Makes a new page in the place of the present one.
    void make();
    QStringList take() { return host.calls.take(); }
    /// Shows the entry screen. What was called is forgotten.
    void enter();
    void clickLeft() { Q_EMIT frameOf(*widget)->signalLeftBtnClicked(false); }
    void clickRight() { Q_EMIT frameOf(*widget)->signalRightBtnClicked(false); }
    void goBack() { Q_EMIT frameOf(*widget)->signalBackPrevious(); }
    /// Enters, starts and passes the phases before @p phase. What was called is forgotten.
    void startAndPassTo(int phase);

    /// All that is logged from the making of the page on.
    LogCapture log;
    RecordingHost host;
    KeyListWidget menu{host, MachineOperator::keys()};
    MachineOperator operate{host, [this] { clickRight(); }};
    std::unique_ptr<LCD::FactoryModeImpl::CompleteMachineTestWidget> widget;
};
