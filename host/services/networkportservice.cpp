#include "services/networkportservice.h"

#include "device/device.h"

namespace panelhost {

NetworkPortService::NetworkPortService(Device &device, Journal &journal, const Faults &faults, bool changedOnSubscribe)
    : m_journal(journal),
      m_links(std::make_shared<LinkSubscriptions>(QStringLiteral("lcdMemoryCacheNetworkPort"), journal, faults,
                                                  changedOnSubscribe, [&device] { return device.netReport(); }))
{
    device.setNetListener([links = m_links](const std::any &payload) { links->announceChange(payload); });
}

void NetworkPortService::registerReportCallback(const std::string &subscriber, int mode,
                                                const std::function<void(std::any)> &callback)
{
    m_links->registerReport(subscriber, mode, callback);
}

void NetworkPortService::reserved()
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdMemoryCacheNetworkPort.reserved"));
}

void NetworkPortService::registerChangedCallback(const std::string &subscriber, int mode,
                                                 const std::function<void(std::any)> &callback)
{
    m_links->registerChanged(subscriber, mode, callback);
}

}
