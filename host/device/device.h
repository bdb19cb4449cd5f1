#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <any>
#include <functional>
#include <optional>
#include <string>

namespace panelhost {

/// What the LED of one key shows. `color` and `mode` as the component sets them (mode 1 blinks).
struct KeyLed
{
    int color = 2;
    int mode = 0;
    int brightness = 0; ///< percent
    int period = 800;   ///< milliseconds of one blink
    bool isBlinking() const { return mode == 1 && brightness > 0; }
    bool operator==(const KeyLed &o) const
    {
        return color == o.color && mode == o.mode && brightness == o.brightness && period == o.period;
    }
};

struct KeyState
{
    int halKey = 0;
    QString name;
    KeyLed led;
    bool isDown = false;
};

struct PortState
{
    QString name;   ///< "net1", "usb2"
    int number = 0; ///< port number or identifier in reports
    bool isPlugged = false;
    bool isBlocked = false; ///< USB only
};

enum class TBarType {
    Fader = 0,
    Slider = 1
};

/// An end of the T-Bar's travel. Both kinds of bar have the same two.
enum class TBarEnd {
    Bottom,
    Top
};

/// "bottom" or "top".
QString tbarEndName(TBarEnd end);

/// The T-Bar and its calibration.
struct TBarState
{
    static constexpr double DefaultTolerance = 0.05;

    TBarType type = TBarType::Slider;
    double position = 0;                 ///< from 0 (bottom) to 1 (top)
    double tolerance = DefaultTolerance; ///< how far from an end the bar still counts as there, in units of position
    QString step;                        ///< the calibration step under way, empty when there is none
    std::optional<TBarEnd> target;       ///< where the next calibration step needs the bar
    QString failure;                     ///< message of the last step that failed since the calibration began

    bool isAt(TBarEnd end) const;
    bool operator==(const TBarState &o) const
    {
        return type == o.type && position == o.position && tolerance == o.tolerance && step == o.step
            && target == o.target && failure == o.failure;
    }
};

struct TestPattern
{
    int type = 0;
    int index = 0;
    int level = 0;
};

/// A device's state as a value: what the panel draws and what scenarios ask for.
struct DeviceState
{
    QList<KeyState> keys;
    int screenBrightness[3] = {100, 100, 100};
    TestPattern pattern;
    TBarState tbar;
    QList<PortState> netPorts;
    QList<PortState> usbPorts;
    int panelMode = 0;
    int testType = -1;
    int machineTestKind = -1;
};

/// What a device is to the services and to the panel. The simulated one stands behind it now; one on the real
/// interfaces of a board fits in beside it. Operations may be called on any thread. Events come on the device's thread.
class Device
{
public:
    virtual ~Device() = default;

    virtual DeviceState state() const = 0;

    // what the component asks for
    virtual void setKeyLed(int halKey, const KeyLed &led) = 0;
    virtual void setAllKeyBrightness(int level) = 0;
    virtual void setScreenBrightness(int screen, int level) = 0;
    virtual void setTestPattern(int type, int index) = 0;
    virtual void setPatternLevel(int level) = 0;
    virtual void setPanelMode(int mode) = 0;
    virtual void setTestType(int type) = 0;
    virtual void setMachineTestKind(int kind) = 0;
    /// Answers on the device's thread once the step is done, or has failed: the T-Bar must be where the step needs it
    /// when the command comes.
    virtual void calibrate(int command, const std::function<void(bool ok, const std::string &message)> &result) = 0;

    // what an operator does
    virtual bool setKeyDown(int halKey, bool down) = 0;
    virtual void setTBarPosition(double position) = 0;
    virtual bool setPlugged(const QString &port, bool plugged) = 0;
    virtual bool setBlocked(const QString &port, bool blocked) = 0;

    // events, all on the device's thread
    using KeyListener = std::function<void(int halKey, bool down)>;
    using LinkListener = std::function<void(const std::any &payload)>;
    using CalibrationListener = std::function<void(int command, int value)>;
    virtual void setKeyListener(KeyListener listener) = 0;
    virtual void setNetListener(LinkListener changed) = 0;
    virtual void setUsbListener(LinkListener changed) = 0;
    virtual void setCalibrationListener(CalibrationListener listener) = 0;
    /// The records of a report as the ports stand now, faults included.
    virtual std::any netReport() const = 0;
    virtual std::any usbReport() const = 0;
};

/// The key or port of @p state, nullptr when it has none such. Valid as long as @p state.
const KeyState *findKey(const DeviceState &state, int halKey);
const PortState *findPort(const DeviceState &state, const QString &name);

}
