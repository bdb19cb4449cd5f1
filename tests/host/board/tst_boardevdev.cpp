#include "device/board/evdevinput.h"
#include "mockinput.h"
#include "pump.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <unistd.h>

using namespace panelhost;
using By = InputDeviceSelector::By;

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

MockInput::Description panel(int number)
{
    return {number,
            q("panel-keys"),
            q("platform-keys"),
            {KEY_F1, KEY_F2, KEY_ENTER},
            {REL_DIAL},
            {{ABS_X, range(0, 1000, 500)}, {ABS_THROTTLE, range(0, 255, 40)}}};
}

}

/// Input devices on a mock bed: keys, knob, joystick and slider axis.
class tst_BoardEvdev : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!canMock())
            QSKIP("Run this test under umockdev-wrapper.");
    }

    void init()
    {
        events.clear();
        bed = std::make_unique<MockBed>();
        configuration = {};
        configuration.device = {By::Name, q("panel-keys")};
        configuration.keys = {{KEY_F1, 12}, {KEY_F2, 33}};
        configuration.navigation = {{EV_KEY, KEY_ENTER, 0, q("enter")},
                                    {EV_REL, REL_DIAL, 1, q("down")},
                                    {EV_REL, REL_DIAL, -1, q("up")},
                                    {EV_ABS, ABS_X, 1, q("right")},
                                    {EV_ABS, ABS_X, -1, q("left")}};
    }

    void cleanup()
    {
        input.reset();
        device.reset();
        bed.reset();
    }

    void keysGoDownAndUp()
    {
        open();
        device->send(EV_KEY, KEY_F1, 1);
        device->send(EV_KEY, KEY_F1, 2); // repeated by the kernel
        device->send(EV_KEY, KEY_F2, 1);
        device->send(EV_KEY, KEY_F1, 0);
        device->send(EV_KEY, KEY_F2, 0);
        expect({q("key 12 down"), q("key 33 down"), q("key 12 up"), q("key 33 up")});
    }

    void knobMovesStepByStep()
    {
        open();
        device->send(EV_REL, REL_DIAL, 2);
        device->send(EV_REL, REL_DIAL, -1);
        device->send(EV_KEY, KEY_ENTER, 1);
        device->send(EV_KEY, KEY_ENTER, 0);
        expect({q("navigate down"), q("navigate down"), q("navigate up"), q("navigate enter")});
    }

    // Once for each push, however much the stick trembles.
    void joystickMovesOnceForEachPush()
    {
        open();
        for (const int value : {700, 760, 800, 740, 700, 760, 600, 1000, 500, 100, 0, 500})
            device->send(EV_ABS, ABS_X, value);
        expect({q("navigate right"), q("navigate right"), q("navigate left")});
    }

    void axisIsReportedWithItsLimits()
    {
        configuration.axis = ABS_THROTTLE;
        open();
        device->send(EV_ABS, ABS_THROTTLE, 255);
        expect({q("axis 40 (0 to 255)"), q("axis 255 (0 to 255)")});
    }

    void unknownEventsAndHugeNumbersAreHarmless()
    {
        open();
        device->send(EV_MSC, MSC_SCAN, 77);
        device->send(EV_KEY, KEY_A, 1);
        device->send(EV_REL, REL_X, 5);
        device->send(0x1e, 0x2ff, 1);
        device->send(EV_REL, REL_DIAL, 2'000'000'000);
        device->send(EV_KEY, KEY_F2, 1);
        waitFor(q("key 33 down"));
        QCOMPARE(events.count(q("navigate down")), 32);
        QCOMPARE(events.size(), 33);
    }

    void missingDeviceIsNamed_data()
    {
        QTest::addColumn<int>("by");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("problem");
        QTest::newRow("name") << int(By::Name) << q("other") << q("There is no input device named \"other\".");
        QTest::newRow("path") << int(By::Path) << q("/dev/input/event77")
                              << q("There is no input device at /dev/input/event77.");
        QTest::newRow("property") << int(By::Property) << q("ID_PATH=x")
                                  << q("There is no input device with the udev property ID_PATH=x.");
    }
    void missingDeviceIsNamed()
    {
        QFETCH(int, by);
        QFETCH(QString, value);
        QFETCH(QString, problem);
        configuration.device = {static_cast<By>(by), value};
        device = std::make_unique<MockInput>(*bed, panel(3));
        start();
        QVERIFY(!input->isOpen());
        QCOMPARE(events, (QStringList{q("status ") + problem + q(" \"panelhost probe\" lists those that there are.")}));
    }

    void deviceIsFound_data()
    {
        QTest::addColumn<int>("by");
        QTest::addColumn<QString>("value");
        QTest::newRow("name") << int(By::Name) << q("panel-keys");
        QTest::newRow("path") << int(By::Path) << q("/dev/input/event4");
        QTest::newRow("property") << int(By::Property) << q("ID_PATH=platform-keys");
    }
    void deviceIsFound()
    {
        QFETCH(int, by);
        QFETCH(QString, value);
        configuration.device = {static_cast<By>(by), value};
        MockInput other(*bed, {3, q("other"), q("platform-other"), {KEY_F1}, {}, {}});
        device = std::make_unique<MockInput>(*bed, panel(4));
        start();
        device->send(EV_KEY, KEY_F1, 1);
        expect({q("key 12 down")});
    }

    void whatIsNoInputDeviceIsRefused()
    {
        const QString path = QDir::tempPath() + q("/no-input-device");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        configuration.device = {By::Path, path};
        start();
        QVERIFY(file.remove());
        QVERIFY(!input->isOpen());
        QCOMPARE(events.size(), 1);
        QVERIFY2(events.first().startsWith(q("status %1 isn't an input device: ").arg(path)),
                 qPrintable(events.first()));
    }

    void nodeThatMayNotBeReadIsNamedWithTheRemedy()
    {
        constexpr uid_t Nobody = 65534;
        if (geteuid() != 0)
            QSKIP("Root gives its rights away in this test.");
        const QTemporaryDir directory;
        const QString path = directory.filePath(q("event3"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner));
        configuration.device = {By::Path, path};
        QVERIFY(QFile::setPermissions(directory.path(),
                                      QFile::ReadOther | QFile::ExeOther | QFile::ReadOwner | QFile::WriteOwner
                                          | QFile::ExeOwner));
        QCOMPARE(seteuid(Nobody), 0);
        start();
        QCOMPARE(seteuid(0), 0);
        QVERIFY(!input->isOpen());
        QCOMPARE(events,
                 (QStringList{q("status %1 can't be opened: Permission denied. Install the udev rule "
                                "60-panelhost.rules and add the user "
                                "to the group panelhost, or run panelhost as root.")
                                  .arg(path)}));
    }

    void codesThatTheDeviceLacksAreNamed()
    {
        configuration.keys.insert(KEY_F11, 40);
        configuration.navigation.append({EV_REL, REL_WHEEL, 1, q("down")});
        device = std::make_unique<MockInput>(*bed, panel(3));
        start();
        QVERIFY(input->isOpen());
        QCOMPARE(events,
                 (QStringList{q(
                     "status The input device named \"panel-keys\" (/dev/input/event3) has no KEY_F11, REL_WHEEL.")}));
    }

    void grabsWhileAsked()
    {
        open();
        QVERIFY(!device->isGrabbed());
        input->setGrabbed(true);
        QVERIFY(device->isGrabbed());
        input->setGrabbed(false);
        QVERIFY(!device->isGrabbed());
        QCOMPARE(events, QStringList());
    }

    void deviceOfAnotherProgramIsNamed()
    {
        open();
        device->setGrabbedByOther(true);
        input->setGrabbed(true);
        QCOMPARE(events.size(), 1);
        QVERIFY2(events.first().contains(q("(/dev/input/event3) is grabbed by another program")),
                 qPrintable(events.first()));
        input->setGrabbed(false);
        device->setGrabbedByOther(false);
        input->setGrabbed(true);
        QCOMPARE(events.mid(1), (QStringList{q("status ")}));
    }

    // The kernel has dropped that one key went up and the other down.
    void lostEventsAreMadeUpFor()
    {
        open();
        device->send(EV_KEY, KEY_F1, 1);
        waitFor(q("key 12 down"));
        device->setState(KEY_F1, false);
        device->setState(KEY_F2, true);
        device->sendOverflow();
        waitFor(q("key 33 down"));
        device->send(EV_REL, REL_DIAL, 1);
        waitFor(q("navigate down"));
        QCOMPARE(QSet<QString>(events.begin() + 1, events.end() - 1),
                 (QSet<QString>{q("key 12 up"), q("key 33 down")}));
        QCOMPARE(events.size(), 4);
    }

    void deviceThatDisappearsReleasesItsKeys_data()
    {
        QTest::addColumn<bool>("hangsUp");
        QTest::newRow("reading fails") << true;
        QTest::newRow("udev reports it") << false;
    }
    void deviceThatDisappearsReleasesItsKeys()
    {
        QFETCH(bool, hangsUp);
        open();
        device->send(EV_KEY, KEY_F1, 1);
        waitFor(q("key 12 down"));
        if (hangsUp)
            device->hangUp();
        else
            device->uevent("remove");
        expect({q("key 12 down"), q("status The input device named \"panel-keys\" was disconnected."), q("key 12 up")});
        QVERIFY(!input->isOpen());
    }

    // The kernel gives it another number.
    void deviceReturns()
    {
        open();
        input->setGrabbed(true);
        device->hangUp();
        waitFor(q("status The input device named \"panel-keys\" was disconnected."));
        MockInput other(*bed, {7, q("other"), q("platform-other"), {KEY_F1}, {}, {}});
        other.uevent("add");
        device = std::make_unique<MockInput>(*bed, panel(8));
        device->uevent("add");
        waitFor(q("status "));
        QVERIFY(device->isGrabbed());
        device->send(EV_KEY, KEY_F2, 1);
        waitFor(q("key 33 down"));
        QCOMPARE(events.size(), 3);
    }

    void deviceThatComesLaterIsOpened()
    {
        configuration.device = {By::Path, q("/dev/input/event5")};
        start();
        QVERIFY(!input->isOpen());
        device = std::make_unique<MockInput>(*bed, panel(5));
        device->uevent("add");
        waitFor(q("status "));
        QVERIFY(input->isOpen());
    }

    // Some reports are read at once: the last one counts.
    void burstOfPlugsEndsInTheRightState()
    {
        open();
        for (int count = 0; count < 500; ++count) {
            device->uevent("remove");
            device->uevent("add");
            if (count % 4 == 0)
                drain(input->sources());
        }
        device->uevent("remove");
        drain(input->sources());
        QVERIFY(!input->isOpen());
        QCOMPARE(events.count(q("status The input device named \"panel-keys\" was disconnected.")), 501);
    }

private:
    void start()
    {
        input = std::make_unique<EvdevInput>(
            configuration,
            EvdevInput::Callbacks{
                [this](int key, bool down) { events << q("key %1 %2").arg(key).arg(down ? q("down") : q("up")); },
                [this](const QString &key) { events << q("navigate ") + key; },
                [this](int value, int minimum, int maximum) {
                    events << q("axis %1 (%2 to %3)").arg(value).arg(minimum).arg(maximum);
                },
                [this](const QString &problem) { events << q("status ") + problem; }});
        input->start();
    }

    void open()
    {
        device = std::make_unique<MockInput>(*bed, panel(3));
        start();
        QVERIFY2(input->isOpen(), qPrintable(events.join(q(", "))));
    }

    void waitFor(const QString &event)
    {
        QVERIFY2(pump(input->sources(), [&] { return events.contains(event); }), qPrintable(events.join(q(", "))));
    }

    void expect(const QStringList &expected)
    {
        QVERIFY2(pump(input->sources(), [&] { return events.size() >= expected.size(); }),
                 qPrintable(events.join(QLatin1Char('\n'))));
        drain(input->sources());
        QCOMPARE(events, expected);
    }

    std::unique_ptr<MockBed> bed;
    std::unique_ptr<MockInput> device;
    EvdevInput::Configuration configuration;
    std::unique_ptr<EvdevInput> input;
    QStringList events;
};

QTEST_GUILESS_MAIN(tst_BoardEvdev)
#include "tst_boardevdev.moc"
