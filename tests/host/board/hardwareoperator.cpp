#include "hardwareoperator.h"

#include "expectations/expectationevaluator.h"
#include "operator/operator.h"
#include "playing/menunavigator.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <libevdev/libevdev.h>

using namespace panelhost;

namespace {

constexpr int NetPorts = 4;
constexpr int BarMin = 12;
constexpr int BarMax = 1010;
constexpr int MaxWait = 20000; // real milliseconds for the hardware

const QMap<QString, unsigned> &knobCodes()
{
    static const QMap<QString, unsigned> codes = {
        {QStringLiteral("up"), KEY_UP},       {QStringLiteral("down"), KEY_DOWN},   {QStringLiteral("left"), KEY_LEFT},
        {QStringLiteral("right"), KEY_RIGHT}, {QStringLiteral("enter"), KEY_ENTER}, {QStringLiteral("back"), KEY_BACK}};
    return codes;
}

QString codeName(unsigned code)
{
    return QString::fromLatin1(libevdev_event_code_get_name(EV_KEY, code));
}

// Fails the test program: without its interfaces there is nothing to test.
void ip(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("ip"), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("ip %s: %s", qPrintable(arguments.join(QLatin1Char(' '))), process.readAllStandardError().constData());
}

QString ledName(int halKey)
{
    return QStringLiteral("panel:key-%1").arg(halKey);
}

QString text(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

// Runs the event loop until @p done returns true. Returns false if that takes too long.
bool waitFor(const std::function<bool()> &done)
{
    return QTest::qWaitFor(done, MaxWait);
}

}

MockBoard::MockBoard(MockBed &bed, const QMap<QString, int> &halKeys) : m_bed(bed), m_halKeys(halKeys)
{
    unsigned code = KEY_ESC;
    for (const int halKey : halKeys) {
        while (!libevdev_event_code_get_name(EV_KEY, code))
            ++code;
        m_codes.insert(halKey, code++);
        bed.add(
            QStringLiteral("P: /devices/panel/leds/%1\nE: SUBSYSTEM=leds\nA: max_brightness=255\\n\n"
                           "A: brightness=0\\n\nA: trigger=[none] timer\\n\nA: delay_on=0\\n\nA: delay_off=0\\n\n\n")
                .arg(ledName(halKey)));
    }
    for (int screen = 0; screen < 3; ++screen)
        bed.add(QStringLiteral("P: /devices/panel/backlight/lcd%1\nE: SUBSYSTEM=backlight\nA: max_brightness=4095\\n\n"
                               "A: brightness=2048\\n\n\n")
                    .arg(screen));
    bed.add(QStringLiteral("P: /devices/pci/usb1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: speed=480\\n\n\n"
                           "P: /devices/pci/usb1/1-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: speed=480\\n\n\n"));
    m_keys = std::make_unique<MockInput>(
        bed, MockInput::Description{3, QStringLiteral("panel keys"), {}, m_codes.values(), {}, {}});
    m_knob = std::make_unique<MockInput>(
        bed, MockInput::Description{4, QStringLiteral("panel knob"), {}, knobCodes().values(), {}, {}});
    m_bar = std::make_unique<MockInput>(
        bed,
        MockInput::Description{
            5, QStringLiteral("panel bar"), {}, {}, {}, {{ABS_X, {BarMin, BarMin, BarMax, 0, 0, 0}}}});
    for (int port = 1; port <= NetPorts; ++port) {
        const QString name = QStringLiteral("net%1").arg(port);
        ip({QStringLiteral("link"), QStringLiteral("add"), name, QStringLiteral("type"), QStringLiteral("veth"),
            QStringLiteral("peer"), QStringLiteral("name"), QStringLiteral("far%1").arg(port)});
        ip({QStringLiteral("link"), QStringLiteral("set"), name, QStringLiteral("up")});
    }
}

QByteArray MockBoard::profile() const
{
    QString keys = QStringLiteral("keys:\n  device: {name: panel keys}\n  events:\n");
    QString leds = QStringLiteral("leds:\n");
    for (auto code = m_codes.begin(); code != m_codes.end(); ++code) {
        keys += QStringLiteral("    %1: %2\n").arg(codeName(code.value())).arg(code.key());
        leds += QStringLiteral("  %1: \"%2\"\n").arg(code.key()).arg(ledName(code.key()));
    }
    QString knob = QStringLiteral("navigation:\n  device: {name: panel knob}\n  events:\n");
    for (auto code = knobCodes().begin(); code != knobCodes().end(); ++code)
        knob += QStringLiteral("    %1: %2\n").arg(codeName(code.value()), code.key());
    return (keys + leds + knob
            + QStringLiteral("screens: [{backlight: lcd0}, {backlight: lcd1}, {backlight: lcd2}]\n"
                             "tbar: {device: {name: panel bar}, axis: ABS_X}\n"
                             "net: [net1, net2, net3, net4]\n"
                             "usb: [1-1.1, 1-1.2, 1-1.3, 1-1.4]\n"))
        .toUtf8();
}

void MockBoard::setKeyDown(int halKey, bool down)
{
    m_keys->send(EV_KEY, m_codes.value(halKey), down ? 1 : 0);
}

void MockBoard::navigate(const QString &key)
{
    m_knob->send(EV_KEY, knobCodes().value(key), 1);
    m_knob->send(EV_KEY, knobCodes().value(key), 0);
}

void MockBoard::moveTBar(double position)
{
    m_bar->send(EV_ABS, ABS_X, BarMin + qRound(position * (BarMax - BarMin)));
}

void MockBoard::setPlugged(const QString &port, bool plugged)
{
    const int number = port.mid(3).toInt();
    if (port.startsWith(QLatin1String("net")))
        setInterfaceUp(number, plugged);
    else
        setUsbPlugged(number, plugged);
}

// A port has a carrier as long as the far end of its pair is up.
void MockBoard::setInterfaceUp(int number, bool up)
{
    ip({QStringLiteral("link"), QStringLiteral("set"), QStringLiteral("far%1").arg(number),
        up ? QStringLiteral("up") : QStringLiteral("down")});
}

void MockBoard::setUsbPlugged(int number, bool plugged)
{
    const QString path = QStringLiteral("/devices/pci/usb1/1-1/1-1.%1").arg(number);
    if (plugged)
        m_bed.add(
            QStringLiteral("P: %1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nA: speed=480\\n\nA: authorized=1\\n\n\n")
                .arg(path));
    m_bed.uevent(QStringLiteral("/sys") + path, plugged ? "add" : "remove");
    if (!plugged)
        m_bed.remove(QStringLiteral("/sys") + path);
}

int MockBoard::blinkingKey() const
{
    for (const int halKey : m_halKeys) {
        if (text(QStringLiteral("/sys/class/leds/%1/trigger").arg(ledName(halKey))) == QLatin1String("timer"))
            return halKey;
    }
    return 0;
}

QString HardwareOperator::play(const QVector<Step> &steps)
{
    for (const Step &step : steps) {
        const QString failure = play(step);
        if (!failure.isEmpty())
            return QStringLiteral("%1:%2 %3: %4").arg(step.file).arg(step.where.line).arg(step.text, failure);
    }
    return {};
}

QString HardwareOperator::play(const Step &step)
{
    QString failure;
    switch (step.kind) {
    case Step::Kind::Act:
        for (int time = 0; time < step.times; ++time) {
            for (const OperatorAction &action : step.actions)
                failure += perform(action);
        }
        return failure;
    case Step::Kind::Open:
        openMenuEntry(m_session, step.path, &failure);
        return failure;
    case Step::Kind::WalkKeys:
        return walkKeys();
    case Step::Kind::Wait:
        advance(step.duration);
        return {};
    case Step::Kind::Expect:
        return expect(step);
    case Step::Kind::Repeat:
        for (int time = 0; time < step.times && failure.isEmpty(); ++time)
            failure = play(step.steps);
        return failure;
    case Step::Kind::Mark:
        m_counter.restart();
        return {};
    case Step::Kind::Screenshot:
    case Step::Kind::Note:
        return {};
    }
    return {};
}

// What the hardware does is performed when the event loop has taken it over.
QString HardwareOperator::perform(const OperatorAction &action)
{
    using Kind = OperatorAction::Kind;
    const QVariantMap &arguments = action.arguments;
    const int key = arguments.value(QStringLiteral("key")).toInt();
    const QString port = arguments.value(QStringLiteral("port")).toString();
    const double position = arguments.value(QStringLiteral("position")).toDouble();
    bool isDone = true;
    QString error;
    switch (action.kind) {
    case Kind::Press:
        isDone = waitForActions(2, [&] {
            m_board.setKeyDown(key, true);
            m_board.setKeyDown(key, false);
        });
        break;
    case Kind::Hold:
    case Kind::Release:
        isDone = waitForActions(1, [&] { m_board.setKeyDown(key, action.kind == Kind::Hold); });
        break;
    case Kind::Navigate:
        isDone = waitForActions(1, [&] { m_board.navigate(arguments.value(QStringLiteral("key")).toString()); });
        break;
    case Kind::TBar:
        if (qAbs(m_session.device().state().tbar.position - position) > 0.01)
            isDone = waitForActions(1, [&] { m_board.moveTBar(position); });
        break;
    case Kind::Plug:
    case Kind::Unplug: {
        const bool plugged = action.kind == Kind::Plug;
        const DeviceState state = m_session.device().state();
        if (findPort(state, port)->isPlugged != plugged)
            isDone = waitForActions(1, [&] { m_board.setPlugged(port, plugged); });
        break;
    }
    default:
        error = touch(action);
    }
    return isDone ? error : QStringLiteral("the hardware was not heard");
}

// By the wall clock, a page may show its buttons a little later than the scenario says.
QString HardwareOperator::touch(const OperatorAction &action)
{
    QString error;
    const auto perform = [&] { return m_session.panelOperator().perform(action, &error); };
    const bool isDone = m_session.clock().isPaced() ? waitFor(perform) : perform();
    return isDone ? QString() : error;
}

bool HardwareOperator::waitForActions(int count, const std::function<void()> &doIt)
{
    int performed = 0;
    const auto connection =
        QObject::connect(&m_session.panelOperator(), &Operator::performed, [&performed] { ++performed; });
    doIt();
    const bool isDone = waitFor([&] { return performed >= count; });
    QObject::disconnect(connection);
    return isDone;
}

// A key is found by its LED, and pressed until the next one blinks.
QString HardwareOperator::walkKeys()
{
    constexpr int MaxPresses = 100;
    constexpr int Pace = 300;
    const auto blinking = [this] {
        const DeviceState state = m_session.device().state();
        const auto key = std::find_if(state.keys.begin(), state.keys.end(),
                                      [](const KeyState &each) { return each.led.isBlinking(); });
        return key == state.keys.end() ? 0 : key->halKey;
    };
    for (int press = 0; press < MaxPresses; ++press) {
        const int wanted = blinking();
        if (!waitFor([&] { return m_board.blinkingKey() == wanted; }))
            return QStringLiteral("the LED of key %1 doesn't blink").arg(wanted);
        if (wanted == 0)
            return {};
        const QString failure = perform({OperatorAction::Kind::Press, {{QStringLiteral("key"), wanted}}});
        if (!failure.isEmpty())
            return failure;
        advance(Pace);
    }
    return QStringLiteral("a key still blinks");
}

// What holds at one millisecond of virtual time only can't be expected by the wall clock.
QString HardwareOperator::expect(const Step &step)
{
    if (m_session.clock().isPaced() && !step.within)
        return {};
    ExpectationResults results;
    const auto advanceTime = [this](Milliseconds duration, const std::function<bool()> &done) {
        return m_session.clock().isPaced() ? waitForClock(duration, done)
                                           : m_session.clock().advanceUntil(duration, done);
    };
    if (ExpectationEvaluator(m_session, m_counter)
            .evaluateWithin(step.expectations, step.within, advanceTime, &results))
        return {};
    QString failure;
    for (const ExpectationResult &result : qAsConst(results)) {
        if (!result.holds)
            failure += QStringLiteral("expected %1, found %2; ").arg(result.expected, result.found);
    }
    return failure;
}

// The result of a calibration step comes when the hardware has measured, not when virtual time says so.
void HardwareOperator::advance(qint64 duration)
{
    waitFor([this] { return m_session.device().state().tbar.step.isEmpty(); });
    if (m_session.clock().isPaced())
        waitForClock(duration, [] { return false; });
    else
        m_session.clock().advance(duration);
}

// Runs the event loop until the clock, which follows the wall clock, has moved on by @p duration, or until @p done
// returns true. Returns what it returned last.
bool HardwareOperator::waitForClock(Milliseconds duration, const std::function<bool()> &done)
{
    constexpr int MaxReal = 1'000'000; // milliseconds; nothing takes that long
    const Milliseconds end = m_session.clock().now() + duration;
    bool isDone = false;
    const auto isOver = [&] { return (isDone = done()) || m_session.clock().now() >= end; };
    return QTest::qWaitFor(isOver, MaxReal) && isDone;
}
