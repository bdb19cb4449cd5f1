#include "services/usbservice.h"

#include "device/device.h"

namespace panelhost {

UsbService::UsbService(Device &device, Journal &journal, const Faults &faults, bool changedOnSubscribe)
    : m_links(std::make_shared<LinkSubscriptions>(QStringLiteral("lcdMemoryCacheNodeUSB"), journal, faults,
                                                  changedOnSubscribe, [&device] { return device.usbReport(); }))
{
    device.setUsbListener([links = m_links](const std::any &payload) { links->announceChange(payload); });
}

void UsbService::registerReportCallback(const std::string &subscriber, int mode,
                                        const std::function<void(std::any)> &callback)
{
    m_links->registerReport(subscriber, mode, callback);
}

void UsbService::registerChangedCallback(const std::string &subscriber, int mode,
                                         const std::function<void(std::any)> &callback)
{
    m_links->registerChanged(subscriber, mode, callback);
}

}
