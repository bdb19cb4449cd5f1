#pragma once

#include <functional>
#include <string>

namespace LCD::RepairMode {

/// The service "lcdFactoryReset": sets the device back to the state in which it left the factory. The order of the
/// operations is part of the interface.
class IFactoryReset
{
public:
    /// @p message is the reason of a failure in UTF-8, for the log. It isn't translated and may be empty.
    using Listener = std::function<void(bool ok, const std::string &message)>;

    /// Starts a factory reset and returns at once. @p listener is called once, on any thread, when the reset is done or
    /// has failed. Call this on the GUI thread.
    virtual void resetDevice(const Listener &listener) = 0;

protected:
    ~IFactoryReset() = default;
};

}
