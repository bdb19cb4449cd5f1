#pragma once

#include <any>
#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// The service "lcdMemoryCacheNetworkPort": the links of the net ports. The payload is a
/// `std::shared_ptr<std::vector<LCD::ProtocolImpl::s_NetworkPortLink>>`, delivered on any thread.
/// A second registration with the same subscriber name replaces the first.
class INetworkPort
{
public:
    /// Registers @p callback for reports: the state of all ports, sent after the registration and after each request.
    /// @p mode must be 2, the value that the device requires. Its meaning is unknown.
    virtual void registerReportCallback(const std::string &subscriber, int mode,
                                        const std::function<void(std::any)> &callback) = 0;
    /// Reserves its position in the interface. The component never calls it.
    virtual void reserved() = 0;
    /// Registers @p callback for changed events, sent when a link has changed.
    virtual void registerChangedCallback(const std::string &subscriber, int mode,
                                         const std::function<void(std::any)> &callback) = 0;

protected:
    ~INetworkPort() = default;
};

}
