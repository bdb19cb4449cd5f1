#include "device/board/boardprobe.h"
#include "device/board/usbports.h"
#include "mockinput.h"
#include "pump.h"

#include <QtCore/QSemaphore>
#include <QtTest/QtTest>

#include <future>

using namespace panelhost;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

// The tree that the ports hang in: bus 1 with a hub at its port 1.
const char *const Hub = "/sys/devices/pci/usb1/1-1";

// Resident memory in KiB.
int memoryInUse()
{
    QFile status(q("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toInt();
    }
    return -1;
}

}

/// USB ports on a mock bed.
class tst_BoardUsbPorts : public QObject
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
        bed->add(q("P: /devices/pci/usb1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: speed=480\\n\n\n"
                   "P: /devices/pci/usb1/1-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: speed=480\\n\n\n"
                   "P: /devices/pci/usb1/1-1/1-1:1.0\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n\n"));
        configuration = {};
        configuration.ports = {{q("1-1.2"), q("2-1.2")}, {q("1-1.3")}};
    }

    void cleanup()
    {
        ports.reset();
        bed.reset();
    }

    void hubPortNames_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("name");
        QTest::newRow("root hub") << q("1-2") << q("usb1-port2");
        QTest::newRow("hub") << q("1-1.2") << q("1-1-port2");
        QTest::newRow("hub at a hub") << q("3-1.2.14") << q("3-1.2-port14");
        QTest::newRow("interface") << q("1-1.2:1.0") << QString();
        QTest::newRow("bus") << q("usb1") << QString();
        QTest::newRow("nothing") << QString() << QString();
    }
    void hubPortNames()
    {
        QFETCH(QString, path);
        QTEST(usbHubPortName(path), "name");
    }

    void whatIsPluggedAtTheStartIsReported()
    {
        addDevice("1-1.3", "12", "1");
        start();
        QCOMPARE(events, (QStringList{q("usb2 plugged 12")}));
        QVERIFY(!ports->state(0).isPlugged);
    }

    void devicesComeAndGo()
    {
        start();
        plug("1-1.2", "480");
        expect({q("usb1 plugged 480")});
        unplug("1-1.2");
        expect({q("usb1 plugged 480"), q("usb1 empty 0")});
        plug("1-1.2", "1.5");
        expect({q("usb1 plugged 480"), q("usb1 empty 0"), q("usb1 plugged 1.5")});
    }

    // A connector of USB 3 is on two buses.
    void bothPathsOfAPortCount()
    {
        start();
        plug("2-1.2", "5000");
        plug("1-1.2", "480");
        unplug("2-1.2");
        unplug("1-1.2");
        expect({q("usb1 plugged 5000"), q("usb1 plugged 480"), q("usb1 empty 0")});
    }

    void otherDevicesDoNotMatter()
    {
        start();
        plug("1-1.4", "480");
        plug("1-1.2.1", "480");
        plug("1-1.3", "480");
        expect({q("usb2 plugged 480")});
    }

    void deviceThatIsNotAuthorizedIsBlocked()
    {
        start();
        addDevice("1-1.2", "480", "0");
        bed->uevent(path("1-1.2"), "add");
        expect({q("usb1 plugged blocked 480")});
    }

    // The kernel reports it as a loss of the device's interfaces.
    void authorizationCanChange()
    {
        start();
        plug("1-1.2", "480");
        bed->add(q("P: /devices/pci/usb1/1-1/1-1.2/1-1.2:1.0\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n\n"));
        bed->uevent(path("1-1.2/1-1.2:1.0"), "add");
        expect({q("usb1 plugged 480")});
        bed->set(path("1-1.2"), "authorized", "0\n");
        bed->uevent(path("1-1.2/1-1.2:1.0"), "remove");
        expect({q("usb1 plugged 480"), q("usb1 plugged blocked 480")});
        bed->set(path("1-1.2"), "authorized", "1\n");
        bed->uevent(path("1-1.2/1-1.2:1.0"), "add");
        expect({q("usb1 plugged 480"), q("usb1 plugged blocked 480"), q("usb1 plugged 480")});
    }

    // Until the next device is plugged in: the kernel reports the beginning and the end of it in the same way.
    void tooMuchCurrentBlocksThePort()
    {
        start();
        plug("1-1.3", "480");
        overCurrent("/devices/pci/usb1/1-1/1-1:1.0/1-1-port3");
        unplug("1-1.3");
        overCurrent("/devices/pci/usb1/1-1/1-1:1.0/1-1-port3");
        overCurrent("/devices/pci/usb1/1-1/1-1:1.0/1-1-port4");
        plug("1-1.3", "480");
        expect(
            {q("usb2 plugged 480"), q("usb2 plugged blocked 480"), q("usb2 empty blocked 0"), q("usb2 plugged 480")});
    }

    void garbageInAttributesIsHarmless()
    {
        start();
        addDevice("1-1.2", "fast", "maybe");
        bed->uevent(path("1-1.2"), "add");
        addDevice("1-1.3", "-480", "");
        bed->uevent(path("1-1.3"), "add");
        expect({q("usb1 plugged 0"), q("usb2 plugged 0")});
    }

    void probeStatesWhatIsPluggedInAndHowFast()
    {
        bed->add(q("P: /devices/pci/usb1/1-1/1-1:1.0/1-1-port2\nE: SUBSYSTEM=usb\n\n"
                   "P: /devices/pci/usb1/1-1/1-1:1.0/1-1-port3\nE: SUBSYSTEM=usb\n\n"
                   "P: /devices/pci/usb1/1-1/1-1:1.0/1-1-port4\nE: SUBSYSTEM=usb\n\n"));
        addDevice("1-1.2", "480", "1");
        addDevice("1-1.3", "1.5", "1");
        bed->set(path("1-1.2"), "product", "Panel stick\n");
        QStringList lines;
        for (const ProbedDevice &port : probeBoard().usb)
            lines << port.name + q(" ") + port.details;
        QCOMPARE(lines,
                 (QStringList{q("1-1.2 Panel stick, 480 Mbit/s"), q("1-1.3 a device, 1.5 Mbit/s"), q("1-1.4 free")}));
    }

    // As many reports as in an hour of a rattling plug, sent as fast as they are read. The mock bed's socket holds a
    // few reports only.
    void burstIsReportedCompletely()
    {
        start();
        addDevice("1-1.2", "480", "1");
        int changes = 0;
        onChange = [&] {
            ++changes;
            unread.release();
        };
        constexpr int Plugs = 5000;
        const auto warmUp = std::async(std::launch::async, [this] { burst(100); });
        QVERIFY(pump(ports->sources(), [&] { return changes == 200; }));
        warmUp.wait();
        const int before = memoryInUse();
        changes = 0;
        const auto sender = std::async(std::launch::async, [this] { burst(Plugs); });
        QVERIFY2(pump(ports->sources(), [&] { return changes == 2 * Plugs; }), qPrintable(QString::number(changes)));
        sender.wait();
        drain(ports->sources());
        QCOMPARE(changes, 2 * Plugs);
        QVERIFY(!ports->state(0).isPlugged);
        const int growth = memoryInUse() - before;
        qInfo("10,000 reports, memory grew by %d KiB", growth);
#if !defined(__SANITIZE_ADDRESS__) // the sanitizer keeps freed memory for a while
        QVERIFY2(growth < 2048, qPrintable(QString::number(growth)));
#endif
    }

