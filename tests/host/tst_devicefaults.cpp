#include "hosttest.h"
#include "lcd/screenreader.h"
#include "playing/menunavigator.h"
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

/// Returns the calls, signals and log lines since the entry @p first, without their times.
QStringList boundaryLines(Session &session, qint64 first)
{
    QStringList lines;
    const auto entries = session.journal().entriesFrom(first, Journal::DefaultLineLimit);
    for (const Journal::Entry &entry : entries) {
        if (entry.kind == Journal::Kind::Call || entry.kind == Journal::Kind::Signal
            || entry.kind == Journal::Kind::Log)
            lines << entry.name + QString::fromUtf8(QJsonDocument(entry.data).toJson(QJsonDocument::Compact));
    }
    return lines;
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

/// Each fault of the device in each phase of the complete machine test and of the aging test: the session goes on, and
/// after it the next run makes the same calls as if there had been no fault.
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
        for (int faulty = 0; faulty < phases.size(); ++faulty) {
            play(*session, phases, faulty, setFault);
            const QStringList actual = play(*session, phases);
            QVERIFY2(actual == expected, qPrintable(difference(phases[faulty].name, actual, expected)));
        }
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
};

PANELHOST_TEST_MAIN(tst_DeviceFaults)
#include "tst_devicefaults.moc"
