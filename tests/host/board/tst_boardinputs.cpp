#include "device/board/boardinputs.h"
#include "mockinput.h"
#include "networknamespace.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <condition_variable>
#include <mutex>

using namespace panelhost;
using Source = BoardConfiguration::Source;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

input_absinfo range(int minimum, int maximum, int value)
{
    input_absinfo info = {};
    info.minimum = minimum;
    info.maximum = maximum;
    info.value = value;
    return info;
}

/// The events of a board, which come on its thread.
class EventLog
{
public:
    void add(const HardwareEvent &event)
    {
        QStringList words = {event.action};
        for (const QVariant &argument : event.arguments)
            words << argument.toString();
        const std::lock_guard lock(m_mutex);
        m_events << words.join(QLatin1Char(' '));
        m_changed.notify_all();
    }
    /// Waits for @p count events, at most five seconds, and returns all that there are.
    QStringList wait(int count)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, std::chrono::seconds(5), [&] { return m_events.size() >= count; });
        return m_events;
    }
    void clear()
    {
        const std::lock_guard lock(m_mutex);
        m_events.clear();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    QStringList m_events;
};

}

/// The inputs of a board together, on mock devices and virtual network interfaces.
class tst_BoardInputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!canMock())
            QSKIP("Run this test under umockdev-wrapper.");
        if (!enterEmptyNetwork())
            QSKIP("This test needs a network of its own: run it as root.");
    }

    void init()
    {
        events.clear();
        bed = std::make_unique<MockBed>();
        directory = std::make_unique<QTemporaryDir>();
        board = {};
        board.file = q("board.yaml");
    }

    void cleanup()
    {
        inputs.reset();
        panel.reset();
        bed.reset();
        ip("link del port0");
    }

    // The device can be grabbed only once.
    void partsShareAnInputDevice()
    {
        useKeys();
        useTBar();
        addPanel(3);
        QVERIFY2(start(), qPrintable(error));
        QCOMPARE(events.wait(1), (QStringList{q("tbar 0")}));
        inputs->setGrabbed(true);
        inputs->calibrate(2); // its answer comes when the devices are grabbed
        QCOMPARE(events.wait(2).last(), q("calibration 2  true"));
        QVERIFY(panel->isGrabbed());
        panel->send(EV_KEY, KEY_F1, 1);
        panel->send(EV_KEY, KEY_F1, 0);
        panel->send(EV_REL, REL_DIAL, -1);
        panel->send(EV_ABS, ABS_THROTTLE, 128);
        QCOMPARE(events.wait(6).mid(2),
                 (QStringList{q("hold 33"), q("release 33"), q("navigate up"), q("tbar 0.502")}));
    }

    void missingPartsAreNamedWithTheirPlace()
    {
        useKeys();
        useTBar();
        board.parts.insert(q("net"), Source::Real);
        board.net.interfaces = QStringList{q("eth7")};
        board.netWhere = QStringList{q("board.yaml:9:3")};
        QVERIFY(!start());
        const QString missing =
            q("There is no input device named \"panel\". \"panelhost probe\" lists those that there are.");
        QCOMPARE(
            error.split(QLatin1Char('\n')),
            (QStringList{
                q("board.yaml:1:3: ") + missing,
                q("board.yaml:9:3: There is no network interface \"eth7\". \"ip link\" lists those that there are."),
                q("board.yaml:4:3: ") + missing,
            }));
    }

    void partsDisappearAndReturn()
    {
        useKeys();
        useTBar();
        addPanel(3);
        QVERIFY2(start(), qPrintable(error));
        events.wait(1);
        events.clear();
        panel->send(EV_KEY, KEY_F1, 1);
        QCOMPARE(events.wait(1), (QStringList{q("hold 33")}));
        events.clear();
        panel->hangUp();
        const QStringList gone = events.wait(4);
        QCOMPARE(
            QSet<QString>(gone.begin(), gone.end()),
            (QSet<QString>{q("part keys false"), q("part navigation false"), q("part tbar false"), q("release 33")}));
        events.clear();
        addPanel(4);
        panel->uevent("add");
        const QStringList back = events.wait(3);
        QCOMPARE(QSet<QString>(back.begin(), back.end()),
                 (QSet<QString>{q("part keys true"), q("part navigation true"), q("part tbar true")}));
    }

    void calibrationAnswersEachStep()
    {
        useTBar();
        addPanel(3);
        QVERIFY2(start(), qPrintable(error));
        int count = events.wait(1).size();
        const QList<std::pair<int, int>> steps = {{2, 0}, {1, 240}, {0, 5}, {1, 240}, {0, 5}, {1, 240}, {4, 5}};
        for (const auto &[command, value] : steps) {
            panel->send(EV_ABS, ABS_THROTTLE, value);
            if (value != 0)
                ++count;
            QCOMPARE(events.wait(count).size(), count);
            inputs->calibrate(command);
            count += command == 4 ? 2 : 1; // with the new ends, the T-Bar is elsewhere
            const QStringList seen = events.wait(count);
            QVERIFY2(seen.contains(q("calibration %1  true").arg(command)), qPrintable(seen.join(q(", "))));
        }
        QVERIFY(QFile::exists(board.tbar.slider.stateFile));
        inputs->calibrate(1);
        QCOMPARE(events.wait(count + 1).last(),
                 q("calibration 1 the T-Bar is at 2 % of its range, it must be at the top (75 % to 100 %) false"));
    }

    void linksBecomePlugs()
    {
        QCOMPARE(ip("link add port0 type veth peer name far0"), QString());
        QCOMPARE(ip("link set port0 up"), QString());
        board.parts.insert(q("net"), Source::Real);
        board.net.interfaces = QStringList{q("port0")};
        board.netWhere = QStringList{q("board.yaml:9:3")};
        QVERIFY2(start(), qPrintable(error));
        QCOMPARE(ip("link set far0 up"), QString());
        QCOMPARE(events.wait(1), (QStringList{q("plug net1")}));
        QCOMPARE(ip("link del port0"), QString());
        const QStringList seen = events.wait(3);
        QCOMPARE(QSet<QString>(seen.begin(), seen.end()),
                 (QSet<QString>{q("plug net1"), q("unplug net1"), q("part net false")}));
    }

    // A blocked port never seems to be linked.
    void blockedUsbPortsAreBlockedFirst()
    {
        bed->add(q("P: /devices/usb1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n\n"
                   "P: /devices/usb1/1-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: authorized=0\\n\n\n"));
        board.parts.insert(q("usb"), Source::Real);
        board.usb.ports = {{q("1-1")}};
        QVERIFY2(start(), qPrintable(error));
        QCOMPARE(events.wait(2), (QStringList{q("block usb1"), q("plug usb1")}));
        bed->uevent(q("/sys/devices/usb1/1-1"), "remove");
        QCOMPARE(events.wait(4).mid(2), (QStringList{q("unplug usb1"), q("unblock usb1")}));
    }

    // A device may be plugged in faster than before, on the other bus of a USB 3 port.
    void usbSpeedIsReportedWithThePlug()
    {
        bed->add(q("P: /devices/usb1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n\n"
                   "P: /devices/usb1/1-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: authorized=1\\n\n"
                   "A: speed=1.5\\n\n\n"));
        board.parts.insert(q("usb"), Source::Real);
        board.usb.ports = {{q("1-1"), q("2-1")}};
        QVERIFY2(start(), qPrintable(error));
        QCOMPARE(events.wait(1), (QStringList{q("plug usb1 1.5")}));
        bed->add(q("P: /devices/usb2/2-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: authorized=1\\n\n"
                   "A: speed=5000\\n\n\n"));
        bed->uevent(q("/sys/devices/usb2/2-1"), "add");
        QCOMPARE(events.wait(2).last(), q("plug usb1 5000"));
    }

