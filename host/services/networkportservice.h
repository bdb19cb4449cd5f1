#pragma once

#include "lcd/factorymode/inetworkport.h"
#include "services/linksubscriptions.h"

namespace panelhost {

class Device;

/// Service "lcdMemoryCacheNetworkPort" for the net ports of a device.
class NetworkPortService final : public LCD::FactoryMode::INetworkPort
{
public:
    NetworkPortService(Device &device, Journal &journal, const Faults &faults, bool changedOnSubscribe);

    void registerReportCallback(const std::string &subscriber, int mode,
                                const std::function<void(std::any)> &callback) override;
    void reserved() override;
    void registerChangedCallback(const std::string &subscriber, int mode,
                                 const std::function<void(std::any)> &callback) override;

    void requestReport() { m_links->requestReport(); }

private:
    Journal &m_journal;
    std::shared_ptr<LinkSubscriptions> m_links;
};

}
