#pragma once

#include "completemachinetestbiz.h"
#include "machineoperator.h"
#include "singletestsupport.h"

#include <QtCore/QStringList>

#include <optional>

/// A complete machine test between recording services. What it tells its page goes into the same list as what it asks
/// of the services: "log <line>", "icon <step>" and "phase <fields>" with each field that isn't at its default.
class MachineBench
{
public:
    MachineBench();

    /// Makes a new test and listens to it.
    void make();
    QStringList take() { return host.calls.take(); }
    /// What the page was told since the last take(), without what the services were asked for.
    QStringList told();

    void left() { biz->onLeftBtnClicked(); }
    void right() { biz->onRightBtnClicked(); }
    /// Starts a run and passes the phases before @p phase. What was called is forgotten.
    void startAndPassTo(int phase);
    void bringToVerdict() { operate.bringToVerdict(biz->currentPhaseIndex()); }
    /// Passes the phase at hand; gives what its last press led to.
    QStringList pass();
    void pressKeys() { operate.pressKeys(); }
    void netReport(const std::vector<std::pair<int, bool>> &ports) { operate.netReport(ports); }
    void usbReport(const std::vector<RecordingUsb::Node> &nodes) { operate.usbReport(nodes); }

    /// All that is logged from the bench's making on.
    LogCapture log;
    RecordingHost host;
    KeyListWidget menu{host, MachineOperator::keys()};
    MachineOperator operate{host, [this] { right(); }};
    std::optional<LCD::FactoryModeImpl::CompleteMachineTestBiz> biz;
};

/// @p info in one line: each field that isn't at its default.
QString describe(const LCD::FactoryModeImpl::CompleteMachinePhaseInfo &info);

// The screens that recur, as they are described.
QString judgeScreenOf(const QString &title, const QString &icon);
QString failScreen();
QString passScreen();
/// What a failure tells the page.
QStringList failure();
