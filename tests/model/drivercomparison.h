#pragma once

#include "agemodel.h"
#include "agetestfixture.h"
#include "factorymodewidget.h"
#include "keytranslation.h"
#include "machinemodel.h"
#include "machinetestfixture.h"
#include "modelpayloads.h"
#include "virtualtime.h"
#include "walk.h"

#include <algorithm>
#include <optional>

// Each driver side by side with its model. An operation does the same to both.

/// Adds the messages of Qt's logging to the recorded calls while it exists.
class LogInCalls
{
public:
    explicit LogInCalls(CallLog &calls) : m_previous(qInstallMessageHandler(handle)) { target = &calls; }
    ~LogInCalls() { qInstallMessageHandler(m_previous); }
    LogInCalls(const LogInCalls &) = delete;
    LogInCalls &operator=(const LogInCalls &) = delete;

private:
    static void handle(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        target->add((type == QtWarningMsg ? QStringLiteral("warning|") : QStringLiteral("debug|")) + text);
    }
    static inline CallLog *target = nullptr;
    const QtMessageHandler m_previous;
};

/// Returns one of several key check lists.
QList<QPair<int, QString>> keyList(quint32 number);

/// The services and the model of them: what both drivers have in common.
class Device
{
public:
    Device(RecordingHost &host, KeyListWidget &menu)
        : m_host(host), m_menu(menu),
          m_widget(static_cast<LCD::FactoryModeImpl::FactoryModeWidget *>(host.getComponent("lcdFactoryModeWidget")))
    {
        setTestLanguage({});
        model.keys = keyList(0);
        m_widget->registerTestPatternDisplayCallback("walk", [&host](int type, int index, int level) {
            host.calls.add(QStringLiteral("pattern(%1, %2, %3)").arg(type).arg(index).arg(level));
        });
    }
    ~Device() { setTestLanguage({}); }
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    void setLanguage(quint32 value)
    {
        model.language = value % 2 == 0 ? QString() : QStringLiteral("de");
        setTestLanguage(model.language);
    }
    void setMenu(quint32 value)
    {
        model.hasMenu = value % 3 > 0;
        m_host.remove("lcdFactoryModeWidget");
        if (model.hasMenu)
            m_host.offer("lcdFactoryModeWidget", m_widget);
    }
    void setKeys(quint32 value)
    {
        model.keys = keyList(value);
        m_menu.load(model.keys);
        m_host.calls.clear();
    }
    void setTBarType(quint32 value) { m_host.keyboard.tbarType = model.tbarType = static_cast<int>(value % 3); }
    void setNetAnswer(quint32 value)
    {
        model.netAnswer.reset();
        m_host.networkPort.answerAtOnce.reset();
        if (value % 3 > 0)
            return;
        model.netAnswer = netPayload(value);
        m_host.networkPort.answerAtOnce = asNetReport(*model.netAnswer);
        if (!m_host.networkPort.answerAtOnce.has_value())
            model.netAnswer.reset();
    }
    void setUsbAnswer(quint32 value)
    {
        model.usbAnswer.reset();
        m_host.usb.answerAtOnce.reset();
        if (value % 3 > 0)
            return;
        model.usbAnswer = usbPayload(value);
        m_host.usb.answerAtOnce = asUsbReport(*model.usbAnswer);
        if (!m_host.usb.answerAtOnce.has_value())
            model.usbAnswer.reset();
    }
    /// The services that the next test finds: those of which the bit is 1.
    void setServices(quint32 bits)
    {
        const auto set = [this, bits](int bit, const char *name, void *service, bool &present) {
            present = (bits >> bit & 1U) != 0;
            m_host.remove(name);
            if (present)
                m_host.offer(name, service);
        };
        using namespace LCD::FactoryMode;
        set(0, "lcdKeyboardEvent", static_cast<IKeyboardEvent *>(&m_host.keyboard), model.hasKeyboard);
        set(1, "lcdFactoryModeBiz", static_cast<IFactoryModeBiz *>(&m_host.factoryBiz), model.hasFactoryBiz);
        set(2, "lcdMemoryCacheNetworkPort", static_cast<INetworkPort *>(&m_host.networkPort), model.hasNetworkPort);
        set(3, "lcdMemoryCacheNodeUSB", static_cast<IUSB *>(&m_host.usb), model.hasUsb);
        set(4, "lcdTBarCalibration", static_cast<ITBarCalibration *>(&m_host.tbarCalibration), model.hasTBar);
    }

