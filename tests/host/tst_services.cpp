#include "component/servicehost.h"
#include "device/faults.h"
#include "hosttest.h"
#include "services/services.h"
#include "smalldevice.h"

using namespace panelhost;
using LCD::ProtocolImpl::s_BarCalibration;

/// The services over the simulated device: what each call does, on which thread events come, what the journal says.
class tst_Services : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { make(true); }

    void cleanup()
    {
        services.reset();
        device.reset();
    }

    void theKeyboardSetsTheDevice()
    {
        auto &keyboard = services->keyboard;
        keyboard.setFactoryPanelMode(9);
        keyboard.setKeyLed(33, {LCD::KeyboardProxy::KeyLedRed, 1, 100, 800});
        keyboard.setScreenBrightness(1, 60);
        keyboard.setLcdTestPattern(3, 2);
        keyboard.setKeyLedUpdating(false);
        QCOMPARE(keyboard.getTBarType(), 0);

        const DeviceState state = device->state();
        QCOMPARE(state.panelMode, 9);
        QCOMPARE(findKey(state, 33)->led, (KeyLed{0, 1, 100, 800}));
        QCOMPARE(state.screenBrightness[1], 60);
        QCOMPARE(state.pattern.index, 2);
        QCOMPARE(lines(),
                 (QStringList{
                     q("0 gui lcdKeyboardEvent.setFactoryPanelMode {\"mode\":9}"),
                     q("0 gui lcdKeyboardEvent.setKeyLed "
                       "{\"brightness\":100,\"color\":0,\"halKey\":33,\"mode\":1,\"period\":800}"),
                     q("0 gui lcdKeyboardEvent.setScreenBrightness {\"level\":60,\"screenIndex\":1}"),
                     q("0 gui lcdKeyboardEvent.setLcdTestPattern {\"patternIndex\":2,\"patternType\":3}"),
                     q("0 gui lcdKeyboardEvent.setKeyLedUpdating {\"updating\":false}"),
                     q("0 gui lcdKeyboardEvent.getTBarType {\"result\":0}"),
                 }));
    }

    void keysComeOnTheDevicesThreadAndOnlyWhenPressed()
    {
        services->keyboard.registerKeyCallback(keyListener("a"));
        device->setKeyDown(12, true);
        device->setKeyDown(12, false);
        clock.settle();
        QCOMPARE(heard, (QStringList{q("0 device a 12 1")}));
        QCOMPARE(lines().last(), q("0 device lcdKeyboardEvent.key {\"halKey\":12,\"value\":1}"));
    }

    void releasesComeWithTheirFault()
    {
        on("key-releases");
        services->keyboard.registerKeyCallback(keyListener("a"));
        device->setKeyDown(12, false);
        clock.settle();
        QCOMPARE(heard, (QStringList{q("0 device a 12 0")}));
    }

    void aKeyListenerReplacesTheOneBefore()
    {
        services->keyboard.registerKeyCallback(keyListener("a"));
        services->keyboard.registerKeyCallback(keyListener("b"));
        press(12);
        services->keyboard.registerKeyCallback({});
        press(12);
        QCOMPARE(heard, (QStringList{q("0 device b 12 1")}));
    }

    void aKeyListenerMayReplaceItselfFromWithin()
    {
        services->keyboard.registerKeyCallback(
            [this](auto...) { services->keyboard.registerKeyCallback(keyListener("second")); });
        press(12);
        press(33);
        QCOMPARE(heard, (QStringList{q("0 device second 33 1")}));
    }

    void anEventWhileReplacingReachesTheOldListener()
    {
        services->keyboard.registerKeyCallback(keyListener("old"));
        on("event-while-replacing");
        services->keyboard.registerKeyCallback(keyListener("new"));
        QCOMPARE(heard, (QStringList{q("0 device old 12 1")}));
    }

    void linkServicesReportAndTellOfChanges()
    {
        services->networkPort.registerReportCallback("me", 2, linkListener("report"));
        services->networkPort.registerChangedCallback("me", 2, linkListener("changed"));
        QCOMPARE(heard, QStringList());
        clock.advance(500);
        QCOMPARE(heard, (QStringList{q("50 device report"), q("100 device changed")}));
        device->setPlugged(q("net1"), true);
        services->networkPort.requestReport();
        clock.advance(500);
        QCOMPARE(heard.mid(2), (QStringList{q("520 device changed"), q("550 device report")}));
        QCOMPARE(lines().last(),
                 q("550 device lcdMemoryCacheNetworkPort.report "
                   "{\"records\":[{\"link\":1,\"port\":0},{\"link\":0,\"port\":1}],\"subscriber\":\"me\"}"));
    }

    void withoutFirstChangesOnlyRealOnesAreTold()
    {
        make(false);
        services->usb.registerChangedCallback("me", 2, linkListener("changed"));
        clock.advance(500);
        QCOMPARE(heard, QStringList());
        device->setPlugged(q("usb1"), true);
        clock.advance(500);
        QCOMPARE(heard, (QStringList{q("520 device changed")}));
    }

    void aSecondRegistrationUnderOneNameReplaces()
    {
        make(false);
        services->usb.registerChangedCallback("me", 2, linkListener("first"));
        services->usb.registerChangedCallback("me", 2, linkListener("second"));
        services->usb.registerChangedCallback("you", 2, linkListener("other"));
        device->setPlugged(q("usb1"), true);
        clock.advance(100);
        QCOMPARE(heard, (QStringList{q("20 device second"), q("20 device other")}));
    }

    void reportsComeTwiceWithTheirFault()
    {
        on("duplicate-reports");
        services->usb.registerReportCallback("me", 2, linkListener("report"));
        clock.advance(100);
        QCOMPARE(heard, (QStringList{q("50 device report"), q("50 device report")}));
    }

    void emptyCallbacksAreNotCalled()
    {
        services->usb.registerReportCallback("me", 2, {});
        services->tbarCalibration.registerBarCalibrationCallback("me", {});
        services->tbarCalibration.setBarCalibration({0, 2, 0}, {});
        clock.advance(1000);
        QCOMPARE(lines().last(),
                 q("300 device lcdTBarCalibration.result {\"command\":2,\"message\":\"\",\"ok\":true}"));
    }

    void oddPayloadsAreDescribed()
    {
        QCOMPARE(describePayload({}).value(q("payload")).toString(), q("no value"));
        QCOMPARE(describePayload(42).value(q("payload")).toString(), q("a value of another type"));
        on("null-payload");
        QCOMPARE(describePayload(device->netReport()).value(q("payload")).toString(), q("null pointer"));
    }

    void theCalibrationAnswersAndReports()
    {
        services->tbarCalibration.registerBarCalibrationCallback("me", [this](const s_BarCalibration &report) {
            hear(q("report %1 %2").arg(report.command).arg(report.value));
        });
        services->tbarCalibration.setBarCalibration(
            {0, 0, 0}, [this](bool ok, const std::string &) { hear(q("result %1").arg(ok)); });
        clock.advance(1000);
        QCOMPARE(heard,
                 (QStringList{q("75 device report 0 25"), q("150 device report 0 50"), q("225 device report 0 75"),
                              q("300 device report 0 100"), q("300 device result 1")}));
    }

    void aBarInTheWrongPlaceFailsTheStep()
    {
        const char *sentence = "step 1 (top) failed: the T-Bar is at 40 %, it must be at the top (95 % to 100 %)";
        device->setTBarPosition(0.4);
        services->tbarCalibration.registerBarCalibrationCallback(
            "me", [this](const s_BarCalibration &) { hear(q("report")); });
        services->tbarCalibration.setBarCalibration({0, 1, 0}, [this](bool ok, const std::string &message) {
            hear(q("result %1 %2").arg(ok).arg(QString::fromStdString(message)));
        });
        clock.advance(1000);
        QCOMPARE(heard, QStringList(q("0 device result 0 ") + q(sentence)));
        QCOMPARE(
            lines().last(),
            q("0 device lcdTBarCalibration.result {\"command\":1,\"message\":\"%1\",\"ok\":false}").arg(q(sentence)));
    }

    void theOtherServicesTellTheDevice()
    {
        services->factoryModeBiz.setFactoryTestType(6);
        services->factoryModeBiz.setMachineTestKind(1);
        services->networkPort.reserved();
        QVERIFY(!services->config.getFactoryTestKeyMode().isEmpty());
        QCOMPARE(device->state().testType, 6);
        QCOMPARE(device->state().machineTestKind, 1);
        QCOMPARE(lines().size(), 4);
    }

    void theHostFindsServicesByName()
    {
        ServiceHost host(*journal, *faults);
        services->addTo(host);
        QCOMPARE(host.serviceNames().size(), size_t(9));
        auto *keyboard = static_cast<LCD::FactoryMode::IKeyboardEvent *>(host.getComponent("lcdKeyboardEvent"));
        QCOMPARE(keyboard->getTBarType(), 0);
        QVERIFY(!host.getComponent("lcdCoffee"));
        QVERIFY(!host.getComponent(nullptr));
        on("service-absent", {{q("service"), q("lcdConfig")}});
        QVERIFY(!host.getComponent("lcdConfig"));
        QVERIFY(host.getComponent("lcdMemoryCacheScreenDetail"));
        host.removeService("lcdMemoryCacheScreenDetail");
        QVERIFY(!host.getComponent("lcdMemoryCacheScreenDetail"));
    }

