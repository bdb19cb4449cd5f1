#pragma once

#include <any>
#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// The service "lcdMemoryCacheNodeUSB": the USB tree. The payload is a
/// `std::shared_ptr<std::vector<LCD::ProtocolImpl::s_NodeUSB>>`, delivered on any thread.
/// A second registration with the same subscriber name replaces the first.
class IUSB
{
public:
    /// Registers @p callback for reports: the state of all nodes, sent after the registration and after each request.
    /// @p mode must be 2, the value that the device requires. Its meaning is unknown.
    virtual void registerReportCallback(const std::string &subscriber, int mode,
                                        const std::function<void(std::any)> &callback) = 0;
    /// Registers @p callback for changed events, sent when a link has changed.
    virtual void registerChangedCallback(const std::string &subscriber, int mode,
                                         const std::function<void(std::any)> &callback) = 0;

protected:
    ~IUSB() = default;
};

}
