#include "device/simulated/simulateddevice.h"

#include "device/calibrationcommand.h"
#include "device/faults.h"
#include "device/simulated/portreports.h"
#include "time/virtualclock.h"

#include <algorithm>

namespace panelhost {

namespace {

// In virtual milliseconds.
constexpr int repeatDelay = 40;        // between the events of a key that repeats
constexpr int calibrationQuarter = 75; // four of these make one step of the calibration
constexpr int calibrationDone = 100;   // percent; reported by a step that has worked, and by no other

constexpr int resetTime = 1000; // of a factory reset

constexpr int tbarPanelMode = 12; // set by the component in its T-Bar phase

QList<PortState> makePorts(const QString &prefix, int count)
{
    QList<PortState> ports;
    for (int number = 0; number < count; ++number)
        ports << PortState{prefix + QString::number(number + 1), number, false, false, 0};
    return ports;
}

}

// Scheduled work refers to the device by a weak pointer to this, which is null when the device is gone.
class SimulatedDevice::Work
{
public:
    explicit Work(SimulatedDevice &theDevice) : device(theDevice) {}
    SimulatedDevice &device;
};

SimulatedDevice::SimulatedDevice(const Configuration &configuration, VirtualClock &clock, const Faults &faults)
    : m_clock(clock), m_faults(faults), m_work(std::make_shared<Work>(*this)), m_linkDelay(configuration.linkDelay),
      m_hasCalibrationResults(configuration.hasCalibrationResults)
{
    m_state.keys = configuration.keys;
    m_state.tbar.type = configuration.tbarType;
    m_state.tbar.tolerance = configuration.tbarTolerance;
    m_state.netPorts = makePorts(QStringLiteral("net"), configuration.netPorts);
    m_state.usbPorts = makePorts(QStringLiteral("usb"), configuration.usbPorts);
}

SimulatedDevice::~SimulatedDevice() = default;

template <class Change>
auto SimulatedDevice::change(Change &&change)
{
    const std::lock_guard lock(m_mutex);
    return change(m_state);
}

void SimulatedDevice::later(int delay, void (SimulatedDevice::*event)(int, int), int first, int second)
{
    m_clock.schedule(delay, [work = std::weak_ptr(m_work), event, first, second] {
        if (const auto alive = work.lock())
            (alive->device.*event)(first, second);
    });
}

DeviceState SimulatedDevice::state() const
{
    const std::lock_guard lock(m_mutex);
    DeviceState copy = m_state;
    return copy;
}

void SimulatedDevice::setKeyLed(int halKey, const KeyLed &led)
{
    if (m_faults.isOn(QStringLiteral("led-stuck"), QStringLiteral("key"), halKey))
        return;
    change([&](DeviceState &state) {
        for (KeyState &key : state.keys) {
            if (key.halKey == halKey)
                key.led = led;
        }
    });
}

void SimulatedDevice::setAllKeyBrightness(int level)
{
    change([&](DeviceState &state) {
        for (KeyState &key : state.keys) {
            if (m_faults.isOn(QStringLiteral("led-stuck"), QStringLiteral("key"), key.halKey))
                continue;
            key.led.brightness = level;
            key.led.mode = 0;
        }
    });
}

void SimulatedDevice::setScreenBrightness(int screen, int level)
{
    change([&](DeviceState &state) {
        if (screen >= 0 && screen < static_cast<int>(std::size(state.screenBrightness)))
            state.screenBrightness[screen] = level;
    });
}

void SimulatedDevice::setTestPattern(int type, int index)
{
    change([&](DeviceState &state) {
        state.pattern.type = type;
        state.pattern.index = index;
    });
}

void SimulatedDevice::setPatternLevel(int level)
{
    change([level](DeviceState &state) { state.pattern.level = level; });
}

void SimulatedDevice::setPanelMode(int mode)
{
    change([mode, this](DeviceState &state) {
        state.panelMode = mode;
        if (mode == tbarPanelMode)
            return;
        ++m_calibrationRun;
        state.tbar.target.reset();
        state.tbar.failure.clear();
    });
}

void SimulatedDevice::setTestType(int type)
{
    change([type](DeviceState &state) { state.testType = type; });
}

void SimulatedDevice::setMachineTestKind(int kind)
{
    change([kind](DeviceState &state) { state.machineTestKind = kind; });
}

void SimulatedDevice::setFactoryMode(bool)
{
}

void SimulatedDevice::calibrate(int command, const std::function<void(bool, const std::string &)> &result)
{
    const Calibration calibration = change([&](DeviceState &state) {
        const QString problem = m_hasCalibrationResults ? QString() : calibrationProblem(state.tbar, command);
        startStep(state.tbar, command);
        const Calibration step{command, m_calibrationStep, m_calibrationRun, problem, !problem.isEmpty(), result};
        if (m_hasCalibrationResults)
            m_waiting << step;
        return step;
    });
    // A wrong position is detected immediately: nothing is measured, so no progress is reported.
    const int quarters = calibration.problem.isEmpty() ? 4 : 0;
    for (int quarter = 1; quarter < quarters; ++quarter)
        later(quarter * calibrationQuarter, &SimulatedDevice::sendProgress, command, quarter);
    if (m_hasCalibrationResults)
        return;
    m_clock.schedule(quarters * calibrationQuarter, [work = std::weak_ptr(m_work), calibration] {
        if (const auto alive = work.lock())
            alive->device.endCalibration(calibration);
    });
}

bool SimulatedDevice::finishCalibration(int command, bool ok, const QString &message)
{
    const std::optional<Calibration> step = change([&](DeviceState &) -> std::optional<Calibration> {
        const auto found = std::find_if(m_waiting.begin(), m_waiting.end(),
                                        [command](const Calibration &each) { return each.command == command; });
        if (found == m_waiting.end())
            return std::nullopt;
        Calibration finished = *found;
        m_waiting.erase(found);
        finished.hasFailed = !ok;
        finished.problem = ok ? QString() : message;
        return finished;
    });
    if (!step)
        return false;
    m_clock.schedule(0, [work = std::weak_ptr(m_work), calibration = *step] {
        if (const auto alive = work.lock())
            alive->device.endCalibration(calibration);
    });
    return true;
}

// A step that waits for its result can end before the third quarter.
void SimulatedDevice::sendProgress(int command, int quarter)
{
    const bool isRunning = change([&](DeviceState &) { return !m_hasCalibrationResults || isWaiting(command); });
    if (isRunning)
        sendCalibration(command, quarter * 25);
}

// With the lock held.
bool SimulatedDevice::isWaiting(int command) const
{
    return std::any_of(m_waiting.begin(), m_waiting.end(),
                       [command](const Calibration &each) { return each.command == command; });
}

// A failure is kept until the next calibration, because the component goes on after a failed step.
void SimulatedDevice::startStep(TBarState &bar, int command)
{
    bar.step = calibrationCommandName(command);
    const CalibrationCommand *known = findCalibrationCommand(command);
    bar.target = known ? known->next : std::nullopt;
    ++m_calibrationStep;
    if (command != BeginCalibration)
        return;
    m_calibrationStep = 1;
    ++m_calibrationRun;
    bar.failure.clear();
}

// Returns an empty string if the step was successful.
QString SimulatedDevice::failureOf(const Calibration &calibration) const
{
    const bool isBroken = m_faults.isOn(QStringLiteral("calibration-fails"), QStringLiteral("step"), calibration.step);
    if (!isBroken && !calibration.hasFailed)
        return {};
    const QString failure =
        QStringLiteral("step %1 (%2) failed").arg(calibration.step).arg(calibrationCommandName(calibration.command));
    return calibration.problem.isEmpty() ? failure : failure + QStringLiteral(": ") + calibration.problem;
}

void SimulatedDevice::endCalibration(const Calibration &calibration)
{
    if (m_faults.isOn(QStringLiteral("calibration-hangs")))
        return;
    const QString message = failureOf(calibration);
    if (message.isEmpty())
        sendCalibration(calibration.command, calibrationDone);
    change([&](DeviceState &state) {
        if (calibration.step == m_calibrationStep)
            state.tbar.step.clear();
        if (!message.isEmpty() && calibration.run == m_calibrationRun)
            state.tbar.failure = message;
    });
    if (calibration.result)
        calibration.result(message.isEmpty(), message.toStdString());
}

void SimulatedDevice::resetToFactoryState(const std::function<void(bool, const std::string &)> &result)
{
    m_clock.schedule(resetTime, [work = std::weak_ptr(m_work), result] {
        if (const auto alive = work.lock())
            alive->device.finishReset(result);
    });
}

// What the operator does with the device stays: ports, keys that are down, the position of the T-Bar.
void SimulatedDevice::finishReset(const std::function<void(bool, const std::string &)> &result)
{
    if (m_faults.isOn(QStringLiteral("factory-reset-fails")))
        return result(false, "The settings can't be written.");
    setAllKeyBrightness(0);
    change([this](DeviceState &state) {
        const DeviceState initial;
        std::copy(std::begin(initial.screenBrightness), std::end(initial.screenBrightness), state.screenBrightness);
        state.pattern = initial.pattern;
        state.testType = initial.testType;
        state.machineTestKind = initial.machineTestKind;
        ++m_calibrationRun;
        state.tbar.target.reset();
        state.tbar.failure.clear();
    });
    result(true, {});
}

bool SimulatedDevice::setKeyDown(int halKey, bool down)
{
    const bool isKnown = change([&](DeviceState &state) {
        const auto key = std::find_if(state.keys.begin(), state.keys.end(),
                                      [halKey](const KeyState &each) { return each.halKey == halKey; });
        if (key == state.keys.end())
            return false;
        key->isDown = down;
        return true;
    });
    if (!isKnown || m_faults.isOn(QStringLiteral("key-dead"), QStringLiteral("key"), halKey))
        return isKnown;
    const bool repeats = down && m_faults.isOn(QStringLiteral("key-repeats"), QStringLiteral("key"), halKey);
    for (int event = 0; event < (repeats ? 3 : 1); ++event)
        later(event * repeatDelay, &SimulatedDevice::sendKey, halKey, down);
    return true;
}

void SimulatedDevice::setTBarPosition(double position)
{
    change([position](DeviceState &state) { state.tbar.position = qBound(0.0, position, 1.0); });
}

// Listeners are only called if the state of the port changes.
bool SimulatedDevice::changePort(const QString &name, bool PortState::*field, bool value)
{
    const bool isNet = name.startsWith(QLatin1String("net"));
    bool isKnown = false;
    const bool isChanged = change([&](DeviceState &state) {
        for (PortState &port : isNet ? state.netPorts : state.usbPorts) {
            if (port.name != name)
                continue;
            isKnown = true;
            return std::exchange(port.*field, value) != value;
        }
        return false;
    });
    if (isChanged)
        later(m_linkDelay, isNet ? &SimulatedDevice::sendNet : &SimulatedDevice::sendUsb, 0, 0);
    return isKnown;
}

bool SimulatedDevice::setPlugged(const QString &port, bool plugged)
{
    return changePort(port, &PortState::isPlugged, plugged);
}

bool SimulatedDevice::setBlocked(const QString &port, bool blocked)
{
    return port.startsWith(QLatin1String("usb")) && changePort(port, &PortState::isBlocked, blocked);
}

bool SimulatedDevice::setPortSpeed(const QString &name, double speed)
{
    return change([&](DeviceState &state) {
        const auto port = std::find_if(state.usbPorts.begin(), state.usbPorts.end(),
                                       [&name](const PortState &each) { return each.name == name; });
        if (port == state.usbPorts.end())
            return false;
        port->speed = speed;
        return true;
    });
}

bool SimulatedDevice::setPartPresent(const QString &part, bool present)
{
    if (!boardParts().contains(part))
        return false;
    change([&](DeviceState &state) {
        state.missingParts.removeAll(part);
        if (!present)
            state.missingParts << part;
    });
    return true;
}

void SimulatedDevice::setKeyListener(KeyListener listener)
{
    change([&](DeviceState &) { m_keyListener = std::move(listener); });
}

void SimulatedDevice::setNetListener(LinkListener changed)
{
    change([&](DeviceState &) { m_netListener = std::move(changed); });
}

void SimulatedDevice::setUsbListener(LinkListener changed)
{
    change([&](DeviceState &) { m_usbListener = std::move(changed); });
}

void SimulatedDevice::setCalibrationListener(CalibrationListener listener)
{
    change([&](DeviceState &) { m_calibrationListener = std::move(listener); });
}

std::any SimulatedDevice::netReport() const
{
    return makeNetReport(state().netPorts, m_faults);
}

std::any SimulatedDevice::usbReport() const
{
    return makeUsbReport(state().usbPorts, m_faults);
}

void SimulatedDevice::sendKey(int halKey, int down)
{
    if (const KeyListener listener = change([this](DeviceState &) { return m_keyListener; }))
        listener(halKey, down != 0);
}

void SimulatedDevice::sendNet(int, int)
{
    if (const LinkListener listener = change([this](DeviceState &) { return m_netListener; }))
        listener(netReport());
}

void SimulatedDevice::sendUsb(int, int)
{
    if (const LinkListener listener = change([this](DeviceState &) { return m_usbListener; }))
        listener(usbReport());
}

void SimulatedDevice::sendCalibration(int command, int percent)
{
    if (const CalibrationListener listener = change([this](DeviceState &) { return m_calibrationListener; }))
        listener(command, percent);
}

}
