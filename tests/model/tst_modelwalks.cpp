#include "agemodel.h"
#include "agetestfixture.h"
#include "factorymodewidget.h"
#include "keytranslation.h"
#include "machinemodel.h"
#include "machinetestfixture.h"
#include "modelpayloads.h"
#include "prooflength.h"
#include "virtualtime.h"
#include "walk.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace {

constexpr int StepsOfWalk = 200;

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

QList<QPair<int, QString>> keyList(quint32 number)
{
    const auto key = [](int halKey, const char *name) { return qMakePair(halKey, QString::fromLatin1(name)); };
    switch (number % 5) {
    case 0:
        return {key(10, "ONE"), key(27, "TWO"), key(33, "CUT")};
    case 1:
        return {key(33, "CUT"), key(10, "ONE"), key(27, "TWO")};
    case 2:
        return {key(27, "ONLY")};
    case 3:
        return {key(10, "ONE"), key(11, "TWO"), key(10, "ONE")};
    default:
        return {key(5, "CUT"), key(33, "OLD"), key(6, "CUT"), key(7, "LAST")};
    }
}

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

/// The four events of the two port services, for a component with @p host and for @p model.
template <class Model>
void deliverReport(RecordingHost &host, Model &model, bool usb, bool changed, quint32 value)
{
    const ModelPayload payload = usb ? usbPayload(value) : netPayload(value);
    const LinkSubscriptions &service = usb ? static_cast<const LinkSubscriptions &>(host.usb)
                                           : static_cast<const LinkSubscriptions &>(host.networkPort);
    (changed ? service.changed : service.report).fire(usb ? asUsbReport(payload) : asNetReport(payload));
    (usb ? model.usb : model.net).deliver(payload, changed);
}

/// Each of the lowest bits is 1 with a probability of 7/8.
quint32 mostBits(quint32 random)
{
    return random | random >> 8 | random >> 16;
}

int timeOf(quint32 value)
{
    static const int times[] = {0, 1, 700, 1999, 2000, 2001, 3000, 8000, 20000, 40000};
    return times[value % std::size(times)];
}

template <class Pair>
struct Operation
{
    const char *name;
    int weight;
    std::function<void(Pair &, quint32)> run;
};

class AgePair
{
public:
    static const std::vector<Operation<AgePair>> &operations();
    QStringList actual() { return m_fixture.take(); }
    QStringList expected() { return std::exchange(m_device.model.lines, {}); }

private:
    void advance(quint32 value)
    {
        VirtualTime::advance(timeOf(value));
        m_model->advance(timeOf(value));
    }
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

const std::vector<Operation<AgePair>> &AgePair::operations()
{
    static const std::vector<Operation<AgePair>> table = {
        {"start", 3, [](AgePair &p, quint32) { p.m_fixture.biz->start(), p.m_model->start(); }},
        {"stop", 2, [](AgePair &p, quint32) { p.m_fixture.biz->stop(), p.m_model->stop(); }},
        {"recount", 4, [](AgePair &p, quint32) { p.m_fixture.biz->recount(), p.m_model->recount(); }},
        {"advance", 50, [](AgePair &p, quint32 value) { p.advance(value); }},
        {"net report", 3, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, false, v); }},
        {"net changed", 10, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, true, v); }},
        {"usb report", 3, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, false, v); }},
        {"usb changed", 10, [](AgePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, true, v); }},
        {"language", 3, [](AgePair &p, quint32 value) { p.m_device.setLanguage(value); }},
        {"menu", 2, [](AgePair &p, quint32 value) { p.m_device.setMenu(value); }},
        {"net answers", 2, [](AgePair &p, quint32 value) { p.m_device.setNetAnswer(value); }},
        {"usb answers", 2, [](AgePair &p, quint32 value) { p.m_device.setUsbAnswer(value); }},
        {"renew", 1, [](AgePair &p, quint32 value) { p.renew(mostBits(value)); }},
        {"services", 0, [](AgePair &p, quint32 value) { p.renew(value); }},
    };
    return table;
}

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

