#include "modelpayloads.h"

#include "recordinghost.h"

#include <random>

namespace {

ModelPayload::Kind randomKind(std::mt19937 &random)
{
    static const ModelPayload::Kind others[3] = {ModelPayload::NullPointer, ModelPayload::OtherType,
                                                 ModelPayload::Nothing};
    return random() % 12 == 0 ? others[random() % 3] : ModelPayload::Records;
}

/// Returns what a service delivers instead of an array of @p Record.
template <class Record>
std::any withoutRecords(ModelPayload::Kind kind)
{
    if (kind == ModelPayload::NullPointer)
        return std::shared_ptr<std::vector<Record>>();
    return kind == ModelPayload::OtherType ? std::any(1) : std::any();
}

}

ModelPayload netPayload(quint32 value)
{
    std::mt19937 random(value);
    ModelPayload payload{randomKind(random), {}};
    for (auto count = random() % 5; count > 0; --count)
        payload.records.push_back({static_cast<int>(random() % 5) - 1, random() % 3 > 0});
    return payload;
}

ModelPayload usbPayload(quint32 value)
{
    std::mt19937 random(value);
    ModelPayload payload{randomKind(random), {}};
    for (auto count = random() % 5; count > 0; --count)
        payload.records.push_back(
            {static_cast<int>(random() % 7) - 2, random() % 3 > 0, random() % 6 == 0 ? 25 : 26, random() % 6 == 0});
    return payload;
}

std::any asNetReport(const ModelPayload &payload)
{
    if (payload.kind != ModelPayload::Records)
        return withoutRecords<LCD::ProtocolImpl::s_NetworkPortLink>(payload.kind);
    std::vector<std::pair<int, bool>> ports;
    for (const auto &record : payload.records)
        ports.emplace_back(record.port, record.linked);
    return RecordingNetworkPort::payload(ports);
}

std::any asUsbReport(const ModelPayload &payload)
{
    if (payload.kind != ModelPayload::Records)
        return withoutRecords<LCD::ProtocolImpl::s_NodeUSB>(payload.kind);
    std::vector<RecordingUsb::Node> nodes;
    for (const auto &record : payload.records)
        nodes.push_back({record.port, record.nodeType, record.linked ? 1 : 0, record.blocked ? 1 : 0});
    return RecordingUsb::payload(nodes);
}
