#include "device/board/boarddevice.h"
#include "device/faults.h"
#include "hosttest.h"
#include "lcd/protocol/records.h"
#include "mockinput.h"
#include "smalldevice.h"

#include <QtCore/QTemporaryDir>

#include <thread>

using namespace panelhost;
using LCD::ProtocolImpl::s_NetworkPortLink;
using LCD::ProtocolImpl::s_NodeUSB;

/// What every device does, whatever provides it: the same list of tests for the simulated device and for a board.
class tst_BoardConformance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void cleanup();

    void beginsDark();
    void keepsWhatItIsTold();
    void ignoresScreensThatItDoesNotHave();
    void allKeysGetOneBrightness();
    void stuckLedKeepsWhatItShows();
    void keysAreReportedOnTheDeviceThread();
    void unknownKeysAndPortsAreRefused();
    void onlyNetChangesAreReported();
    void onlyUsbChangesAreReported();
    void reportsHoldTheState();
    void positionStaysInItsRange();
    void calibrationReportsItsProgress();
    void leavingTheTBarPhaseForgetsTheFailure();
    void partsDisappearAndComeBack();
    void listenersCanBeReplacedAndRemoved();
    void factoryModeCanBeEnteredAndLeft();
    void operationsComeFromAnyThread();
    void whatIsScheduledEndsWithTheDevice();

private:
    std::unique_ptr<Device> makeDevice(const QString &backEnd);
    void calibrate(int command);
    void see(const QString &what);

    VirtualClock &clock = VirtualClock::instance();
    std::unique_ptr<MockBed> bed;
    std::unique_ptr<QTemporaryDir> state;
    std::unique_ptr<Faults> faults;
    std::unique_ptr<Device> device;
    QStringList events;
};

void tst_BoardConformance::initTestCase_data()
{
    QTest::addColumn<QString>("backEnd");
    QTest::newRow("simulated") << q("simulated");
    if (canMock())
        QTest::newRow("board") << q("board");
}

std::unique_ptr<Device> tst_BoardConformance::makeDevice(const QString &backEnd)
{
    if (backEnd == q("simulated"))
        return std::make_unique<SimulatedDevice>(smallDevice(), clock, *faults);
    bed = std::make_unique<MockBed>();
    for (const char *name : {"alpha", "cut"})
        bed->add(q("P: /devices/panel/leds/%1\nE: SUBSYSTEM=leds\nA: max_brightness=255\\n\nA: brightness=0\\n\n"
                   "A: trigger=[none] timer\\n\nA: delay_on=0\\n\nA: delay_off=0\\n\n\n")
                     .arg(q(name)));
    state = std::make_unique<QTemporaryDir>();
    BoardConfiguration board;
    board.stateDirectory = state->path();
    board.parts = {{q("leds"), BoardConfiguration::Source::Real}};
    for (const auto &[halKey, name] : {std::pair{12, "alpha"}, std::pair{33, "cut"}}) {
        KeyLedConfiguration led;
        led.halKey = halKey;
        led.single = q(name);
        board.leds << led;
    }
    auto made = std::make_unique<BoardDevice>(board, smallDevice(), clock, *faults, [](const HardwareEvent &) {});
    QString error;
    if (!made->start(&error))
        qFatal("%s", qPrintable(error));
    return made;
}

void tst_BoardConformance::init()
{
    QFETCH_GLOBAL(QString, backEnd);
    clock.restart();
    events.clear();
    faults = std::make_unique<Faults>();
    device = makeDevice(backEnd);
    device->setKeyListener([this](int key, bool down) { see(q("key %1 %2").arg(key).arg(down)); });
    device->setNetListener([this](const std::any &) { see(q("net")); });
    device->setUsbListener([this](const std::any &) { see(q("usb")); });
    device->setCalibrationListener(
        [this](int command, int percent) { see(q("progress %1 %2").arg(command).arg(percent)); });
}

void tst_BoardConformance::cleanup()
{
    device.reset();
    bed.reset();
}

void tst_BoardConformance::see(const QString &what)
{
    events << (clock.currentThread() == ThreadKind::Device ? what : q("other thread: ") + what);
}

void tst_BoardConformance::calibrate(int command)
{
    device->calibrate(command, [this](bool ok, const std::string &message) {
        see(q("result %1 %2").arg(ok).arg(QString::fromStdString(message)).trimmed());
    });
    clock.advance(1000);
}

