#pragma once

#include "lcd/factorymode/iusb.h"
#include "services/linksubscriptions.h"

namespace panelhost {

class Device;

/// Service "lcdMemoryCacheNodeUSB" for the USB ports of a device.
class UsbService final : public LCD::FactoryMode::IUSB
{
public:
    UsbService(Device &device, Journal &journal, const Faults &faults, bool changedOnSubscribe);

    void registerReportCallback(const std::string &subscriber, int mode,
                                const std::function<void(std::any)> &callback) override;
    void registerChangedCallback(const std::string &subscriber, int mode,
                                 const std::function<void(std::any)> &callback) override;

    void requestReport() { m_links->requestReport(); }

private:
    std::shared_ptr<LinkSubscriptions> m_links;
};

}
