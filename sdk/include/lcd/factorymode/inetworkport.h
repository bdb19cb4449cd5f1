#pragma once

#include <any>
#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// Service "lcdMemoryCacheNetworkPort": link state of the net ports. The payload is a
/// `std::shared_ptr<std::vector<LCD::ProtocolImpl::s_NetworkPortLink>>`, delivered on the service's thread.
/// A second registration under one subscriber name replaces the first.
class INetworkPort
{
public:
    /// Reports: one at subscription, and whenever one is asked for.
    virtual void registerReportCallback(const std::string &subscriber, int mode,
                                        const std::function<void(std::any)> &callback) = 0;
    /// Never called by the factory mode; keeps its slot.
    virtual void reserved() = 0;
    /// Changes: one when a link really changes.
    virtual void registerChangedCallback(const std::string &subscriber, int mode,
                                         const std::function<void(std::any)> &callback) = 0;

protected:
    ~INetworkPort() = default;
};

}
