#include "device/board/boardprobe.h"

#include "device/board/sysfsdevice.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <libevdev/libevdev.h>

namespace panelhost {

namespace {

QString attribute(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

QStringList entries(const QString &directory, const QString &pattern)
{
    return QDir(directory).entryList({pattern}, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// The codes of keys, knobs and axes, as a profile names them: "KEY_F1, ABS_THROTTLE". Not all of a whole keyboard.
QString codesOf(const libevdev &device)
{
    constexpr int MaxCodes = 32;
    QStringList codes;
    for (const unsigned type : {EV_KEY, EV_REL, EV_ABS}) {
        const int last = libevdev_event_type_get_max(type);
        for (int code = 0; code <= last; ++code) {
            const char *name = libevdev_event_code_get_name(type, static_cast<unsigned>(code));
            if (name && libevdev_has_event_code(&device, type, static_cast<unsigned>(code)) != 0)
                codes << QString::fromLatin1(name);
        }
    }
    if (codes.size() > MaxCodes)
        codes = codes.mid(0, MaxCodes) << QStringLiteral("...");
    return codes.join(QStringLiteral(", "));
}

QString inputDetails(const QString &node, bool *isUsable)
{
    QFile file(node);
    libevdev *device = nullptr;
    *isUsable = file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    if (!*isUsable)
        return QStringLiteral("%1: %2").arg(node, file.errorString());
    if (libevdev_new_from_fd(file.handle(), &device) != 0)
        return node;
    const QString codes = codesOf(*device);
    libevdev_free(device);
    return QStringLiteral("%1: %2").arg(node, codes);
}

QVector<ProbedDevice> probeInputs()
{
    QVector<ProbedDevice> found;
    const auto events = entries(QStringLiteral("/sys/class/input"), QStringLiteral("event*"));
    for (const QString &event : events) {
        ProbedDevice device;
        device.name = attribute(QStringLiteral("/sys/class/input/%1/../name").arg(event));
        device.details = inputDetails(QStringLiteral("/dev/input/") + event, &device.isUsable);
        if (!device.name.isEmpty())
            found << device;
    }
    return found;
}

ProbedDevice probeLight(const QString &deviceClass, const QString &name)
{
    const SysfsDevice device(deviceClass, name);
    QString error;
    const auto max = device.readNumber("max_brightness", 1, &error);
    const bool isUsable = max && device.checkWritable("brightness", &error);
    if (!isUsable)
        return {name, error, false};
    const QString color = device.has("multi_intensity") ? QStringLiteral(", multicolor") : QString();
    return {name, QStringLiteral("0 to %1%2").arg(*max).arg(color), true};
}

QVector<ProbedDevice> probeLights(const QString &deviceClass)
{
    QVector<ProbedDevice> found;
    const auto names = sysfsNames(deviceClass);
    for (const QString &name : names)
        found << probeLight(deviceClass, name);
    return found;
}

// "card0-HDMI-A-1" is the output "HDMI-A-1" for eglfs and "HDMI-1" for X.
QVector<ProbedDevice> probeOutputs()
{
    static const QRegularExpression card(QStringLiteral("^card\\d+-"));
    QVector<ProbedDevice> found;
    const auto cards = entries(QStringLiteral("/sys/class/drm"), QStringLiteral("card*-*"));
    for (const QString &name : cards) {
        const QString status = attribute(QStringLiteral("/sys/class/drm/%1/status").arg(name));
        if (status == QLatin1String("connected"))
            found << ProbedDevice{QString(name).remove(card), status, true};
    }
    return found;
}

QVector<ProbedDevice> probeIio()
{
    const QString directory = QStringLiteral("/sys/bus/iio/devices");
    static const QRegularExpression channel(QStringLiteral("^in_(.+)_raw$"));
    QVector<ProbedDevice> found;
    const auto devices = entries(directory, QStringLiteral("iio:device*"));
    for (const QString &device : devices) {
        const QString path = directory + QLatin1Char('/') + device;
        const auto files = entries(path, QStringLiteral("in_*_raw"));
        for (const QString &file : files)
            found << ProbedDevice{QStringLiteral("{device: %1, channel: %2}")
                                      .arg(attribute(path + QStringLiteral("/name")), channel.match(file).captured(1)),
                                  QStringLiteral("%1, now %2").arg(device, attribute(path + QLatin1Char('/') + file)),
                                  true};
    }
    return found;
}

QVector<ProbedDevice> probeNet()
{
    constexpr int Ethernet = 1; // ARPHRD_ETHER
    QVector<ProbedDevice> found;
    const auto names = sysfsNames(QStringLiteral("net"));
    for (const QString &name : names) {
        const QString path = QStringLiteral("/sys/class/net/") + name;
        if (attribute(path + QStringLiteral("/type")).toInt() == Ethernet)
            found << ProbedDevice{name, attribute(path + QStringLiteral("/operstate")), true};
    }
    return found;
}

// The kernel names a port "1-0:1.0/usb1-port2" or "1-1:1.0/1-1-port3"; a device in it is "1-2" or "1-1.3".
QString portPath(const QString &hub, const QString &port)
{
    static const QRegularExpression form(QStringLiteral("^(?:usb(\\d+)|(.+))-port(\\d+)$"));
    const QRegularExpressionMatch match = form.match(port);
    if (!match.hasMatch() || !hub.contains(QLatin1Char(':')))
        return {};
    const QString root = match.captured(1);
    return root.isEmpty() ? match.captured(2) + QLatin1Char('.') + match.captured(3)
                          : root + QLatin1Char('-') + match.captured(3);
}

// What is in a port: "Panel stick, 480 Mbit/s". Not every device says what it is.
QString usbDetails(const QString &device)
{
    const QString speed = attribute(device + QStringLiteral("/speed"));
    if (speed.isEmpty())
        return QStringLiteral("free");
    const QString product = attribute(device + QStringLiteral("/product"));
    const QString name = product.isEmpty() ? QStringLiteral("a device") : product;
    return QStringLiteral("%1, %2 Mbit/s").arg(name, speed);
}

QVector<ProbedDevice> probeUsb()
{
    const QString directory = QStringLiteral("/sys/bus/usb/devices");
    QVector<ProbedDevice> found;
    const auto hubs = entries(directory, QStringLiteral("*:1.0"));
    for (const QString &hub : hubs) {
        const auto ports = entries(directory + QLatin1Char('/') + hub, QStringLiteral("*-port*"));
        for (const QString &port : ports) {
            const QString path = portPath(hub, port);
            if (path.isEmpty())
                continue;
            found << ProbedDevice{path, usbDetails(directory + QLatin1Char('/') + path), true};
        }
    }
    return found;
}

struct Heading
{
    const char *title;
    QVector<ProbedDevice> ProbedBoard::*devices;
};

constexpr const char *none = "(none)";

const QVector<Heading> &headings()
{
    static const QVector<Heading> table = {
        {"input devices (keys, navigation, tbar)", &ProbedBoard::inputs},
        {"LEDs (leds)", &ProbedBoard::leds},
        {"backlights (screens)", &ProbedBoard::backlights},
        {"display outputs (screens)", &ProbedBoard::outputs},
        {"IIO channels (tbar)", &ProbedBoard::iio},
        {"network interfaces (net)", &ProbedBoard::net},
        {"USB ports (usb)", &ProbedBoard::usb},
    };
    return table;
}

// A text in quotes, so that a colon in it isn't YAML.
QString quoted(const QString &text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QString comments(const QVector<ProbedDevice> &devices)
{
    QString text;
    for (const ProbedDevice &device : devices)
        text += QStringLiteral("#   %1  (%2)\n").arg(quoted(device.name), device.details);
    return text;
}

// The LED that has the name of the key in its own, such as "panel:red:cut".
QString ledOf(const QString &key, const QVector<ProbedDevice> &leds)
{
    for (const ProbedDevice &led : leds) {
        const QStringList words = led.name.split(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")));
        if (led.isUsable && words.contains(key, Qt::CaseInsensitive))
            return led.name;
    }
    return {};
}

QString ledsSection(const ProbedBoard &board, const QStringList &keys)
{
    QString text =
        QStringLiteral("\n# The LED of each key. LEDs of this machine:\n") + comments(board.leds)
        + QStringLiteral(
            "# A key with several LEDs: CUT: {red: NAME, green: NAME}; with a multicolor one: CUT: {multicolor: "
            "NAME}\n");
    QString matched;
    for (const QString &key : keys) {
        const QString led = ledOf(key, board.leds);
        if (!led.isEmpty())
            matched += QStringLiteral("  %1: %2\n").arg(quoted(key), quoted(led));
    }
    return text + (matched.isEmpty() ? QStringLiteral("leds: simulated\n") : QStringLiteral("leds:\n") + matched);
}

QString screensSection(const ProbedBoard &board)
{
    constexpr int MaxScreens = 3;
    QString text = QStringLiteral("\n# Up to three screens, each with a backlight and the output for test patterns.\n")
        + comments(board.backlights) + comments(board.outputs);
    QString screens;
    int count = 0;
    for (const ProbedDevice &backlight : board.backlights) {
        if (backlight.isUsable && count++ < MaxScreens)
            screens += QStringLiteral("  - backlight: %1\n").arg(quoted(backlight.name));
    }
    return text + (screens.isEmpty() ? QStringLiteral("screens: simulated\n") : QStringLiteral("screens:\n") + screens);
}

QString inputSection(const ProbedBoard &board)
{
    return QStringLiteral("\n# Input devices of this machine:\n") + comments(board.inputs)
        + QStringLiteral("# keys: {device: {name: NAME}, events: {KEY_F1: CUT, KEY_F2: AUTO}}\n"
                         "# navigation: {device: {name: NAME}, events: {REL_DIAL+: down, REL_DIAL-: up, KEY_ENTER: "
                         "enter}}\n"
                         "keys: simulated\nnavigation: simulated\n"
                         "\n# The T-Bar is an axis of an input device, or one of these IIO channels:\n")
        + comments(board.iio)
        + QStringLiteral("# tbar: {device: {name: NAME}, axis: ABS_X}\n"
                         "# tbar: {iio: {device: NAME, channel: CHANNEL}, range: [BOTTOM, TOP]}\n"
                         "tbar: simulated\n");
}

QString listSection(const char *part, const char *comment, const QVector<ProbedDevice> &devices, int max)
{
    QStringList names;
    for (const ProbedDevice &device : devices) {
        if (names.size() < max)
            names << quoted(device.name);
    }
    const QString value =
        names.isEmpty() ? QStringLiteral("simulated") : QStringLiteral("[%1]").arg(names.join(QStringLiteral(", ")));
    return QStringLiteral("\n# %1\n").arg(QLatin1String(comment)) + comments(devices)
        + QStringLiteral("%1: %2\n").arg(QLatin1String(part), value);
}

}

ProbedBoard probeBoard()
{
    return {probeInputs(),
            probeLights(QStringLiteral("leds")),
            probeLights(QStringLiteral("backlight")),
            probeOutputs(),
            probeIio(),
            probeNet(),
            probeUsb()};
}

QString probeText(const ProbedBoard &board)
{
    QString text;
    for (const Heading &heading : headings()) {
        text += QLatin1String(heading.title) + QLatin1Char('\n');
        for (const ProbedDevice &device : board.*heading.devices)
            text += QStringLiteral("  %1  %2\n").arg(device.name, -32).arg(device.details);
        if ((board.*heading.devices).isEmpty())
            text += QStringLiteral("  %1\n").arg(QLatin1String(none));
    }
    return text;
}

QString probeProfile(const ProbedBoard &board, const QStringList &keys)
{
    constexpr int MaxPorts = 16;
    return QStringLiteral("# A board profile, written by \"panelhost probe --profile\" from what this machine offers.\n"
                          "# Replace \"simulated\" by what the board has; a part that isn't named has no service.\n")
        + inputSection(board) + ledsSection(board, keys) + screensSection(board)
        + listSection("net", "Network interfaces in the order of the ports:", board.net, MaxPorts)
        + listSection("usb", "USB ports in the order of the ports:", board.usb, MaxPorts);
}

}
