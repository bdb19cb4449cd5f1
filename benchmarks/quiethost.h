#pragma once

#include "lcd/factorymode/ifactorymodebiz.h"
#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/factorymode/inetworkport.h"
#include "lcd/factorymode/itbarcalibration.h"
#include "lcd/factorymode/iusb.h"
#include "lcd/protocol/records.h"
#include "mirel/api.h"

#include <any>
#include <functional>
#include <map>
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

class QuietKeyboard final : public LCD::FactoryMode::IKeyboardEvent
{
public:
    void setFactoryPanelMode(int mode) override
    {
        panelMode = mode;
        ++panelModes;
    }
    void setKeyLed(const int &, LCD::KeyboardProxy::KeyLedRequest) override {}
    void registerKeyCallback(const LCD::FactoryMode::KeyListener &listener) override { m_listener = listener; }
    void setAllButtonBrightness(int) override {}
    void setScreenBrightness(int, int) override {}
    void setKeyLedUpdating(bool) override {}
    void setLcdTestPattern(int, int) override {}
    int getTBarType() override { return 1; }

    void press(int halKey) const
    {
        const auto listener = m_listener;
        listener(static_cast<std::uint32_t>(halKey), 1, 0, {}, {}, {});
    }

    int panelMode = 0;
    int panelModes = 0; ///< how often it was set

private:
    LCD::FactoryMode::KeyListener m_listener;
};

class QuietFactoryBiz final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    void setFactoryTestType(int) override {}
    void setMachineTestKind(int) override {}
};

class QuietTbar final : public LCD::FactoryMode::ITBarCalibration
{
public:
    void setBarCalibration(const LCD::ProtocolImpl::s_BarCalibration &,
                           const std::function<void(bool, const std::string &)> &result) override
    {
        result(true, {});
    }
    void
    registerBarCalibrationCallback(const std::string &,
                                   const std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> &) override
    {
    }
};

/// A host whose services do nothing but keep the listeners, so that a benchmark measures the component alone. It is the
/// host of this process while it lives.
class QuietHost final : public mirel::IHost
{
public:
    QuietHost() { mirel::api::get().setHost(static_cast<mirel::IHost *>(this)); }
    ~QuietHost() { mirel::api::get().setHost(nullptr); }
    QuietHost(const QuietHost &) = delete;
    QuietHost &operator=(const QuietHost &) = delete;

    void *getComponent(const char *name) override
    {
        const auto service = services.find(name);
        return service == services.end() ? nullptr : service->second;
    }

    QuietKeyboard keyboard;
    QuietFactoryBiz factoryBiz;
    QuietTbar tbar;
    NetworkService network;
    UsbService usb;
    std::map<std::string, void *> services = {
        {"lcdKeyboardEvent", static_cast<LCD::FactoryMode::IKeyboardEvent *>(&keyboard)},
        {"lcdFactoryModeBiz", static_cast<LCD::FactoryMode::IFactoryModeBiz *>(&factoryBiz)},
        {"lcdTBarCalibration", static_cast<LCD::FactoryMode::ITBarCalibration *>(&tbar)},
        {"lcdMemoryCacheNetworkPort", static_cast<LCD::FactoryMode::INetworkPort *>(&network)},
        {"lcdMemoryCacheNodeUSB", static_cast<LCD::FactoryMode::IUSB *>(&usb)},
    };
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
