#include "device/board/usbports.h"
#include "pump.h"

#include <QtCore/QDir>
#include <QtTest/QtTest>

#include <cstring>
#include <endian.h>
#include <linux/netlink.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace panelhost;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

/// Sends what udev sends to its listeners, through the kernel.
class UdevSender
{
public:
    UdevSender() : m_socket(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_KOBJECT_UEVENT)) {}
    ~UdevSender() { close(m_socket); }
    UdevSender(const UdevSender &) = delete;
    UdevSender &operator=(const UdevSender &) = delete;

    bool send(const char *action, const char *path)
    {
        QByteArray properties;
        for (const QByteArray &property :
             {QByteArray("ACTION=") + action, QByteArray("DEVPATH=") + path, QByteArray("SUBSYSTEM=usb"),
              QByteArray("DEVTYPE=usb_device"), QByteArray("SEQNUM=") + QByteArray::number(++m_sequence)})
            properties += property + '\0';
        // libudev's header; the kernel compares the hash of the subsystem with what a listener wants.
        struct
        {
            char prefix[8] = {'l', 'i', 'b', 'u', 'd', 'e', 'v', '\0'};
            quint32 magic = htobe32(0xfeedcafe);
            quint32 size = sizeof(*this);
            quint32 propertiesOffset = sizeof(*this);
            quint32 propertiesSize = 0;
            quint32 subsystem = htobe32(hash("usb"));
            quint32 type = htobe32(hash("usb_device"));
            quint32 tags[2] = {};
        } header;
        header.propertiesSize = static_cast<quint32>(properties.size());
        const QByteArray message =
            QByteArray(reinterpret_cast<const char *>(&header), static_cast<int>(sizeof header)) + properties;
        sockaddr_nl address = {};
        address.nl_family = AF_NETLINK;
        address.nl_groups = 2; // the listeners of udev
        return sendto(m_socket, message.constData(), static_cast<std::size_t>(message.size()), 0,
                      reinterpret_cast<sockaddr *>(&address), sizeof address)
            == message.size();
    }

private:
    // MurmurHash2, as libudev has it.
    static quint32 hash(const QByteArray &text)
    {
        constexpr quint32 factor = 0x5bd1e995;
        auto value = static_cast<quint32>(text.size());
        int position = 0;
        for (; position + 4 <= text.size(); position += 4) {
            quint32 word = 0;
            std::memcpy(&word, text.constData() + position, sizeof word);
            word *= factor;
            word ^= word >> 24;
            value = value * factor ^ word * factor;
        }
        const int rest = text.size() - position;
        for (int byte = rest - 1; byte >= 0; --byte)
            value ^= static_cast<quint32>(static_cast<unsigned char>(text.at(position + byte))) << 8 * byte;
        if (rest > 0)
            value *= factor;
        value = (value ^ value >> 13) * factor;
        return value ^ value >> 15;
    }

    int m_socket;
    int m_sequence = 0;
};

}

/// USB ports while reports come faster than they are read: the kernel drops them then. The kernel's own sockets are
/// used, with a directory in the place of /sys.
class tst_BoardUsbOverrun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (unshare(CLONE_NEWNET | CLONE_NEWNS) != 0)
            QSKIP("This test needs a network and mounts of its own: run it as root.");
        QCOMPARE(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        QCOMPARE(mount("none", "/sys", "tmpfs", 0, nullptr), 0);
        QCOMPARE(mount("none", "/run", "tmpfs", 0, nullptr), 0);
        // libudev listens only if there is udev, and takes only a real /sys without this.
        QVERIFY(QDir().mkpath(q("/run/udev/control")));
        qputenv("SYSTEMD_DEVICE_VERIFY_SYSFS", "0");
    }

    void stateIsReadAgainAfterAnOverrun()
    {
        addDevice();
        UsbPorts::Configuration configuration;
        configuration.ports = {{q("1-1")}};
        configuration.receiveBuffer = 8192;
        int changes = 0;
        UsbPorts ports(configuration, {[&changes](int, const UsbPorts::State &) { ++changes; }});
        QString error;
        QVERIFY2(ports.start(&error), qPrintable(error));
        QVERIFY(ports.state(0).isPlugged);

        UdevSender udev;
        QVERIFY(udev.send("remove", "/devices/usb1/1-1"));
        QVERIFY(pump(ports.sources(), [&] { return !ports.state(0).isPlugged; }));
        // The first reports fill the buffer; the last one, which matters, is dropped.
        int sent = 0;
        while (sent < 1000 && udev.send("add", "/devices/usb1/1-1"))
            ++sent;
        udev.send("remove", "/devices/usb1/1-1");
        QVERIFY(QFile::remove(q("/sys/bus/usb/devices/1-1")));
        QVERIFY(QDir(q("/sys/devices/usb1/1-1")).removeRecursively());
        drain(ports.sources());
        QVERIFY(!ports.state(0).isPlugged);
        QVERIFY2(changes >= 2, qPrintable(QString::number(changes)));

        addDevice();
        QVERIFY(udev.send("add", "/devices/usb1/1-1"));
        QVERIFY(pump(ports.sources(), [&] { return ports.state(0).isPlugged; }));
    }

private:
    static void addDevice()
    {
        QVERIFY(QDir().mkpath(q("/sys/devices/usb1/1-1")));
        QVERIFY(QDir().mkpath(q("/sys/bus/usb/devices")));
        QFile uevent(q("/sys/devices/usb1/1-1/uevent"));
        QVERIFY(uevent.open(QIODevice::WriteOnly));
        uevent.write("DEVTYPE=usb_device\n");
        QVERIFY(QFile::link(q("../../../bus/usb"), q("/sys/devices/usb1/1-1/subsystem")));
        QVERIFY(QFile::link(q("../../../devices/usb1/1-1"), q("/sys/bus/usb/devices/1-1")));
    }
};

QTEST_GUILESS_MAIN(tst_BoardUsbOverrun)
#include "tst_boardusboverrun.moc"