void MachinePair::answerCommand(bool ok)
{
    const auto &results = m_fixture.host.tbarCalibration.results;
    if (!results.empty())
        results.back()(ok, {});
    m_model->tbar.answer(ok);
}

void MachinePair::renew(quint32 services)
{
    m_model->destroy();
    m_device.setServices(services);
    m_fixture.make();
    m_model.emplace(m_device.model);
}

/// Does what an operator does to pass the phase, or begins a run.
void MachinePair::passPhase()
{
    if (m_model->result != 0 || m_model->phase < 0)
        return start();
    switch (m_model->phase) {
    case 0:
    case 2:
        advance(20000);
        return right();
    case 1:
        return right(13);
    case 3:
        for (int presses = 0; presses < 5 && m_model->keys.current.first >= 0; ++presses)
            press(m_model->keys.current.first);
        return right();
    case 4:
        return right(8);
    case 5:
        return right(2);
    default:
        return right();
    }
}

const std::vector<Operation<MachinePair>> &MachinePair::operations()
{
    static const int keys[] = {5, 6, 7, 10, 11, 27, 33, 99};
    static const std::vector<Operation<MachinePair>> table = {
        {"start", 1, [](MachinePair &p, quint32) { p.start(); }},
        {"left", 2, [](MachinePair &p, quint32) { p.left(); }},
        {"right", 30, [](MachinePair &p, quint32) { p.right(); }},
        {"pass phase", 30, [](MachinePair &p, quint32) { p.passPhase(); }},
        {"advance", 20, [](MachinePair &p, quint32 value) { p.advance(timeOf(value)); }},
        {"press", 12, [](MachinePair &p, quint32 value) { p.press(keys[value % std::size(keys)]); }},
        {"net report", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, false, v); }},
        {"net changed", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, false, true, v); }},
        {"usb report", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, false, v); }},
        {"usb changed", 6,
         [](MachinePair &p, quint32 v) { deliverReport(p.m_fixture.host, *p.m_model, true, true, v); }},
        {"answer command", 4, [](MachinePair &p, quint32 value) { p.answerCommand(value % 2 == 0); }},
        {"calibration report", 1,
         [](MachinePair &p, quint32) {
             p.m_fixture.host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration());
             p.advance(0);
         }},
        {"T-Bar type", 2, [](MachinePair &p, quint32 value) { p.m_device.setTBarType(value); }},
        {"keys", 1, [](MachinePair &p, quint32 value) { p.m_device.setKeys(value); }},
        {"language", 2, [](MachinePair &p, quint32 value) { p.m_device.setLanguage(value); }},
        {"menu", 2, [](MachinePair &p, quint32 value) { p.m_device.setMenu(value); }},
        {"net answers", 2, [](MachinePair &p, quint32 value) { p.m_device.setNetAnswer(value); }},
        {"usb answers", 2, [](MachinePair &p, quint32 value) { p.m_device.setUsbAnswer(value); }},
        {"renew", 1, [](MachinePair &p, quint32 value) { p.renew(mostBits(value)); }},
        {"services", 0, [](MachinePair &p, quint32 value) { p.renew(value); }},
    };
    return table;
}

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

template <class Pair>
WalkStep stepOf(const char *name, quint32 value = 0)
{
    const auto &table = Pair::operations();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [name](const auto &operation) { return qstrcmp(operation.name, name) == 0; });
    return {static_cast<int>(found - table.begin()), value};
}

/// Runs a session of @p steps without each combination of services. Returns the first difference.
template <class Pair>
QString withoutServices(const std::vector<WalkStep> &session)
{
    for (quint32 services = 0; services < 64; ++services) {
        std::vector<WalkStep> steps = {stepOf<Pair>("services", services & 31U), stepOf<Pair>("menu", services >> 5)};
        steps.insert(steps.end(), session.begin(), session.end());
        if (const auto found = runWalk<Pair>(steps))
            return QStringLiteral("services %1: %2").arg(services, 6, 2, QLatin1Char('0')).arg(found->text);
    }
    return {};
}

template <class Pair>
QString describeWalk(const std::vector<WalkStep> &steps)
{
    QString text;
    for (const WalkStep &step : steps)
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(Pair::operations()[static_cast<std::size_t>(step.operation)].name))
                    .arg(step.value);
    return text;
}

