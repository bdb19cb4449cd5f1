#pragma once

#include "lcd/factorymode/iconfig.h"
#include "lcd/factorymode/ifactorymodebiz.h"
#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/factorymode/inetworkport.h"
#include "lcd/factorymode/itbarcalibration.h"
#include "lcd/factorymode/iusb.h"
#include "lcd/protocol/records.h"
#include "mirel/api.h"

#include <QtCore/QMetaType>
#include <QtCore/QStringList>

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// The calls of a component to its host, in order. Thread-safe.
class CallLog
{
public:
    void add(const QString &call);
    QStringList all() const;
    /// Returns all calls since the last take() and removes them.
    QStringList take();
    void clear() { take(); }

    /// Called after each call was added, on the same thread. May throw, as a service or a listener may. Set it while no
    /// other thread adds calls.
    std::function<void()> afterCall;

private:
    mutable std::mutex m_mutex;
    QStringList m_calls;
};

/// A registered listener. Thread-safe: a test may call it on any thread while it is being replaced.
template <class... Args>
class ListenerSlot
{
public:
    void set(const std::function<void(Args...)> &listener)
    {
        const std::lock_guard locker(m_mutex);
        m_listener = listener;
    }
    std::function<void(Args...)> get() const
    {
        const std::lock_guard locker(m_mutex);
        return m_listener;
    }
    /// Calls the listener on the caller's thread. Returns false if there is none.
    template <class... Values>
    bool fire(Values &&...values) const
    {
        const auto listener = get();
        if (listener)
            listener(std::forward<Values>(values)...);
        return static_cast<bool>(listener);
    }

private:
    mutable std::mutex m_mutex;
    std::function<void(Args...)> m_listener;
};

class RecordingKeyboard final : public LCD::FactoryMode::IKeyboardEvent
{
public:
    explicit RecordingKeyboard(CallLog &calls) : m_calls(calls) {}
    void setFactoryPanelMode(int mode) override;
    void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) override;
    void registerKeyCallback(const LCD::FactoryMode::KeyListener &listener) override;
    void setAllButtonBrightness(int level) override;
    void setScreenBrightness(int screenIndex, int level) override;
    void setKeyLedUpdating(bool updating) override;
    void setLcdTestPattern(int patternType, int patternIndex) override;
    int getTBarType() override;

    /// Sends an event of the key @p halKey on the caller's thread. Returns false if there is no listener.
    bool press(unsigned halKey) const;
    /// Returns the listener as registered. A careless service may still call it after it was replaced.
    LCD::FactoryMode::KeyListener listener() const { return m_listener.get(); }

    int tbarType = 1;

private:
    CallLog &m_calls;
    ListenerSlot<std::uint32_t, float, std::uint32_t, const LCD::KeyboardProxy::KeyButtonJoystick &,
                 const LCD::KeyboardProxy::KeyTouchScreen &, const LCD::KeyboardProxy::KeyButtonTBar &>
        m_listener;
};

class RecordingFactoryBiz final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    explicit RecordingFactoryBiz(CallLog &calls) : m_calls(calls) {}
    void setFactoryTestType(int testType) override;
    void setMachineTestKind(int kind) override;

private:
    CallLog &m_calls;
};

/// Both subscriptions of a port service.
struct LinkSubscriptions
{
    ListenerSlot<std::any> report;
    ListenerSlot<std::any> changed;
};

class RecordingNetworkPort final : public LCD::FactoryMode::INetworkPort, public LinkSubscriptions
{
public:
    explicit RecordingNetworkPort(CallLog &calls) : m_calls(calls) {}
    void registerReportCallback(const std::string &subscriber, int mode,
                                const std::function<void(std::any)> &callback) override;
    void reserved() override;
    void registerChangedCallback(const std::string &subscriber, int mode,
                                 const std::function<void(std::any)> &callback) override;

    /// Returns a report of (port, linked) pairs.
    static std::any payload(const std::vector<std::pair<int, bool>> &ports);
    /// The payload that registerReportCallback() and registerChangedCallback() deliver at once. Empty: none.
    std::any answerAtOnce;

private:
    CallLog &m_calls;
};

class RecordingUsb final : public LCD::FactoryMode::IUSB, public LinkSubscriptions
{
public:
    explicit RecordingUsb(CallLog &calls) : m_calls(calls) {}
    void registerReportCallback(const std::string &subscriber, int mode,
                                const std::function<void(std::any)> &callback) override;
    void registerChangedCallback(const std::string &subscriber, int mode,
                                 const std::function<void(std::any)> &callback) override;

    /// A record: identifier, type of node, active, blocked.
    struct Node
    {
        int portId;
        int nodeType = 26;
        int active = 1;
        int blocked = 0;
    };
    static std::any payload(const std::vector<Node> &nodes);
    std::any answerAtOnce;

private:
    CallLog &m_calls;
};

class RecordingTBarCalibration final : public LCD::FactoryMode::ITBarCalibration
{
public:
    explicit RecordingTBarCalibration(CallLog &calls) : m_calls(calls) {}
    void setBarCalibration(const LCD::ProtocolImpl::s_BarCalibration &command,
                           const std::function<void(bool, const std::string &)> &result) override;
    void registerBarCalibrationCallback(
        const std::string &subscriber,
        const std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> &callback) override;

    std::vector<LCD::ProtocolImpl::s_BarCalibration> commands;
    std::vector<std::function<void(bool, const std::string &)>> results;
    ListenerSlot<const LCD::ProtocolImpl::s_BarCalibration &> listener;

private:
    CallLog &m_calls;
};

class RecordingConfig final : public LCD::FactoryMode::IConfig
{
public:
    explicit RecordingConfig(CallLog &calls) : m_calls(calls) {}
    QString getFactoryTestKeyMode() override;

    QString keyMode = QStringLiteral("mode-a");

private:
    CallLog &m_calls;
};

/// A host whose services record each call. While it exists, it is the host of the process.
class RecordingHost final : public mirel::IHost
{
public:
    RecordingHost();
    ~RecordingHost();
    RecordingHost(const RecordingHost &) = delete;
    RecordingHost &operator=(const RecordingHost &) = delete;

    void *getComponent(const char *name) override;

    /// Removes a service, or sets the object of a service.
    void remove(const std::string &name) { m_components.erase(name); }
    void offer(const std::string &name, void *object) { m_components[name] = object; }

    CallLog calls;
    RecordingKeyboard keyboard{calls};
    RecordingFactoryBiz factoryBiz{calls};
    RecordingNetworkPort networkPort{calls};
    RecordingUsb usb{calls};
    RecordingTBarCalibration tbarCalibration{calls};
    RecordingConfig config{calls};
    int screenDetail = 0;
    /// The names that were looked up, in order.
    QStringList lookups;

private:
    std::map<std::string, void *> m_components;
};

/// Collects the messages of Qt's logging while it exists, each as "debug|text" or "warning|text".
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    QStringList lines() const;
    QStringList warnings() const;
    void clear();

    struct Entry
    {
        QtMsgType type;
        QString text;
        QByteArray category;
        QByteArray file;
        int line;
        QByteArray function;
    };
    std::vector<Entry> entries() const;
};

// A payload as the data of a test.
Q_DECLARE_METATYPE(std::any)