void tst_BoardConformance::beginsDark()
{
    const DeviceState begin = device->state();
    QCOMPARE(begin.keys.size(), 2);
    QCOMPARE(begin.keys.at(0).led.brightness, 0);
    QCOMPARE(begin.screenBrightness[1], 100);
    QCOMPARE(begin.netPorts.size(), 4);
    QCOMPARE(begin.missingParts, QStringList());
    QVERIFY(!begin.netPorts.at(0).isPlugged);
}

void tst_BoardConformance::keepsWhatItIsTold()
{
    device->setKeyLed(33, {0, 1, 100, 800});
    device->setScreenBrightness(2, 40);
    device->setTestPattern(3, 4);
    device->setPatternLevel(80);
    device->setPanelMode(15);
    device->setTestType(7);
    device->setMachineTestKind(1);
    QVERIFY(device->setPortSpeed(q("usb2"), 480));
    const DeviceState now = device->state();
    QVERIFY(findKey(now, 33)->led.isBlinking());
    QCOMPARE(now.screenBrightness[2], 40);
    QCOMPARE(now.pattern.type, 3);
    QCOMPARE(now.pattern.index, 4);
    QCOMPARE(now.pattern.level, 80);
    QCOMPARE(now.panelMode, 15);
    QCOMPARE(now.testType, 7);
    QCOMPARE(now.machineTestKind, 1);
    QCOMPARE(now.usbPorts.at(1).speed, 480.0);
}

void tst_BoardConformance::ignoresScreensThatItDoesNotHave()
{
    device->setScreenBrightness(3, 50);
    device->setScreenBrightness(-1, 50);
    device->setKeyLed(99, {0, 1, 100, 800});
    for (const int brightness : device->state().screenBrightness)
        QCOMPARE(brightness, 100);
}

void tst_BoardConformance::allKeysGetOneBrightness()
{
    device->setKeyLed(33, {0, 1, 100, 800});
    device->setAllKeyBrightness(30);
    for (const KeyState &key : device->state().keys) {
        QCOMPARE(key.led.brightness, 30);
        QCOMPARE(key.led.mode, 0);
    }
}

void tst_BoardConformance::stuckLedKeepsWhatItShows()
{
    QVERIFY(faults->set(q("led-stuck"), true, {{q("key"), 33}}, nullptr));
    device->setKeyLed(33, {0, 0, 100, 800});
    device->setAllKeyBrightness(30);
    const DeviceState now = device->state();
    QCOMPARE(findKey(now, 33)->led.brightness, 0);
    QCOMPARE(findKey(now, 12)->led.brightness, 30);
}

void tst_BoardConformance::keysAreReportedOnTheDeviceThread()
{
    QVERIFY(device->setKeyDown(12, true));
    const DeviceState held = device->state();
    QVERIFY(findKey(held, 12)->isDown);
    QVERIFY(device->setKeyDown(12, false));
    QCOMPARE(events, QStringList());
    clock.settle();
    QCOMPARE(events, (QStringList{q("key 12 1"), q("key 12 0")}));
}

void tst_BoardConformance::unknownKeysAndPortsAreRefused()
{
    QVERIFY(!device->setKeyDown(99, true));
    QVERIFY(!device->setPlugged(q("net9"), true));
    QVERIFY(!device->setPlugged(q("lcd"), true));
    QVERIFY(!device->setBlocked(q("usb9"), true));
    QVERIFY(!device->setBlocked(q("net1"), true));
    QVERIFY(!device->setPortSpeed(q("net1"), 480));
    QVERIFY(!device->setPartPresent(q("lcd"), false));
    QVERIFY(!device->finishCalibration(2, true, {}));
    clock.advance(1000);
    QCOMPARE(events, QStringList());
}

void tst_BoardConformance::onlyNetChangesAreReported()
{
    for (const bool plugged : {true, true, false, false})
        QVERIFY(device->setPlugged(q("net1"), plugged));
    clock.advance(100);
    QCOMPARE(events, (QStringList{q("net"), q("net")}));
}

void tst_BoardConformance::onlyUsbChangesAreReported()
{
    for (const bool on : {true, true})
        QVERIFY(device->setPlugged(q("usb1"), on) && device->setBlocked(q("usb2"), on));
    clock.advance(100);
    QCOMPARE(events, (QStringList{q("usb"), q("usb")}));
}