    ModelHost model;

private:
    RecordingHost &m_host;
    KeyListWidget &m_menu;
    LCD::FactoryModeImpl::FactoryModeWidget *m_widget;
};

/// An operation or an event of a walk. The weight tells how frequent it is in random walks.
template <class Pair>
struct Operation
{
    const char *name;
    int weight;
    std::function<void(Pair &, quint32)> run;
};

/// The aging test.
class AgePair
{
public:
    static const std::vector<Operation<AgePair>> &operations();
    QStringList actual() { return m_fixture.take(); }
    QStringList expected() { return std::exchange(m_device.model.lines, {}); }

private:
    void advance(quint32 value);
    void renew(quint32 services)
    {
        m_device.setServices(services);
        m_fixture.make();
        m_model.emplace(m_device.model);
    }

    AgeTestFixture m_fixture;
    LogInCalls m_log{m_fixture.host.calls};
    KeyListWidget m_menu{m_fixture.host, keyList(0)};
    Device m_device{m_fixture.host, m_menu};
    std::optional<AgeModel> m_model{m_device.model};
};

/// The complete machine test.
class MachinePair
{
public:
    static const std::vector<Operation<MachinePair>> &operations();
    QStringList actual()
    {
        const auto &biz = *m_fixture.biz;
        return m_fixture.take() << stateLine(biz.currentPhaseIndex(), biz.isRunning(), biz.result());
    }
    QStringList expected()
    {
        const bool running = m_model->phase >= 0 && m_model->phase <= 10;
        return std::exchange(m_device.model.lines, {}) << stateLine(m_model->phase, running, m_model->result);
    }

private:
    static QString stateLine(int phase, bool running, int result)
    {
        return QStringLiteral("phase %1, running %2, result %3").arg(phase).arg(running).arg(result);
    }
    void start()
    {
        m_fixture.biz->start();
        m_model->start();
    }
    void left()
    {
        m_fixture.left();
        m_model->left();
    }
    void right(int times = 1)
    {
        for (; times > 0; --times) {
            m_fixture.right();
            m_model->right();
        }
    }
    void advance(int milliseconds)
    {
        VirtualTime::advance(milliseconds);
        m_model->advance(milliseconds);
    }
    void press(int key)
    {
        m_fixture.host.keyboard.press(static_cast<unsigned>(key));
        m_model->keys.press(key);
    }
    void answerCommand(bool ok);
    void renew(quint32 services);
    void passPhase();

    MachineTestFixture m_fixture;
    Device m_device{m_fixture.host, m_fixture.menu};
    std::optional<MachineModel> m_model{m_device.model};
    LogInCalls m_log{m_fixture.host.calls};
};

/// Carries out @p steps with a new driver and a new model, up to the first difference.
template <class Pair>
std::optional<WalkDifference> runWalk(const std::vector<WalkStep> &steps)
{
    Pair pair;
    pair.actual();
    for (std::size_t step = 0; step < steps.size(); ++step) {
        Pair::operations()[static_cast<std::size_t>(steps[step].operation)].run(pair, steps[step].value);
        if (const auto text = difference(pair.actual(), pair.expected()))
            return WalkDifference{step, *text};
    }
    return std::nullopt;
}

/// Returns a step with the operation that has @p name.
template <class Pair>
WalkStep stepOf(const char *name, quint32 value = 0)
{
    const auto &table = Pair::operations();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [name](const auto &operation) { return qstrcmp(operation.name, name) == 0; });
    return {static_cast<int>(found - table.begin()), value};
}
