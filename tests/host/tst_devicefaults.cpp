#include "hosttest.h"
#include "lcd/screenreader.h"
#include "playing/menunavigator.h"
#include "prooflength.h"
#include "session/session.h"
#include "shippedscenarios.h"

#include <functional>

using namespace panelhost;

namespace {

/// An operator who does the right thing in each phase. What the page or the device refuses is left out.
class PatientOperator
{
public:
    explicit PatientOperator(Session &session) : m_session(session) {}

    void open(const char *entry)
    {
        QString error;
        QVERIFY2(openMenuEntry(m_session, {q(entry)}, &error), qPrintable(error));
    }
    void wait(Milliseconds duration) { m_session.clock().advance(duration); }
    void right(int times = 1)
    {
        for (int i = 0; i < times; ++i)
            perform({OperatorAction::Kind::Soft, {{q("side"), q("right")}}});
    }
    void plug(const QStringList &ports, bool plugged = true)
    {
        const auto kind = plugged ? OperatorAction::Kind::Plug : OperatorAction::Kind::Unplug;
        for (const QString &port : ports)
            perform({kind, {{q("port"), port}}});
    }
    /// Presses the key that blinks, as often as there are keys.
    void pressBlinkingKeys()
    {
        const int keys = m_session.device().state().keys.size();
        for (int i = 0; i < keys; ++i) {
            const QList<KeyState> states = m_session.device().state().keys;
            const auto blinking =
                std::find_if(states.begin(), states.end(), [](const KeyState &key) { return key.led.isBlinking(); });
            if (blinking == states.end())
                return;
            perform({OperatorAction::Kind::Press, {{q("key"), blinking->halKey}}});
            wait(200); // by then a key that repeats has given its last event
        }
    }
    void moveTBar(double position) { perform({OperatorAction::Kind::TBar, {{q("position"), position}}}); }
    void calibrate()
    {
        right();
        wait(500);
        for (int i = 0; i < 3; ++i) {
            for (const double end : {1.0, 0.0}) {
                moveTBar(end);
                right();
                wait(500);
            }
        }
    }
    /// Leaves the page, in whatever state it is, and puts the device back.
    void leave()
    {
        perform({OperatorAction::Kind::ExitFactoryMode, {}});
        plug(netPorts() + usbPorts(), false);
        moveTBar(0);
        wait(5000);
        perform({OperatorAction::Kind::EnterFactoryMode, {}});
    }

    static QStringList netPorts() { return {q("net1"), q("net2")}; }
    static QStringList usbPorts() { return {q("usb1"), q("usb2"), q("usb3"), q("usb4")}; }

private:
    void perform(const OperatorAction &action) { m_session.panelOperator().perform(action); }

