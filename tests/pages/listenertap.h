#pragma once

#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/factorymode/inetworkport.h"
#include "lcd/factorymode/itbarcalibration.h"
#include "lcd/factorymode/iusb.h"
#include "lcd/repairmode/ifactoryreset.h"
#include "lcd/repairmode/ilogexport.h"
#include "mirel/api.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// The listeners that the libraries have registered, as functions that send an event to each. Thread-safe.
class Events
{
public:
    /// Sends the event number @p round to one listener.
    using Send = std::function<void(int round)>;

    void add(const Send &send)
    {
        const std::lock_guard locker(m_mutex);
        m_sends.push_back(send);
    }
    std::vector<Send> all() const
    {
        const std::lock_guard locker(m_mutex);
        return m_sends;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<Send> m_sends;
};

/// A host between the libraries and the real one. It passes everything on to the real services, and keeps the listeners
/// that are registered, so that a test can call them on a thread of its own.
class ListenerTap final : public mirel::IHost
{
public:
    ListenerTap() : m_host(mirel::api::get().host()) { mirel::api::get().setHost(static_cast<mirel::IHost *>(this)); }
    ~ListenerTap() { mirel::api::get().setHost(m_host); }
    ListenerTap(const ListenerTap &) = delete;
    ListenerTap &operator=(const ListenerTap &) = delete;

    void *getComponent(const char *name) override;
    std::vector<Events::Send> events() const { return m_events.all(); }

private:
    template <class Interface>
    struct Tap : Interface
    {
        virtual ~Tap() = default;

        Interface *service = nullptr;
        Events *events = nullptr;
    };
    struct Keyboard;
    struct Calibration;
    template <class Interface, class Record>
    struct Ports;
    struct NetPorts;
    struct UsbPorts;
    struct LogExport;
    struct FactoryReset;

    template <class Made>
    void *tap(void *service);

    mirel::IHost *m_host;
    Events m_events;
    std::vector<std::shared_ptr<void>> m_taps; ///< the libraries keep pointers to them
};
