#pragma once

#include "recordinghost.h"

#include "lcd/factorymode/ilcdfactorymode.h"

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtTest/QtTest>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

/// The thread on which a service delivers an event.
enum class Origin {
    Caller,
    QtThread,
    StdThread
};

/// Runs @p event on a thread of the kind @p origin and returns when it has finished.
void runOn(Origin origin, const std::function<void()> &event);

/// Adds a test data column "origin" with one row for each kind of thread.
void addOrigins();
Origin fetchOrigin();

/// Returns @p bits as text, such as "true, false".
QString bitText(const std::vector<bool> &bits);

template <class Call>
void repeat(int times, const Call &call)
{
    for (int i = 0; i < times; ++i)
        call();
}

/// A recording host, of which some services may be absent, and one single test that was created with it. After
/// registerDriverListener(), the listener of "driver" adds "state n" to the recorded calls.
template <class Biz>
class Session
{
public:
    explicit Session(std::initializer_list<const char *> absent = {})
    {
        for (const char *name : absent)
            host.remove(name);
        m_biz.emplace();
    }

    Biz *operator->() { return &*m_biz; }
    Biz &biz() { return *m_biz; }
    void destroy() { m_biz.reset(); }

    /// Only for tests that have a current requester.
    void registerDriverListener()
    {
        m_biz->registerStateCallback("driver", [this](int state) { add(QStringLiteral("state %1").arg(state)); });
        m_biz->setCurRequester("driver");
    }
    void add(const QString &call) { host.calls.add(call); }
    QStringList take() { return host.calls.take(); }

    RecordingHost host;
    LogCapture log;

private:
    std::optional<Biz> m_biz;
};

/// The factory mode widget for the bad pixel test. Records each test pattern.
class RecordingWidget final : public LCD::FactoryMode::ILcdFactoryMode
{
public:
    explicit RecordingWidget(RecordingHost &host);
    void enterFactoryMode() override {}
    void exitFactoryMode() override {}
    bool isFactoryMode() const override { return false; }
    void registerTestPatternDisplayCallback(const std::string &, const std::function<void(int, int, int)> &) override {}
    void notifyTestPatternChanged(int patternType, int patternIndex, int level) override;

private:
    CallLog &m_calls;
};

namespace LCD::FactoryModeImpl {
class FactoryModeWidget;
}

/// A real factory mode widget that has loaded a key check list with the given keys. The component finds it as a
/// service.
class KeyListWidget
{
public:
    KeyListWidget(RecordingHost &host, const QList<QPair<int, QString>> &keys);
    ~KeyListWidget();
    KeyListWidget(const KeyListWidget &) = delete;
    KeyListWidget &operator=(const KeyListWidget &) = delete;
    /// Lets the widget load a new list.
    void load(const QList<QPair<int, QString>> &keys);

private:
    QTemporaryDir m_directory;
    std::unique_ptr<LCD::FactoryModeImpl::FactoryModeWidget> m_widget;
};
