#include "device/faults.h"
#include "device/keylist.h"
#include "hosttest.h"
#include "lcd/protocol/records.h"
#include "smalldevice.h"

#include <QtCore/QTemporaryDir>

using namespace panelhost;
using LCD::ProtocolImpl::s_NetworkPortLink;
using LCD::ProtocolImpl::s_NodeUSB;

/// The simulated device: what it keeps, what it tells and when, and what each fault does to it.
class tst_Device : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clock.restart();
        faults = std::make_unique<Faults>();
        device = std::make_unique<SimulatedDevice>(smallDevice(), clock, *faults);
        events.clear();
        device->setKeyListener([this](int key, bool down) { see(q("key %1 %2").arg(key).arg(down)); });
        device->setNetListener([this](const std::any &) { see(q("net")); });
        device->setUsbListener([this](const std::any &) { see(q("usb")); });
        device->setCalibrationListener(
            [this](int command, int percent) { see(q("progress %1 %2").arg(command).arg(percent)); });
    }

    void keepsWhatItIsTold()
    {
        device->setKeyLed(33, {0, 1, 100, 800});
        device->setScreenBrightness(2, 40);
        device->setScreenBrightness(3, 50);
        device->setScreenBrightness(-1, 50);
        device->setTestPattern(3, 4);
        device->setPatternLevel(80);
        device->setTBarPosition(1.5);
        const DeviceState state = device->state();
        QVERIFY(findKey(state, 33)->led.isBlinking());
        QCOMPARE(state.screenBrightness[2], 40);
        QCOMPARE(state.pattern.type, 3);
        QCOMPARE(state.pattern.index, 4);
        QCOMPARE(state.pattern.level, 80);
        QCOMPARE(state.tbar.position, 1.0);
        QVERIFY(!findKey(state, 99));
    }

    void allKeysAtOnce()
    {
        device->setKeyLed(33, {0, 1, 100, 800});
        device->setAllKeyBrightness(0);
        QVERIFY(!findKey(device->state(), 33)->led.isBlinking());
    }

    void keysTellOnTheDevicesThread()
    {
        QVERIFY(device->setKeyDown(12, true));
        QVERIFY(device->setKeyDown(12, false));
        QVERIFY(!device->setKeyDown(99, true));
        QCOMPARE(events, QStringList());
        clock.settle();
        QCOMPARE(events, (QStringList{q("0 device key 12 1"), q("0 device key 12 0")}));
    }

    void portsTellOnlyOfRealChanges()
    {
        QVERIFY(device->setPlugged(q("net1"), true));
        QVERIFY(device->setPlugged(q("net1"), true));
        QVERIFY(device->setBlocked(q("usb2"), true));
        QVERIFY(!device->setPlugged(q("net9"), true));
        QVERIFY(!device->setBlocked(q("net1"), true));
        clock.advance(100);
        QCOMPARE(events, (QStringList{q("20 device net"), q("20 device usb")}));
    }

    void reportsHoldThePorts()
    {
        device->setPlugged(q("net2"), true);
        device->setPlugged(q("usb1"), true);
        device->setBlocked(q("usb1"), true);
        const auto net = std::any_cast<std::shared_ptr<std::vector<s_NetworkPortLink>>>(device->netReport());
        QCOMPARE(net->size(), size_t(4));
        QCOMPARE(net->at(1).port, 1);
        QCOMPARE(net->at(0).link, 0);
        QCOMPARE(net->at(1).link, 1);
        const auto usb = std::any_cast<std::shared_ptr<std::vector<s_NodeUSB>>>(device->usbReport());
        QCOMPARE(std::count_if(usb->begin(), usb->end(), [](const s_NodeUSB &node) { return node.nodeType == 26; }), 4);
        const auto first =
            std::find_if(usb->begin(), usb->end(), [](const s_NodeUSB &node) { return node.nodeType == 26; });
        QCOMPARE(first->linkActive, 1);
        QCOMPARE(first->linkBlocked, 1);
    }

    void calibrationTakesItsTime()
    {
        calibrate(2);
        QCOMPARE(device->state().tbar.step, q("begin"));
        clock.advance(1000);
        QCOMPARE(
            events,
            (QStringList{q("75 device progress 2 25"), q("150 device progress 2 50"), q("225 device progress 2 75"),
                         q("300 device progress 2 100"), q("300 device result 1 ")}));
        QCOMPARE(device->state().tbar.step, QString());
    }

    void calibrationFailsAtItsStep()
    {
        on("calibration-fails", {{q("step"), 3}});
        for (const int command : {2, 1, 0, 1}) {
            device->setTBarPosition(command == 1 ? 1 : 0);
            calibrate(command);
            clock.advance(1000);
        }
        QCOMPARE(events.filter(q("result")),
                 (QStringList{q("300 device result 1 "), q("1300 device result 1 "),
                              q("2300 device result 0 step 3 (bottom) failed"), q("3300 device result 1 ")}));
        // A step that fails gets as far as the third quarter.
        QCOMPARE(events.filter(q("2225 device progress")), (QStringList{q("2225 device progress 0 75")}));
        QCOMPARE(events.filter(q("2300 device progress")), QStringList());
    }

    void recordedResultsEndTheSteps()
    {
        withRecordedResults();
        calibrate(2);
        clock.advance(1000);
        QCOMPARE(device->state().tbar.step, q("begin"));
        QVERIFY(!device->finishCalibration(1, true, {}));
        QVERIFY(device->finishCalibration(2, true, {}));
        QVERIFY(!device->finishCalibration(2, true, {}));
        clock.settle();
        QCOMPARE(
            events,
            (QStringList{q("75 device progress 2 25"), q("150 device progress 2 50"), q("225 device progress 2 75"),
                         q("1000 device progress 2 100"), q("1000 device result 1 ")}));
        QCOMPARE(device->state().tbar.step, QString());
    }

    void recordedFailureEndsTheStepEarly()
    {
        withRecordedResults();
        calibrate(1); // the position isn't judged
        clock.advance(100);
        QVERIFY(device->finishCalibration(1, false, q("it is unplugged")));
        clock.advance(1000);
        const QString failure = q("step 1 (top) failed: it is unplugged");
        QCOMPARE(events, (QStringList{q("75 device progress 1 25"), q("100 device result 0 ") + failure}));
        QCOMPARE(device->state().tbar.failure, failure);
    }

    void recordedFailureNeedsNoMessage()
    {
        withRecordedResults();
        calibrate(1);
        QVERIFY(device->finishCalibration(1, false, {}));
        clock.settle();
        QCOMPARE(events, QStringList{q("0 device result 0 step 1 (top) failed")});
    }

    void linksOfABoardChangeAtOnce()
    {
        SimulatedDevice::Configuration configuration = smallDevice();
        configuration.linkDelay = 0;
        device = std::make_unique<SimulatedDevice>(configuration, clock, *faults);
        device->setNetListener([this](const std::any &) { see(q("net")); });
        device->setPlugged(q("net1"), true);
        clock.settle();
        QCOMPARE(events, QStringList{q("0 device net")});
    }

    void partsDisappearAndComeBack()
    {
        QVERIFY(device->setPartPresent(q("keys"), false));
        QVERIFY(device->setPartPresent(q("keys"), false));
        QVERIFY(device->setPartPresent(q("usb"), false));
        QVERIFY(!device->setPartPresent(q("lcd"), false));
        QCOMPARE(device->state().missingParts, (QStringList{q("keys"), q("usb")}));
        QVERIFY(device->setPartPresent(q("keys"), true));
        QCOMPARE(device->state().missingParts, QStringList{q("usb")});
    }

    void eachCommandNeedsTheBarInItsPlace_data()
    {
        QTest::addColumn<int>("command");
        QTest::addColumn<double>("position");
        QTest::addColumn<QString>("message");
        const QString bottom = q("it must be at the bottom (0 % to 5 %)");
        const QString top = q("it must be at the top (95 % to 100 %)");
        for (const double position : {0.0, 0.5, 1.0})
            QTest::addRow("begin at %g", position) << 2 << position << QString();
        QTest::newRow("bottom at the bottom") << 0 << 0.0 << QString();
        QTest::newRow("bottom within the tolerance") << 0 << 0.05 << QString();
        QTest::newRow("bottom outside of it")
            << 0 << 0.06 << q("step 1 (bottom) failed: the T-Bar is at 6 %, ") + bottom;
        QTest::newRow("bottom at the top") << 0 << 1.0 << q("step 1 (bottom) failed: the T-Bar is at 100 %, ") + bottom;
        QTest::newRow("top at the top") << 1 << 1.0 << QString();
        QTest::newRow("top within the tolerance") << 1 << 0.95 << QString();
        QTest::newRow("top just outside of it")
            << 1 << 0.9499 << q("step 1 (top) failed: the T-Bar is at 94.99 %, ") + top;
        QTest::newRow("top at the bottom") << 1 << 0.0 << q("step 1 (top) failed: the T-Bar is at 0 %, ") + top;
        QTest::newRow("end at the bottom") << 4 << 0.0 << QString();
        QTest::newRow("end in the middle") << 4 << 0.5 << q("step 1 (end) failed: the T-Bar is at 50 %, ") + bottom;
        QTest::newRow("a command that isn't known") << 3 << 0.5 << QString();
    }
    void eachCommandNeedsTheBarInItsPlace()
    {
        QFETCH(int, command);
        QFETCH(double, position);
        QFETCH(QString, message);
        for (const TBarType type : {TBarType::Fader, TBarType::Slider}) {
            events.clear();
            fit(type, TBarState::DefaultTolerance);
            device->setTBarPosition(position);
            calibrate(command);
            clock.advance(1000);
            const QString result = message.isEmpty() ? q("300 device result 1 ") : q("0 device result 0 ") + message;
            QCOMPARE(events, QStringList(result));
            QCOMPARE(device->state().tbar.failure, message);
            QCOMPARE(device->state().tbar.step, QString());
        }
    }

    void theBarIsReadWhenTheCommandComes()
    {
        calibrate(0);
        device->setTBarPosition(0.5);
        clock.advance(1000);
        QCOMPARE(events.last(), q("300 device result 1 "));
    }

    void theToleranceIsTheDevices()
    {
        fit(TBarType::Slider, 0.2);
        device->setTBarPosition(0.8);
        calibrate(1);
        device->setTBarPosition(0.79);
        calibrate(1);
        clock.advance(1000);
        QCOMPARE(events,
                 (QStringList{q("0 device result 0 step 2 (top) failed: the T-Bar is at 79 %, it must be at the top "
                                "(80 % to 100 %)"),
                              q("300 device result 1 ")}));
    }

    void theNextStepsEndIsKnown()
    {
        device->setPanelMode(12);
        QVERIFY(!device->state().tbar.target);
        const QList<QPair<int, std::optional<TBarEnd>>> steps = {
            {2, TBarEnd::Top}, {1, TBarEnd::Bottom}, {0, TBarEnd::Top}, {1, TBarEnd::Bottom},
            {0, TBarEnd::Top}, {1, TBarEnd::Bottom}, {4, std::nullopt}};
        for (const auto &[command, next] : steps) {
            calibrate(command);
            clock.advance(1000);
            QVERIFY(device->state().tbar.target == next);
        }
    }

    void whatHasFailedStaysUntilTheNextCalibration()
    {
        device->setPanelMode(12);
        calibrate(1);
        clock.advance(1000);
        const QString failure = device->state().tbar.failure;
        QVERIFY(failure.startsWith(q("step 1 (top) failed")));
        calibrate(0);
        clock.advance(1000);
        QCOMPARE(device->state().tbar.failure, failure);
        device->setPanelMode(12);
        QCOMPARE(device->state().tbar.failure, failure);
        calibrate(2);
        QCOMPARE(device->state().tbar.failure, QString());
    }

    void leavingThePhaseEndsItsHints()
    {
        device->setPanelMode(12);
        calibrate(1);
        clock.advance(1000);
        QVERIFY(device->state().tbar.target);
        device->setPanelMode(9);
        QVERIFY(!device->state().tbar.target);
        QCOMPARE(device->state().tbar.failure, QString());
        calibrate(1);
        device->setPanelMode(13);
        clock.advance(1000);
        QCOMPARE(events.last(),
                 q("1000 device result 0 step 2 (top) failed: the T-Bar is at 0 %, it must be at the top "
                   "(95 % to 100 %)"));
        QCOMPARE(device->state().tbar.failure, QString());
    }

    void aCalibrationThatHangsTellsNothing()
    {
        on("calibration-hangs");
        calibrate(1);
        clock.advance(1000);
        QCOMPARE(events, QStringList());
    }

    void calibrationHangs()
    {
        on("calibration-hangs");
        calibrate(2);
        clock.advance(10'000);
        QCOMPARE(events.filter(q("result")), QStringList());
    }

    void endsWithWorkUnderWay()
    {
        calibrate(2);
        device->setKeyDown(12, true);
        device.reset();
        clock.advance(1000);
        QCOMPARE(events, QStringList());
    }

    void aDeadKey()
    {
        on("key-dead", {{q("key"), 12}});
        device->setKeyDown(12, true);
        device->setKeyDown(33, true);
        clock.settle();
        QCOMPARE(events, (QStringList{q("0 device key 33 1")}));
    }

    void aKeyThatRepeats()
    {
        on("key-repeats", {{q("key"), 12}});
        device->setKeyDown(12, true);
        clock.advance(1000);
        QCOMPARE(events, (QStringList{q("0 device key 12 1"), q("40 device key 12 1"), q("80 device key 12 1")}));
    }

    void aStuckLed()
    {
        on("led-stuck", {{q("key"), 12}});
        device->setKeyLed(12, {0, 1, 100, 800});
        device->setAllKeyBrightness(70);
        QCOMPARE(findKey(device->state(), 12)->led.brightness, 0);
        QCOMPARE(findKey(device->state(), 33)->led.brightness, 70);
    }

    void payloadFaults()
    {
        on("empty-payload");
        QVERIFY(!device->netReport().has_value());
        off("empty-payload");
        on("wrong-payload");
        const std::any payload = device->usbReport();
        QVERIFY(!std::any_cast<std::shared_ptr<std::vector<s_NodeUSB>>>(&payload));
        off("wrong-payload");
        on("null-payload");
        QVERIFY(!std::any_cast<std::shared_ptr<std::vector<s_NetworkPortLink>>>(device->netReport()));
        off("null-payload");
        on("empty-report");
        QVERIFY(std::any_cast<std::shared_ptr<std::vector<s_NodeUSB>>>(device->usbReport())->empty());
        off("empty-report");
        on("garbage-ports");
        const auto net = std::any_cast<std::shared_ptr<std::vector<s_NetworkPortLink>>>(device->netReport());
        QVERIFY(std::any_of(net->begin(), net->end(), [](const s_NetworkPortLink &link) { return link.port < 0; }));
        QVERIFY(
            std::any_of(net->begin(), net->end(), [](const s_NetworkPortLink &link) { return link.port > 99'999; }));
    }

    void faultsByNameAndValue()
    {
        on("key-dead", {{q("key"), 12}});
        on("key-dead", {{q("key"), q("33")}});
        QVERIFY(faults->isOn(q("key-dead"), q("key"), 33));
        QCOMPARE(faults->argument(q("key-dead"), q("key")).toInt(), 33);
        QVERIFY(faults->set(q("key-dead"), false, {{q("key"), 12}}, nullptr));
        QVERIFY(!faults->isOn(q("key-dead"), q("key"), 12));
        QVERIFY(faults->isOn(q("key-dead")));
        off("key-dead");
        QVERIFY(!faults->isOn(q("key-dead")));
        QString error;
        QVERIFY(!faults->set(q("key-dead"), true, {}, &error));
        QCOMPARE(error, q("The fault \"key-dead\" needs \"key\"."));
        QVERIFY(!faults->set(q("service-absent"), true, {{q("service"), QString()}}, &error));
        QCOMPARE(error, q("The fault \"service-absent\" needs \"service\"."));
        QVERIFY(!faults->set(q("calibration-fails"), true, {{q("step"), 8}}, &error));
        QCOMPARE(error, q("The fault \"calibration-fails\" has no \"step\" 8; available: 1, 2, 3, 4, 5, 6, 7."));
        QVERIFY(!faults->set(q("service-absent"), true, {{q("service"), q("lcdCoffee")}}, &error));
        QVERIFY(!faults->set(q("calibration-fails"), false, {{q("step"), 8}}, &error));
        QVERIFY(faults->set(q("calibration-fails"), true, {{q("step"), q("7")}}, &error));
        for (const FaultInfo &info : Faults::all())
            QVERIFY2(!info.description.isEmpty(), qPrintable(info.name));
    }

    void readsTheKeyListTolerantly_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("keys");
        QTest::newRow("plain") << QByteArray(
            "<LCD><LcdKeys><LcdKey Value=\"12\" Name=\" A \"/><LcdKey Value=\"7\"/></LcdKeys></LCD>")
                               << q("12 A,7 ");
        QTest::newRow("twice") << QByteArray(
            "<LCD><LcdKeys><LcdKey Value=\"1\" Name=\"A\"/><LcdKey Value=\"1\" Name=\"B\"/></LcdKeys></LCD>")
                               << q("1 A");
        QTest::newRow("cut in half") << QByteArray("<LCD><LcdKeys><LcdKey Value=\"1\" Name=\"A\"/><LcdKey Val")
                                     << q("1 A");
        QTest::newRow("noise") << QByteArray("\x00\xff\x17<<<", 6) << QString();
        QTest::newRow("empty") << QByteArray() << QString();
    }
    void readsTheKeyListTolerantly()
    {
        QFETCH(QByteArray, xml);
        const QTemporaryDir directory;
        QFile file(directory.filePath(q("factorykeychecklist.xml")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(xml);
        file.close();
        QStringList keys;
        for (const KeyState &key : readKeyList(directory.path()))
            keys << QString::number(key.halKey) + QLatin1Char(' ') + key.name;
        QTEST(keys.join(QLatin1Char(',')), "keys");
    }

    void noKeyListNoKeys() { QVERIFY(readKeyList(q("/nowhere")).isEmpty()); }

private:
    void withRecordedResults()
    {
        SimulatedDevice::Configuration configuration = smallDevice();
        configuration.hasCalibrationResults = true;
        device = std::make_unique<SimulatedDevice>(configuration, clock, *faults);
        device->setCalibrationListener(
            [this](int command, int percent) { see(q("progress %1 %2").arg(command).arg(percent)); });
    }

    void see(const QString &what)
    {
        const bool isDevice = clock.currentThread() == ThreadKind::Device;
        events << QString::number(clock.now()) + (isDevice ? q(" device ") : q(" gui ")) + what;
    }
    // Another device, that tells of results alone.
    void fit(TBarType type, double tolerance)
    {
        SimulatedDevice::Configuration configuration = smallDevice();
        configuration.tbarType = type;
        configuration.tbarTolerance = tolerance;
        clock.restart();
        device = std::make_unique<SimulatedDevice>(configuration, clock, *faults);
    }
    void calibrate(int command)
    {
        device->calibrate(command, [this](bool ok, const std::string &message) {
            see(q("result %1 %2").arg(ok).arg(QString::fromStdString(message)));
        });
    }
    void on(const char *name, const QVariantMap &arguments = {})
    {
        QVERIFY(faults->set(q(name), true, arguments, nullptr));
    }
    void off(const char *name) { QVERIFY(faults->set(q(name), false, {}, nullptr)); }

    VirtualClock &clock = VirtualClock::instance();
    std::unique_ptr<Faults> faults;
    std::unique_ptr<SimulatedDevice> device;
    QStringList events;
};

PANELHOST_TEST_MAIN(tst_Device)
#include "tst_device.moc"
