#include "device/board/udevmonitor.h"

#include <cerrno>
#include <utility>

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
    if (receiveBuffer > 0)
        udev_monitor_set_receive_buffer_size(m_monitor.get(), receiveBuffer);
    if (udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), subsystem, nullptr) < 0
        || udev_monitor_enable_receiving(m_monitor.get()) < 0)
        m_monitor.reset();
}

int UdevMonitor::fd() const
{
    return m_monitor ? udev_monitor_get_fd(m_monitor.get()) : -1;
}

// After an overrun, the kernel first says so; then come the reports that are still in the buffer. They are older than
// what an enumeration finds, so they are read first.
void UdevMonitor::ready()
{
    for (int report = 0; report < MaxReports; ++report) {
        errno = 0;
        const UdevDevice device(udev_monitor_receive_device(m_monitor.get()));
        if (device) {
            const char *action = udev_device_get_action(device.get());
            m_listeners.changed(QString::fromLatin1(action ? action : ""), *device);
        } else if (errno == ENOBUFS) {
            m_hasLost = true;
        } else {
            if (std::exchange(m_hasLost, false))
                m_listeners.overflowed();
            return;
        }
    }
}

}