private:
    void make(bool changedOnSubscribe)
    {
        clock.restart();
        heard.clear();
        services.reset();
        device.reset();
        faults = std::make_unique<Faults>();
        journal = std::make_unique<Journal>();
        SimulatedDevice::Configuration configuration = smallDevice();
        configuration.netPorts = 2;
        configuration.usbPorts = 1;
        configuration.tbarType = TBarType::Fader;
        device = std::make_unique<SimulatedDevice>(configuration, clock, *faults);
        services = std::make_unique<Services>(*device, *journal, *faults, changedOnSubscribe);
    }

    void hear(const QString &what)
    {
        const bool isDevice = clock.currentThread() == ThreadKind::Device;
        heard << QString::number(clock.now()) + (isDevice ? q(" device ") : q(" gui ")) + what;
    }
    LCD::FactoryMode::KeyListener keyListener(const char *name)
    {
        return [this, name](std::uint32_t key, float value, auto...) {
            hear(q("%1 %2 %3").arg(q(name)).arg(key).arg(static_cast<double>(value)));
        };
    }
    std::function<void(std::any)> linkListener(const char *name)
    {
        return [this, name](const std::any &) { hear(q(name)); };
    }
    void press(int key)
    {
        device->setKeyDown(key, true);
        clock.settle();
    }
    void on(const char *name, const QVariantMap &arguments = {})
    {
        QVERIFY(faults->set(q(name), true, arguments, nullptr));
    }
    QStringList lines() const
    {
        QStringList result;
        for (const Journal::Entry &entry : journal->entries()) {
            const QString data = QString::fromUtf8(QJsonDocument(entry.data).toJson(QJsonDocument::Compact));
            result << q("%1 %2 %3 %4").arg(QString::number(entry.at), entry.thread, entry.name, data);
        }
        return result;
    }

    VirtualClock &clock = VirtualClock::instance();
    std::unique_ptr<Faults> faults;
    std::unique_ptr<Journal> journal;
    std::unique_ptr<SimulatedDevice> device;
    std::unique_ptr<Services> services;
    QStringList heard;
};

PANELHOST_TEST_MAIN(tst_Services)
#include "tst_services.moc"
