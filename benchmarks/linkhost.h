#pragma once

#include "lcd/factorymode/inetworkport.h"
#include "lcd/factorymode/iusb.h"
#include "lcd/protocol/records.h"
#include "mirel/api.h"

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A link service that keeps the function of its changed subscription.
template <class Interface>
class LinkService : public Interface
{
public:
    void registerReportCallback(const std::string &, int, const std::function<void(std::any)> &) override {}
    void registerChangedCallback(const std::string &, int, const std::function<void(std::any)> &callback) override
    {
        changed = callback;
    }

    std::function<void(std::any)> changed;

protected:
    ~LinkService() = default;
};

class NetworkService final : public LinkService<LCD::FactoryMode::INetworkPort>
{
public:
    void reserved() override {}
};

class UsbService final : public LinkService<LCD::FactoryMode::IUSB>
{
};

/// A host with both link services and nothing else. It is the host of this process while it lives.
class LinkHost final : public mirel::IHost
{
public:
    LinkHost() { mirel::api::get().setHost(static_cast<mirel::IHost *>(this)); }
    ~LinkHost() { mirel::api::get().setHost(nullptr); }
    LinkHost(const LinkHost &) = delete;
    LinkHost &operator=(const LinkHost &) = delete;

    void *getComponent(const char *name) override
    {
        if (std::string("lcdMemoryCacheNetworkPort") == name)
            return static_cast<LCD::FactoryMode::INetworkPort *>(&network);
        if (std::string("lcdMemoryCacheNodeUSB") == name)
            return static_cast<LCD::FactoryMode::IUSB *>(&usb);
        return nullptr;
    }

    NetworkService network;
    UsbService usb;
};

using NetRecords = std::vector<LCD::ProtocolImpl::s_NetworkPortLink>;
using UsbRecords = std::vector<LCD::ProtocolImpl::s_NodeUSB>;

/// A report of @p count net ports, every third one down, in no order.
inline std::any netReport(int count)
{
    auto records = std::make_shared<NetRecords>(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        auto &record = (*records)[static_cast<std::size_t>(i)];
        record.port = static_cast<int>(i * 2654435761LL % count);
        record.link = i % 3 == 0 ? 0 : 1;
    }
    return records;
}

/// A report of @p count USB nodes with identifiers far apart; every fourth is no port, every third is down.
inline std::any usbReport(int count)
{
    auto records = std::make_shared<UsbRecords>(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        auto &record = (*records)[static_cast<std::size_t>(i)];
        record.portId = static_cast<int>(i * 2654435761LL % 1000003);
        record.nodeType = i % 4 == 0 ? 9 : 26;
        record.linkActive = i % 3 == 0 ? 0 : 1;
    }
    return records;
}