    Session &m_session;
};

/// A part of a test, and what an operator does in it.
struct Phase
{
    const char *name;
    std::function<void(PatientOperator &)> pass;
};

const QList<Phase> &machinePhases()
{
    using Who = PatientOperator;
    const auto judge = [](Who &who) { who.right(); };
    const auto levels = [](Who &who) {
        who.wait(20000);
        who.right();
    };
    static const QList<Phase> phases = {
        {"entry", [](Who &who) { who.open("completemachine"); }},
        {"start", judge},
        {"screen brightness", levels},
        {"screen pixels", [](Who &who) { who.right(13); }},
        {"key lights", levels},
        {"key function",
         [](Who &who) {
             who.pressBlinkingKeys();
             who.right();
         }},
        {"T-Bar",
         [](Who &who) {
             who.calibrate();
             who.right();
         }},
        {"net ports",
         [](Who &who) {
             who.plug(Who::netPorts());
             who.wait(500);
             who.right();
             who.wait(1000);
             who.right();
         }},
        {"USB ports",
         [](Who &who) {
             who.plug(Who::usbPorts());
             who.wait(1000);
             who.right();
         }},
        {"Type-C data", judge},
        {"Type-C power", judge},
        {"PoE", judge},
    };
    return phases;
}

const QList<Phase> &agingPhases()
{
    using Who = PatientOperator;
    static const QList<Phase> phases = {
        {"entry", [](Who &who) { who.open("AgingMode"); }},
        {"start", [](Who &who) { who.right(); }},
        {"screen brightness", [](Who &who) { who.wait(20000); }},
        {"screen pixels", [](Who &who) { who.wait(36000); }},
        {"key lights", [](Who &who) { who.wait(20000); }},
        {"net ports",
         [](Who &who) {
             who.plug(Who::netPorts());
             who.wait(1000);
         }},
        {"USB ports",
         [](Who &who) {
             who.plug(Who::usbPorts());
             who.wait(1000);
         }},
        {"second round", [](Who &who) { who.wait(80000); }},
        {"stop", [](Who &who) { who.right(); }},
    };
    return phases;
}

/// Returns the phases in which a fault changes what crosses the boundary of the component. The aging test
/// has no phases with keys and no T-Bar. Neither test uses the USB stick or resets the device.
QStringList phasesOfEffect(const QString &fault, bool isMachineTest)
{
    static const QStringList keys = {q("key function")};
    static const QStringList slider = {q("T-Bar")};
    static const QStringList links = {q("net ports"), q("USB ports")};
    static const QMap<QString, QStringList> inMachineTest = {
        {q("key-dead"), keys},
        {q("key-repeats"), keys},
        {q("key-releases"), keys},
        {q("led-stuck"), keys},
        {q("calibration-fails"), slider},
        {q("calibration-hangs"), slider},
        {q("event-while-replacing"), {q("key lights")}}, // the key test begins when this phase has passed
    };
    static const QMap<QString, QStringList> inBothTests = {
        {q("wrong-payload"), links}, {q("null-payload"), links},  {q("empty-payload"), links},
        {q("empty-report"), links},  {q("garbage-ports"), links}, {q("duplicate-reports"), links},
    };
    return inBothTests.value(fault, isMachineTest ? inMachineTest.value(fault) : QStringList());
}

/// Returns the values of the argument of @p fault; one empty map if it has none.
QList<QVariantMap> argumentsOf(const FaultInfo &fault)
{
    if (fault.arguments.isEmpty())
        return {{}};
    const QString argument = fault.arguments.first();
    QStringList values = Faults::allowedValues(argument);
    if (values.isEmpty())
        values << q("PGM 2"); // a key that the key test asks for
    QList<QVariantMap> result;
    for (const QString &value : qAsConst(values))
        result << QVariantMap{{argument, value}};
    return result;
}

/// Returns what crosses the boundary of the component since the entry @p first, without times.
QStringList boundaryLines(Session &session, qint64 first)
{
    QStringList lines;
    const auto entries = session.journal().entriesFrom(first, Journal::DefaultLineLimit);
    for (const Journal::Entry &entry : entries) {
        if (entry.kind != Journal::Kind::Screen && entry.kind != Journal::Kind::Action)
            lines << entry.name + QString::fromUtf8(QJsonDocument(entry.data).toJson(QJsonDocument::Compact));
    }
    return lines;
}

/// Returns the lines that have nothing to do with @p service.
QStringList withoutService(QStringList lines, const QString &service)
{
    const QString lookUp = q("\"name\":\"%1\"").arg(service);
    const auto isOfService = [&](const QString &line) {
        return line.startsWith(service + QLatin1Char('.'))
            || (line.startsWith(q("getComponent")) && line.contains(lookUp));
    };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isOfService), lines.end());
    return lines;
}

/// Returns the numbers of the steps of the calibration that have failed.
QList<int> failedSteps(const QStringList &lines)
{
    QList<int> steps;
    const QStringList results = lines.filter(q("lcdTBarCalibration.result"));
    for (int i = 0; i < results.size(); ++i) {
        if (results[i].contains(q("\"ok\":false")))
            steps << i + 1;
    }
    return steps;
}

/// Plays the phases of a test, with a fault in the phase with the number @p faulty. Returns what crossed the boundary
/// of the component.
QStringList play(Session &session, const QList<Phase> &phases, int faulty = -1,
                 const std::function<void(bool)> &setFault = {})
{
    const qint64 first = session.journal().count() + 1;
    PatientOperator who(session);
    for (int i = 0; i < phases.size(); ++i) {
        if (i == faulty)
            setFault(true);
        phases[i].pass(who);
        if (i == faulty)
            setFault(false);
    }
    who.leave();
    return boundaryLines(session, first);
}

}

