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

/// Runs @p event on a thread of that kind and returns when it is done.
void runOn(Origin origin, const std::function<void()> &event);

/// A column "origin" with one row for each kind of thread.
void addOrigins();
Origin fetchOrigin();

/// "true, false" and so on.
QString bitText(const std::vector<bool> &bits);

template <class Call>
void repeat(int times, const Call &call)
{
    for (int i = 0; i < times; ++i)
        call();
}

/// A recording host, with some services absent, and one test object that was made under it. Unless it is told to stay
/// deaf, the state listener "driver" writes "state n" among the calls of the services.
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

    /// For the objects whose listeners are filtered.
    void listenAsDriver()
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

/// The factory mode widget as the bad pixel test sees it; writes down each pattern.
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

/// A real factory mode widget that has read a key check list of the given keys and is offered to the component.
class KeyListWidget
{
public:
    KeyListWidget(RecordingHost &host, const QList<QPair<int, QString>> &keys);
    ~KeyListWidget();
    KeyListWidget(const KeyListWidget &) = delete;
    KeyListWidget &operator=(const KeyListWidget &) = delete;
    /// Lets the widget read a new list.
    void load(const QList<QPair<int, QString>> &keys);

private:
    QTemporaryDir m_directory;
    std::unique_ptr<LCD::FactoryModeImpl::FactoryModeWidget> m_widget;
};
