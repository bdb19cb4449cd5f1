#pragma once

#include "device/board/udevmonitor.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <vector>

namespace panelhost {

/// The USB ports of a board, as udev reports them. A port is known by its path in the kernel, such as "1-1.2": port 2
/// of the hub at port 1 of bus 1. A USB 3 connector has two paths, one on each of its buses.
class UsbPorts
{
public:
    struct Configuration
    {
        QList<QStringList> ports; ///< the paths of each port
        int receiveBuffer = 0;    ///< as for UdevMonitor
    };

    struct State
    {
        bool isPlugged = false;
        /// The device isn't authorized, or the port has reported too much current since a device was plugged in last.
        bool isBlocked = false;
        double speed = 0; ///< of the device, in Mbit/s; 0 if no device is plugged in or its speed is unknown
        bool operator==(const State &o) const
        {
            return isPlugged == o.isPlugged && isBlocked == o.isBlocked && speed == o.speed;
        }
        bool operator!=(const State &o) const { return !(*this == o); }
    };

    struct Callbacks
    {
        std::function<void(int port, const State &state)> changed; ///< @c port is an index into Configuration::ports
    };

    UsbPorts(const Configuration &configuration, Callbacks callbacks);

    /// Reads the current states and reports those that aren't State(). Returns false and sets @p error if udev can't be
    /// reached.
    bool start(QString *error);
    QList<EventSource *> sources() { return {&m_monitor}; }

    State state(int port) const { return m_ports.at(static_cast<std::size_t>(port)).reported; }

private:
    // What is plugged into one path.
    struct Socket
    {
        int port;
        bool isPlugged = false;
        bool isAuthorized = true;
        bool hasOverCurrent = false;
        double speed = 0;
    };

    struct Port
    {
        QStringList paths;
        State reported;
    };

    void deviceChanged(const QString &action, udev_device &device);
    void overCurrentChanged(const QString &hubPort);
    static void read(Socket &socket, udev_device &device);
    void readAll();
    void report(int port);

    const Callbacks m_callbacks;
    UdevMonitor m_monitor;
    std::vector<Port> m_ports;
    QHash<QString, Socket> m_sockets; // by path
};

/// Returns the kernel's name of the hub's port at @p path, such as "1-1-port2" for "1-1.2" and "usb1-port2" for "1-2".
/// Empty if @p path isn't the path of a port.
QString usbHubPortName(const QString &path);

}
