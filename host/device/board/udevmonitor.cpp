#include "device/board/udevmonitor.h"

#include <cerrno>

namespace panelhost {

namespace {

// Other sources have their turn after so many reports.
constexpr int MaxReports = 64;

}

UdevMonitor::UdevMonitor(const char *subsystem, Listeners listeners, int receiveBuffer)
    : m_context(udev_new()), m_listeners(std::move(listeners))
{
    m_monitor.reset(udev_monitor_new_from_netlink(m_context.get(), "udev"));
    if (!m_monitor)
        return;
    udev_monitor_set_receive_buffer_size(m_monitor.get(), receiveBuffer);
    if (udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), subsystem, nullptr) < 0
        || udev_monitor_enable_receiving(m_monitor.get()) < 0)
        m_monitor.reset();
}

int UdevMonitor::fd() const
{
    return m_monitor ? udev_monitor_get_fd(m_monitor.get()) : -1;
}

void UdevMonitor::ready()
{
    for (int report = 0; report < MaxReports; ++report) {
        errno = 0;
        const UdevDevice device(udev_monitor_receive_device(m_monitor.get()));
        if (!device) {
            if (errno == ENOBUFS)
                m_listeners.overflowed();
            return;
        }
        const char *action = udev_device_get_action(device.get());
        m_listeners.changed(QString::fromLatin1(action ? action : ""), *device);
    }
}

}