/// Walks @p count steps. Returns the shrunk walk and its difference as text if there is one.
template <class Pair>
QString walk(quint32 seed, int count)
{
    std::vector<int> weights;
    for (const auto &operation : Pair::operations())
        weights.push_back(operation.weight);
    std::mt19937 random(seed);
    for (int done = 0; done < count; done += StepsOfWalk) {
        const auto steps = randomWalk(random, weights, std::min(StepsOfWalk, count - done));
        if (!runWalk<Pair>(steps))
            continue;
        const auto shortest = shrunkWalk(steps, runWalk<Pair>);
        return QStringLiteral("LCD_PROOF_SEED=%1 after %2 steps, shrunk to\n%3%4")
            .arg(seed)
            .arg(done)
            .arg(describeWalk<Pair>(shortest), runWalk<Pair>(shortest)->text);
    }
    return {};
}

}

/// Random walks of operations and events: the component does what the models do, call by call.
class ModelWalksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qInfo("LCD_PROOF_SEED=%u, %d steps of each driver", m_seed, m_steps); }

    void agingTest()
    {
        const QString failure = walk<AgePair>(m_seed, m_steps);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
    void machineTest()
    {
        const QString failure = walk<MachinePair>(m_seed, m_steps);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }

    void theAgingTestWithoutEachCombinationOfServices()
    {
        const WalkStep longTime = stepOf<AgePair>("advance", 9);
        const QString difference =
            withoutServices<AgePair>({stepOf<AgePair>("start"), longTime, longTime, stepOf<AgePair>("net changed", 1),
                                      stepOf<AgePair>("usb changed", 1), stepOf<AgePair>("recount"), longTime,
                                      stepOf<AgePair>("stop"), longTime});
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
    void theMachineTestWithoutEachCombinationOfServices()
    {
        std::vector<WalkStep> session(14, stepOf<MachinePair>("pass phase"));
        for (const quint32 value : {0U, 1U})
            session.insert(session.end(),
                           {stepOf<MachinePair>("net report", value), stepOf<MachinePair>("usb report", value),
                            stepOf<MachinePair>("press", 3), stepOf<MachinePair>("left"), stepOf<MachinePair>("right"),
                            stepOf<MachinePair>("pass phase"), stepOf<MachinePair>("pass phase")});
        const QString difference = withoutServices<MachinePair>(session);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    // The ending is in all texts of the component and in none of the model.
    void aDifferenceIsFoundAndShrunk()
    {
        setTestEnding(QStringLiteral("!"));
        const QString aging = walk<AgePair>(1, StepsOfWalk);
        const QString machine = walk<MachinePair>(1, StepsOfWalk);
        setTestEnding({});
        QCOMPARE(aging.count(QLatin1Char('\n')), 4); // one step, and the difference in three lines
        QVERIFY(aging.contains(QStringLiteral("actual:   white [FCAging]!")));
        QCOMPARE(machine.count(QLatin1Char('\n')), 4);
        QVERIFY(machine.contains(QStringLiteral("actual:   phase title=[FCScreenLight]! 10%")));
    }

    void aWalkIsShrunkToTheStepsThatMatter()
    {
        std::mt19937 random(1);
        const auto run = [](const std::vector<WalkStep> &steps) -> std::optional<WalkDifference> {
            bool first = false;
            for (std::size_t i = 0; i < steps.size(); ++i) {
                if (first && steps[i].operation == 7)
                    return WalkDifference{i, QStringLiteral("7 after 3")};
                first = first || steps[i].operation == 3;
            }
            return std::nullopt;
        };
        const auto shortest = shrunkWalk(randomWalk(random, std::vector<int>(10, 1), 500), run);
        QCOMPARE(shortest.size(), std::size_t(2));
        QCOMPARE(shortest[0].operation, 3);
        QCOMPARE(shortest[1].operation, 7);
    }

private:
    const quint32 m_seed = proofSeed();
    const int m_steps = proofLength(2000, 50000, 1000000);
};

VIRTUAL_TIME_TEST_MAIN(ModelWalksTest)
#include "tst_modelwalks.moc"