/// Each fault of the device in each phase of the complete machine test and of the aging test: it changes what crosses
/// the boundary of the component in the phases that it concerns, and in no other. After it the next run makes the same
/// calls as if there had been no fault.
class tst_DeviceFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFaultInEveryPhase_data()
    {
        QTest::addColumn<bool>("isMachineTest");
        QTest::addColumn<OperatorAction>("fault");
        for (const bool isMachineTest : {true, false}) {
            for (const FaultInfo &fault : Faults::all()) {
                if (fault.name == q("service-absent"))
                    continue; // has no effect on a page that has found the service before
                const QList<QVariantMap> all = argumentsOf(fault);
                for (QVariantMap arguments : all) {
                    const QString value = fault.arguments.isEmpty() ? QString() : arguments.first().toString();
                    arguments.insert(q("name"), fault.name);
                    QTest::addRow("%s: %s %s", isMachineTest ? "machine" : "aging", qPrintable(fault.name),
                                  qPrintable(value))
                        << isMachineTest << OperatorAction{OperatorAction::Kind::Fault, arguments};
                }
            }
        }
    }

    void everyFaultInEveryPhase()
    {
        QFETCH(const bool, isMachineTest);
        QFETCH(const OperatorAction, fault);
        const QList<Phase> &phases = isMachineTest ? machinePhases() : agingPhases();
        QString error;
        const auto session = Session::open(options(), &error);
        QVERIFY2(session, qPrintable(error));
        const auto setFault = [&](bool on) {
            OperatorAction action = fault;
            action.arguments.insert(q("on"), on);
            QVERIFY2(session->panelOperator().perform(action, &error), qPrintable(error));
        };
        play(*session, phases);
        const QStringList expected = play(*session, phases);
        const QString name = fault.arguments.value(q("name")).toString();
        const QStringList phasesToChange = phasesOfEffect(name, isMachineTest);
        QStringList changed;
        ++m_faultCount;
        for (int faulty = 0; faulty < phases.size(); ++faulty) {
            if (!phasesToChange.contains(q(phases[faulty].name)) && isLeftOut(faulty))
                continue;
            const QStringList withFault = play(*session, phases, faulty, setFault);
            if (withFault != expected)
                changed << q(phases[faulty].name);
            if (name == q("calibration-fails") && withFault != expected)
                QCOMPARE(failedSteps(withFault), QList<int>{fault.arguments.value(q("step")).toInt()});
            const QStringList actual = play(*session, phases);
            QVERIFY2(actual == expected, qPrintable(difference(phases[faulty].name, actual, expected)));
        }
        QCOMPARE(changed, phasesToChange);
    }

    void aServiceIsAbsent_data()
    {
        QTest::addColumn<bool>("isMachineTest");
        QTest::addColumn<QStringList>("changed");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QString>("warning");
        const QStringList none;
        const QString complete = q("Test complete");
        const QString net = q("NetPortTestBiz: INetworkPort is null, cannot start test");
        const QString usb = q("UsbPortTestBiz: IUSB is null, cannot start test");
        const QStringList afterKeyLights = {q("key lights"), q("key function"), q("T-Bar"), q("net ports"),
                                            q("USB ports")};
        const QStringList byEye = {q("Type-C data"), q("Type-C power"), q("PoE")};
        const QStringList visual = {q("screen brightness"), q("screen pixels")}; // with test patterns
        const auto row = [](const char *tag, bool isMachineTest, const QStringList &changed, const QString &end,
                            const QString &warning) {
            QTest::newRow(tag) << isMachineTest << changed << end << warning;
        };
        const auto machine = [row](const char *tag, const QStringList &changed, const QString &end,
                                   const QString &warning = {}) { row(tag, true, changed, end, warning); };
        const auto aging = [row](const char *tag, const QStringList &changed, const QString &warning = {}) {
            row(tag, false, changed, q("Aging test"), warning);
        };
        machine("machine: lcdKeyboardEvent", afterKeyLights, q("Key function"));
        machine("machine: lcdFactoryModeBiz", none, complete);
        machine("machine: lcdFactoryModeWidget", visual + afterKeyLights + byEye, q("Key function"),
                q("[ButtonFunctionBiz] FactoryModeWidget not found, cannot get key check list"));
        machine("machine: lcdMemoryCacheNetworkPort", {q("net ports")}, complete, net);
        machine("machine: lcdMemoryCacheNodeUSB", {q("net ports"), q("USB ports")}, complete, usb);
        machine("machine: lcdMemoryCacheScreenDetail", none, complete);
        machine("machine: lcdTBarCalibration", afterKeyLights.mid(2) + byEye, q("T-Bar"));
        machine("machine: lcdConfig", none, complete);
        machine("machine: lcdLogExport", none, complete);
        machine("machine: lcdFactoryReset", none, complete);
        aging("aging: lcdKeyboardEvent", none);
        aging("aging: lcdFactoryModeBiz", none);
        aging("aging: lcdFactoryModeWidget", visual + QStringList{q("USB ports")});
        aging("aging: lcdMemoryCacheNetworkPort", {q("key lights"), q("net ports"), q("USB ports")}, net);
        aging("aging: lcdMemoryCacheNodeUSB", {q("net ports"), q("USB ports"), q("second round")}, usb);
        aging("aging: lcdMemoryCacheScreenDetail", none);
        aging("aging: lcdTBarCalibration", none);
        aging("aging: lcdConfig", none);
        aging("aging: lcdLogExport", none);
        aging("aging: lcdFactoryReset", none);
    }

    // The pages look up the services when they are opened for the first time.
    void aServiceIsAbsent()
    {
        QFETCH(const bool, isMachineTest);
        QFETCH(const QStringList, changed);
        QFETCH(const QString, end);
        QFETCH(const QString, warning);
        const QString service = QString::fromUtf8(QTest::currentDataTag()).section(q(": "), 1);
        const QList<Phase> &phases = isMachineTest ? machinePhases() : agingPhases();
        const QList<QStringList> complete = playOnce(phases, options());
        Session::Options without = options();
        without.faults << Session::InitialFault{q("service-absent"), {{q("service"), service}}};
        QString actualEnd;
        const QList<QStringList> incomplete = playOnce(phases, without, &actualEnd);
        QStringList actuallyChanged;
        QStringList warnings;
        for (int i = 0; i < phases.size(); ++i) {
            QCOMPARE(incomplete[i].filter(QRegularExpression(q("^%1\\.").arg(service))), QStringList());
            if (withoutService(incomplete[i], service) != withoutService(complete[i], service))
                actuallyChanged << q(phases[i].name);
            warnings << incomplete[i].filter(q("\"level\":\"warning\""));
        }
        QCOMPARE(actuallyChanged, changed);
        QCOMPARE(actualEnd, end);
        QCOMPARE(warnings.size(), warning.isEmpty() ? 0 : 1);
        QVERIFY2(warnings.join(QString()).contains(warning), qPrintable(warnings.join(QString())));
    }

    void theRunWithoutFaultPasses()
    {
        QString error;
        const auto session = Session::open(options(), &error);
        QVERIFY2(session, qPrintable(error));
        PatientOperator who(*session);
        for (const Phase &phase : machinePhases())
            phase.pass(who);
        QCOMPARE(readScreen(session->lcd()).value(q("stepTitle")).toString(), q("Test complete"));
        const QVariantList steps = readScreen(session->lcd()).value(q("steps")).toList();
        QCOMPARE(steps.size(), 1);
        QCOMPARE(steps.first().toMap().value(q("text")).toString(), q("Test passed"));
        who.leave();
        const QStringList aging = play(*session, agingPhases());
        QVERIFY(!aging.filter(q("setScreenBrightness")).isEmpty());
    }

