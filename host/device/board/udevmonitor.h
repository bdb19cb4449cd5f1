#pragma once

#include "device/board/eventsource.h"
#include "device/board/udevdevice.h"

#include <QtCore/QString>

namespace panelhost {

/// Listens for devices of one subsystem that appear, disappear or change, as udev reports them.
class UdevMonitor final : public EventSource
{
public:
    struct Listeners
    {
        std::function<void(const QString &action, udev_device &device)> changed; ///< @c action such as "add"
        /// Called if reports were lost because they came faster than they were read. Enumerate the devices then.
        std::function<void()> overflowed;
    };

    /// @p receiveBuffer is the size of the socket's buffer in bytes; 0 for the default of udev's library, which is
    /// large.
    UdevMonitor(const char *subsystem, Listeners listeners, int receiveBuffer = 0);

    /// Returns whether changes are reported. They aren't if udev can't be reached.
    bool isValid() const { return m_monitor != nullptr; }
    udev &context() const { return *m_context; }

    int fd() const override;
    void ready() override;

private:
    UdevContext m_context;
    std::unique_ptr<udev_monitor, UdevDeleter> m_monitor;
    Listeners m_listeners;
    bool m_hasLost = false;
};

}