private:
    static QString path(const char *device)
    {
        return q(Hub) + QLatin1Char('/') + q(device);
    }

    void start()
    {
        ports = std::make_unique<UsbPorts>(
            configuration, UsbPorts::Callbacks{[this](int port, const UsbPorts::State &state) {
                if (onChange)
                    return onChange();
                events << q("usb%1 %2%3 %4")
                              .arg(port + 1)
                              .arg(state.isPlugged ? q("plugged") : q("empty"), state.isBlocked ? q(" blocked") : q(""))
                              .arg(state.speed);
            }});
        onChange = {};
        QString error;
        QVERIFY2(ports->start(&error), qPrintable(error));
    }

    void addDevice(const char *device, const char *speed, const char *authorized)
    {
        bed->add(q("P: /devices/pci/usb1/1-1/%1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n"
                   "A: speed=%2\\n\nA: authorized=%3\\n\n\n")
                     .arg(q(device), q(speed), q(authorized)));
    }

    void plug(const char *device, const char *speed)
    {
        addDevice(device, speed, "1");
        bed->uevent(path(device), "add");
    }

    void unplug(const char *device)
    {
        bed->uevent(path(device), "remove");
        drain(ports->sources());
        bed->remove(path(device));
    }

    void burst(int plugs)
    {
        for (int count = 0; count < 2 * plugs; ++count) {
            if (!unread.tryAcquire(1, 10'000))
                return; // a report was lost
            bed->uevent(path("1-1.2"), count % 2 == 0 ? "add" : "remove");
        }
    }

    void overCurrent(const char *port)
    {
        const QString hub = q(Hub) + q("/1-1:1.0");
        umockdev_testbed_set_property(bed->get(), hub.toUtf8().constData(), "OVER_CURRENT_PORT", port);
        bed->uevent(hub, "change");
        drain(ports->sources());
    }

    void expect(const QStringList &expected)
    {
        QVERIFY2(pump(ports->sources(), [&] { return events.size() >= expected.size(); }),
                 qPrintable(events.join(QLatin1Char('\n'))));
        drain(ports->sources());
        QCOMPARE(events, expected);
    }

    std::unique_ptr<MockBed> bed;
    UsbPorts::Configuration configuration;
    std::unique_ptr<UsbPorts> ports;
    std::function<void()> onChange;
    QSemaphore unread{8}; // reports that may be sent before the next one is read
    QStringList events;
};

QTEST_GUILESS_MAIN(tst_BoardUsbPorts)
#include "tst_boardusbports.moc"