void tst_BoardConformance::reportsHoldTheState()
{
    device->setPlugged(q("net2"), true);
    device->setPlugged(q("usb1"), true);
    device->setBlocked(q("usb1"), true);
    const auto net = std::any_cast<std::shared_ptr<std::vector<s_NetworkPortLink>>>(device->netReport());
    QCOMPARE(net->size(), size_t(4));
    QCOMPARE(net->at(0).link, 0);
    QCOMPARE(net->at(1).link, 1);
    const auto usb = std::any_cast<std::shared_ptr<std::vector<s_NodeUSB>>>(device->usbReport());
    const auto first =
        std::find_if(usb->begin(), usb->end(), [](const s_NodeUSB &node) { return node.nodeType == 26; });
    QVERIFY(first != usb->end());
    QCOMPARE(first->linkActive, 1);
    QCOMPARE(first->linkBlocked, 1);
}

void tst_BoardConformance::positionStaysInItsRange()
{
    device->setTBarPosition(1.5);
    QCOMPARE(device->state().tbar.position, 1.0);
    device->setTBarPosition(-1);
    QCOMPARE(device->state().tbar.position, 0.0);
}

void tst_BoardConformance::calibrationReportsItsProgress()
{
    calibrate(2);
    QCOMPARE(
        events,
        (QStringList{q("progress 2 25"), q("progress 2 50"), q("progress 2 75"), q("progress 2 100"), q("result 1")}));
    QCOMPARE(device->state().tbar.step, QString());
}

void tst_BoardConformance::leavingTheTBarPhaseForgetsTheFailure()
{
    device->setPanelMode(12);
    calibrate(1); // the bar is at the bottom
    QVERIFY(device->state().tbar.failure.startsWith(q("step 1 (top) failed")));
    QCOMPARE(events.last().left(8), q("result 0"));
    device->setPanelMode(9);
    QCOMPARE(device->state().tbar.failure, QString());
}

void tst_BoardConformance::partsDisappearAndComeBack()
{
    QVERIFY(device->setPartPresent(q("leds"), false));
    QCOMPARE(device->state().missingParts, QStringList{q("leds")});
    device->setKeyLed(33, {0, 0, 100, 800});
    QVERIFY(device->setPartPresent(q("leds"), true));
    QCOMPARE(device->state().missingParts, QStringList());
    const DeviceState now = device->state();
    QCOMPARE(findKey(now, 33)->led.brightness, 100);
}

void tst_BoardConformance::listenersCanBeReplacedAndRemoved()
{
    device->setKeyListener({});
    device->setKeyDown(12, true);
    clock.settle();
    device->setKeyListener([this](int, bool) { see(q("new listener")); });
    device->setKeyDown(12, false);
    clock.settle();
    QCOMPARE(events, QStringList{q("new listener")});
}

void tst_BoardConformance::factoryModeCanBeEnteredAndLeft()
{
    device->setFactoryMode(true);
    device->setFactoryMode(true);
    device->setKeyDown(12, true);
    device->setFactoryMode(false);
    clock.settle();
    QCOMPARE(events, QStringList{q("key 12 1")});
}

void tst_BoardConformance::operationsComeFromAnyThread()
{
    constexpr int Rounds = 300;
    std::vector<std::thread> threads;
    for (const int halKey : {12, 33}) {
        threads.emplace_back([this, halKey] {
            for (int round = 0; round < Rounds; ++round) {
                device->setKeyLed(halKey, {2, round % 2, round % 101, 800});
                device->setKeyDown(halKey, round % 2 == 0);
            }
        });
    }
    for (int round = 0; round < Rounds; ++round)
        QCOMPARE(device->state().keys.size(), 2);
    for (std::thread &thread : threads)
        thread.join();
    clock.settle();
    QCOMPARE(events.size(), 2 * Rounds);
}

void tst_BoardConformance::whatIsScheduledEndsWithTheDevice()
{
    device->setKeyDown(12, true);
    device->setPlugged(q("net1"), true);
    device->calibrate(2, [this](bool, const std::string &) { see(q("result")); });
    device.reset();
    clock.advance(1000);
    QCOMPARE(events, QStringList());
}

PANELHOST_TEST_MAIN(tst_BoardConformance)
#include "tst_boardconformance.moc"