private:
    /// Plays a test in a new session. Returns what crossed the boundary in each phase, and sets @p end to the last
    /// title.
    static QList<QStringList> playOnce(const QList<Phase> &phases, const Session::Options &options,
                                       QString *end = nullptr)
    {
        QList<QStringList> lines;
        QString error;
        const auto session = Session::open(options, &error);
        if (!session)
            return lines;
        PatientOperator who(*session);
        for (const Phase &phase : phases) {
            const qint64 first = session->journal().count() + 1;
            phase.pass(who);
            lines << boundaryLines(*session, first);
        }
        if (end)
            *end = readScreen(session->lcd()).value(q("title")).toString();
        return lines;
    }

    /// Returns whether a phase in which a fault has no effect is left out: at the quick length, three of four, each
    /// time others.
    bool isLeftOut(int phase) const { return (phase + m_faultCount) % proofLength(4, 1, 1) != 0; }

    static Session::Options options()
    {
        Session::Options options = shippedOptions();
        options.pages = Session::noPages;
        options.changedOnSubscribe = false;
        return options;
    }

    static QString difference(const char *phase, const QStringList &actual, const QStringList &expected)
    {
        for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
            if (actual.value(i) != expected.value(i))
                return QStringLiteral("after a fault in \"%1\", line %2: %3, expected %4")
                    .arg(q(phase))
                    .arg(i)
                    .arg(actual.value(i), expected.value(i));
        }
        return {};
    }

    int m_faultCount = 0; ///< faults that were tried until now
};

PANELHOST_TEST_MAIN(tst_DeviceFaults)
#include "tst_devicefaults.moc"
