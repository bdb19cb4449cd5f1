#include "device/board/usbports.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

bool isInterface(const QString &name)
{
    return name.contains(QLatin1Char(':')); // such as "1-1.2:1.0"
}

}

QString usbHubPortName(const QString &path)
{
    static const QRegularExpression form(QStringLiteral("^(\\d+)-((?:\\d+\\.)*)(\\d+)$"));
    const auto match = form.match(path);
    if (!match.hasMatch())
        return {};
    const QString bus = match.captured(1);
    QString hubs = match.captured(2);
    hubs.chop(1);
    const QString hub = hubs.isEmpty() ? QStringLiteral("usb") + bus : bus + QLatin1Char('-') + hubs;
    return hub + QStringLiteral("-port") + match.captured(3);
}

UsbPorts::UsbPorts(const Configuration &configuration, Callbacks callbacks)
    : m_callbacks(std::move(callbacks)),
      m_monitor("usb",
                {[this](const QString &action, udev_device &device) { deviceChanged(action, device); },
                 [this] { readAll(); }},
                configuration.receiveBuffer)
{
    for (const QStringList &paths : configuration.ports) {
        const int port = static_cast<int>(m_ports.size());
        m_ports.push_back({paths, {}});
        for (const QString &path : paths) {
            Socket socket;
            socket.port = port;
            m_sockets.insert(path, socket);
        }
    }
}

bool UsbPorts::start(QString *error)
{
    if (!m_monitor.isValid()) {
        *error = QStringLiteral("The USB ports can't be watched: udev can't be reached.");
        return false;
    }
    readAll();
    return true;
}

// The report itself says whether a device came or went: in sysfs there may be a later state already.
void UsbPorts::deviceChanged(const QString &action, udev_device &device)
{
    const char *overCurrent = udev_device_get_property_value(&device, "OVER_CURRENT_PORT");
    if (overCurrent)
        overCurrentChanged(QString::fromLocal8Bit(overCurrent).section(QLatin1Char('/'), -1));
    const QString name = deviceName(device);
    const auto socket = m_sockets.find(name.section(QLatin1Char(':'), 0, 0));
    if (socket == m_sockets.end())
        return;
    if (isInterface(name)) {
        // A device loses its interfaces when it is no longer authorized, and gets them back.
        const UdevDevice parent(udev_device_new_from_subsystem_sysname(&m_monitor.context(), "usb",
                                                                       socket.key().toLocal8Bit().constData()));
        if (socket->isPlugged && parent)
            read(*socket, *parent);
    } else if (action == QLatin1String("remove")) {
        socket->isPlugged = false;
        socket->isAuthorized = true;
        socket->speed = 0;
    } else {
        if (action == QLatin1String("add"))
            socket->hasOverCurrent = false;
        socket->isPlugged = true;
        read(*socket, device);
    }
    report(socket->port);
}

// The kernel only counts: it reports the beginning and the end of too much current alike.
void UsbPorts::overCurrentChanged(const QString &hubPort)
{
    for (auto socket = m_sockets.begin(); socket != m_sockets.end(); ++socket) {
        if (usbHubPortName(socket.key()) != hubPort)
            continue;
        socket->hasOverCurrent = true;
        report(socket->port);
    }
}

void UsbPorts::read(Socket &socket, udev_device &device)
{
    socket.isAuthorized = deviceAttribute(device, "authorized") != QLatin1String("0");
    socket.speed = qMax(0.0, deviceAttribute(device, "speed").toDouble()); // "1.5" is the lowest
}

void UsbPorts::readAll()
{
    for (Socket &socket : m_sockets) {
        socket.isPlugged = false;
        socket.isAuthorized = true;
        socket.speed = 0;
    }
    visitDevices(m_monitor.context(), "usb", [this](udev_device &device) {
        const auto socket = m_sockets.find(deviceName(device));
        if (socket == m_sockets.end())
            return;
        socket->isPlugged = true;
        read(*socket, device);
    });
    for (std::size_t port = 0; port < m_ports.size(); ++port)
        report(static_cast<int>(port));
}

void UsbPorts::report(int index)
{
    Port &port = m_ports[static_cast<std::size_t>(index)];
    State state;
    for (const QString &path : qAsConst(port.paths)) {
        const Socket &socket = *m_sockets.constFind(path);
        state.isPlugged = state.isPlugged || socket.isPlugged;
        state.isBlocked = state.isBlocked || !socket.isAuthorized || socket.hasOverCurrent;
        state.speed = qMax(state.speed, socket.speed);
    }
    if (std::exchange(port.reported, state) != state)
        m_callbacks.changed(index, state);
}

}
