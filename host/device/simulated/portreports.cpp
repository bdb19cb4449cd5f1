#include "device/simulated/portreports.h"

#include "device/faults.h"
#include "lcd/protocol/records.h"

#include <limits>
#include <memory>
#include <vector>

namespace panelhost {

using LCD::ProtocolImpl::s_NetworkPortLink;
using LCD::ProtocolImpl::s_NodeUSB;

namespace {

// The node types of the tree: ports, and the hub to which they are connected.
constexpr int usbHubNode = 9;
constexpr int usbPortNode = 26;

s_NetworkPortLink netRecord(int port, bool linked)
{
    s_NetworkPortLink record;
    record.port = port;
    record.link = linked ? 1 : 0;
    return record;
}

s_NodeUSB usbRecord(int port, int type, bool active, bool blocked)
{
    s_NodeUSB record;
    record.portId = port;
    record.nodeType = type;
    record.linkActive = active ? 1 : 0;
    record.linkBlocked = blocked ? 1 : 0;
    return record;
}

// A large number for which a receiver can still allocate an array. The largest 32-bit number would need 2 Gi entries.
constexpr int hugePort = 1'000'000;

// Returns the payload: the list, or what replaces it because of a fault.
template <class Record>
std::any payload(std::vector<Record> records, const Faults &faults)
{
    if (faults.isOn(QStringLiteral("empty-payload")))
        return {};
    if (faults.isOn(QStringLiteral("wrong-payload")))
        return 42;
    if (faults.isOn(QStringLiteral("null-payload")))
        return std::shared_ptr<std::vector<Record>>();
    if (faults.isOn(QStringLiteral("empty-report")))
        records.clear();
    return std::make_shared<std::vector<Record>>(std::move(records));
}

}

std::any makeNetReport(const QList<PortState> &ports, const Faults &faults)
{
    std::vector<s_NetworkPortLink> records;
    for (const PortState &port : ports)
        records.push_back(netRecord(port.number, port.isPlugged));
    if (faults.isOn(QStringLiteral("garbage-ports"))) {
        for (const int port : {-1, std::numeric_limits<int>::min(), hugePort})
            records.push_back(netRecord(port, true));
    }
    return payload(std::move(records), faults);
}

std::any makeUsbReport(const QList<PortState> &ports, const Faults &faults)
{
    std::vector<s_NodeUSB> records = {usbRecord(0, usbHubNode, true, false)};
    for (const PortState &port : ports)
        records.push_back(usbRecord(port.number, usbPortNode, port.isPlugged, port.isBlocked));
    if (faults.isOn(QStringLiteral("garbage-ports"))) {
        for (const int port : {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
            records.push_back(usbRecord(port, usbPortNode, true, false));
    }
    return payload(std::move(records), faults);
}

}
