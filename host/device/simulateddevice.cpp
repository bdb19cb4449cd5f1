#include "device/simulateddevice.h"

#include "device/faults.h"
#include "device/reports.h"
#include "time/timeline.h"

#include <algorithm>

namespace panelhost {

namespace {

// Virtual milliseconds that things take.
constexpr int linkDelay = 20;          // from the plug to the changed link
constexpr int repeatDelay = 40;        // between the events of a key that repeats
constexpr int calibrationQuarter = 75; // four of these make one step of the calibration

// What the commands of a calibration do.
struct CalibrationCommand
{
    int command;
    const char *step;
};

constexpr CalibrationCommand calibrationCommands[] = {
    {0, "bottom"},
    {1, "top"},
    {2, "begin"},
    {4, "end"},
};

constexpr int beginCommand = 2;

QString calibrationStepName(int command)
{
    for (const CalibrationCommand &known : calibrationCommands) {
        if (known.command == command)
            return QString::fromLatin1(known.step);
    }
    return QStringLiteral("command %1").arg(command);
}

QList<PortState> makePorts(const QString &prefix, int count)
{
    QList<PortState> ports;
    for (int number = 0; number < count; ++number)
        ports << PortState{prefix + QString::number(number + 1), number, false, false};
    return ports;
}

}

// What scheduled work holds of the device: nothing once that has gone.
class SimulatedDevice::Work
{
public:
    explicit Work(SimulatedDevice &theDevice) : device(theDevice) {}
    SimulatedDevice &device;
};

SimulatedDevice::SimulatedDevice(const Shape &shape, Timeline &timeline, const Faults &faults)
    : m_timeline(timeline), m_faults(faults), m_work(std::make_shared<Work>(*this))
{
    m_state.keys = shape.keys;
    m_state.tbarType = shape.tbarType;
    m_state.netPorts = makePorts(QStringLiteral("net"), shape.netPorts);
    m_state.usbPorts = makePorts(QStringLiteral("usb"), shape.usbPorts);
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
    m_timeline.schedule(delay, [work = std::weak_ptr(m_work), event, first, second] {
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
    change([mode](DeviceState &state) { state.panelMode = mode; });
}

void SimulatedDevice::setTestType(int type)
{
    change([type](DeviceState &state) { state.testType = type; });
}

void SimulatedDevice::setMachineTestKind(int kind)
{
    change([kind](DeviceState &state) { state.machineTestKind = kind; });
}

void SimulatedDevice::calibrate(int command, const std::function<void(bool, const std::string &)> &result)
{
    const int step = change([&](DeviceState &state) {
        state.calibrationStep = calibrationStepName(command);
        return m_calibrationStep = command == beginCommand ? 1 : m_calibrationStep + 1;
    });
    for (int quarter = 1; quarter <= 4; ++quarter)
        later(quarter * calibrationQuarter, &SimulatedDevice::sendCalibration, command, quarter * 25);
    m_timeline.schedule(4 * calibrationQuarter, [work = std::weak_ptr(m_work), command, step, result] {
        if (const auto alive = work.lock())
            alive->device.finishCalibration(command, step, result);
    });
}

void SimulatedDevice::finishCalibration(int command, int step,
                                        const std::function<void(bool, const std::string &)> &result)
{
    if (m_faults.isOn(QStringLiteral("calibration-hangs")))
        return;
    change([step, this](DeviceState &state) {
        if (step == m_calibrationStep)
            state.calibrationStep.clear();
    });
    const bool fails = m_faults.isOn(QStringLiteral("calibration-fails"), QStringLiteral("step"), step);
    const QString message =
        fails ? QStringLiteral("step %1 (%2) failed").arg(step).arg(calibrationStepName(command)) : QString();
    if (result)
        result(!fails, message.toStdString());
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
    change([position](DeviceState &state) { state.tbarPosition = qBound(0.0, position, 1.0); });
}

// Nothing happens, and nobody hears of it, when the port already is as asked.
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
        later(linkDelay, isNet ? &SimulatedDevice::sendNet : &SimulatedDevice::sendUsb, 0, 0);
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
