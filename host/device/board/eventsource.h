#pragma once

#include <poll.h>

namespace panelhost {

/// Something that a board reports through a file descriptor, such as an input device or a netlink socket. It is added
/// to an EventLoop and used on the thread of that loop only.
class EventSource
{
public:
    virtual ~EventSource() = default;

    /// Returns the file descriptor to wait for; -1 as long as there is none. The loop asks before each wait, so a
    /// source may close its descriptor and open another one.
    virtual int fd() const = 0;
    /// Returns the events of poll() to wait for. Attributes of sysfs report a change with POLLPRI.
    virtual short events() const { return POLLIN; }
    /// Called when fd() has one of the events, an error or a hang-up. It must read what is there or close the
    /// descriptor, otherwise it is called again immediately. It must not block. It may add and remove sources.
    virtual void ready() = 0;
};

}
