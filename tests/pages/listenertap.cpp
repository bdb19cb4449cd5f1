#include "listenertap.h"

#include <any>
#include <cstring>
#include <memory>

using namespace LCD::FactoryMode;
using namespace LCD::KeyboardProxy;
using namespace LCD::ProtocolImpl;
using namespace LCD::RepairMode;

namespace {

constexpr int PortCount = 4;
constexpr int UsbPortNode = 26;

void setPort(s_NetworkPortLink &record, int port, bool isLinked)
{
    record.port = port;
    record.link = isLinked ? 1 : 0;
}

void setPort(s_NodeUSB &record, int port, bool isLinked)
{
    record.portId = port;
    record.nodeType = UsbPortNode;
    record.linkActive = isLinked ? 1 : 0;
}

// Each report has another port without a link; every fifth has none.
template <class Record>
std::any linkReport(int round)
{
    auto records = std::make_shared<std::vector<Record>>(PortCount);
    for (int port = 0; port < PortCount; ++port)
        setPort(records->at(static_cast<std::size_t>(port)), port, port != round % (PortCount + 1));
    return records;
}

}

struct ListenerTap::Keyboard final : Tap<IKeyboardEvent>
{
    void setFactoryPanelMode(int mode) override { service->setFactoryPanelMode(mode); }
    void setKeyLed(const int &halKey, KeyLedRequest request) override { service->setKeyLed(halKey, request); }
    void registerKeyCallback(const KeyListener &listener) override
    {
        if (listener) {
            events->add([listener](int round) {
                listener(static_cast<std::uint32_t>(round), 1.0F, 0, KeyButtonJoystick(), KeyTouchScreen(),
                         KeyButtonTBar());
            });
        }
        service->registerKeyCallback(listener);
    }
    void setAllButtonBrightness(int level) override { service->setAllButtonBrightness(level); }
    void setScreenBrightness(int screen, int level) override { service->setScreenBrightness(screen, level); }
    void setKeyLedUpdating(bool updating) override { service->setKeyLedUpdating(updating); }
    void setLcdTestPattern(int type, int index) override { service->setLcdTestPattern(type, index); }
    int getTBarType() override { return service->getTBarType(); }
};

struct ListenerTap::Calibration final : Tap<ITBarCalibration>
{
    void setBarCalibration(const s_BarCalibration &command,
                           const std::function<void(bool, const std::string &)> &result) override
    {
        if (result)
            events->add([result](int round) { result(round % 2 == 0, "late"); });
        service->setBarCalibration(command, result);
    }
    void registerBarCalibrationCallback(const std::string &subscriber,
                                        const std::function<void(const s_BarCalibration &)> &callback) override
    {
        if (callback) {
            events->add([callback](int round) {
                s_BarCalibration report;
                report.command = round % 5;
                report.value = 25 * (round % 5);
                callback(report);
            });
        }
        service->registerBarCalibrationCallback(subscriber, callback);
    }
};

template <class Interface, class Record>
struct ListenerTap::Ports : Tap<Interface>
{
    using Callback = std::function<void(std::any)>;

    void registerReportCallback(const std::string &subscriber, int mode, const Callback &callback) override
    {
        add(callback);
        this->service->registerReportCallback(subscriber, mode, callback);
    }
    void registerChangedCallback(const std::string &subscriber, int mode, const Callback &callback) override
    {
        add(callback);
        this->service->registerChangedCallback(subscriber, mode, callback);
    }
    void add(const Callback &callback)
    {
        if (callback)
            this->events->add([callback](int round) { callback(linkReport<Record>(round)); });
    }
};

struct ListenerTap::NetPorts final : Ports<INetworkPort, s_NetworkPortLink>
{
    void reserved() override { service->reserved(); }
};

struct ListenerTap::UsbPorts final : Ports<IUSB, s_NodeUSB>
{
};

struct ListenerTap::LogExport final : Tap<ILogExport>
{
    void startExport(const Listener &listener) override
    {
        events->add([listener](int round) {
            listener({static_cast<LogExportReport::State>(round % (LogExportReport::Failed + 1)), round % 100, "late"});
        });
        service->startExport(listener);
    }
    void cancelExport() override { service->cancelExport(); }
};

struct ListenerTap::FactoryReset final : Tap<IFactoryReset>
{
    void resetDevice(const Listener &listener) override
    {
        events->add([listener](int round) { listener(round % 2 == 0, "late"); });
        service->resetDevice(listener);
    }
};

template <class Made>
void *ListenerTap::tap(void *service)
{
    const auto made = std::make_shared<Made>();
    made->service = static_cast<decltype(made->service)>(service);
    made->events = &m_events;
    m_taps.push_back(made);
    return static_cast<decltype(made->service)>(made.get());
}

void *ListenerTap::getComponent(const char *name)
{
    void *service = m_host->getComponent(name);
    const auto is = [name](const char *other) { return std::strcmp(name, other) == 0; };
    if (!service)
        return nullptr;
    if (is("lcdKeyboardEvent"))
        return tap<Keyboard>(service);
    if (is("lcdTBarCalibration"))
        return tap<Calibration>(service);
    if (is("lcdMemoryCacheNetworkPort"))
        return tap<NetPorts>(service);
    if (is("lcdMemoryCacheNodeUSB"))
        return tap<UsbPorts>(service);
    if (is("lcdLogExport"))
        return tap<LogExport>(service);
    if (is("lcdFactoryReset"))
        return tap<FactoryReset>(service);
    return service;
}