private:
    static EvdevInput::Configuration panelInput()
    {
        EvdevInput::Configuration input;
        input.device = {InputDeviceSelector::By::Name, q("panel")};
        return input;
    }

    void useKeys()
    {
        board.parts.insert(q("keys"), Source::Real);
        EvdevInput::Configuration keys = panelInput();
        keys.keys = {{KEY_F1, 33}};
        board.inputs << InputConfiguration{q("keys"), q("board.yaml:1:3"), keys};
        EvdevInput::Configuration knob = panelInput();
        knob.navigation = {{EV_REL, REL_DIAL, -1, q("up")}};
        board.inputs << InputConfiguration{q("navigation"), q("board.yaml:1:3"), knob};
    }

    void useTBar()
    {
        board.parts.insert(q("tbar"), Source::Real);
        board.tbar.where = q("board.yaml:4:3");
        board.tbar.input = panelInput();
        board.tbar.input.axis = ABS_THROTTLE;
        board.tbar.slider.stateFile = directory->filePath(q("tbar.json"));
    }

    void addPanel(int number)
    {
        panel.reset();
        panel = std::make_unique<MockInput>(
            *bed,
            MockInput::Description{
                number, q("panel"), q("x"), {KEY_F1}, {REL_DIAL}, {{ABS_THROTTLE, range(0, 255, 0)}}});
    }

    bool start()
    {
        inputs = std::make_unique<BoardInputs>(board, [this](const HardwareEvent &event) { events.add(event); });
        return inputs->start(&error);
    }

    std::unique_ptr<MockBed> bed;
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<MockInput> panel;
    BoardConfiguration board;
    EventLog events;
    std::unique_ptr<BoardInputs> inputs;
    QString error;
};

QTEST_GUILESS_MAIN(tst_BoardInputs)
#include "tst_boardinputs.moc"
