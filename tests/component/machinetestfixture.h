#pragma once

#include "completemachinetestbiz.h"
#include "machineoperator.h"
#include "singletestsupport.h"

#include <QtCore/QMetaType>
#include <QtCore/QStringList>

#include <optional>

// A report as the data of a test.
using Ports = std::vector<std::pair<int, bool>>;
using Nodes = std::vector<RecordingUsb::Node>;
Q_DECLARE_METATYPE(Ports)
Q_DECLARE_METATYPE(Nodes)

/// A complete machine test with recording services. Its callbacks and its calls to the services are recorded in the
/// same list: "log <line>", "icon <step>" and "phase <fields>" with each field that differs from its default.
class MachineTestFixture
{
public:
    MachineTestFixture();

    /// Creates a new test and registers callbacks with it.
    void make();
    QStringList take() { return host.calls.take(); }
    /// Returns the callbacks since the last take(), without the calls to services.
    QStringList told();

    void left() { biz->onLeftBtnClicked(); }
    void right() { biz->onRightBtnClicked(); }
    /// Starts a run and passes the phases before @p phase. Clears the recorded calls.
    void startAndPassTo(int phase);
    void bringToVerdict() { operate.bringToVerdict(biz->currentPhaseIndex()); }
    /// Passes the current phase and returns the calls that follow its last press.
    QStringList pass();
    void pressKeys() { operate.pressKeys(); }
    void netReport(const Ports &ports) { operate.netReport(ports); }
    void usbReport(const Nodes &nodes) { operate.usbReport(nodes); }

    /// All log lines since the creation of this object.
    LogCapture log;
    RecordingHost host;
    KeyListWidget menu{host, MachineOperator::keys()};
    MachineOperator operate{host, [this] { right(); }};
    std::optional<LCD::FactoryModeImpl::CompleteMachineTestBiz> biz;
};

/// Returns @p info as one line, with each field that differs from its default.
QString describe(const LCD::FactoryModeImpl::CompleteMachinePhaseInfo &info);

// The screens that occur in several tests, as describe() returns them.
QString judgeScreenOf(const QString &title, const QString &icon);
QString failScreen();
QString passScreen();
/// Returns the callbacks of a failure.
QStringList failure();
