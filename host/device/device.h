#pragma once

#include "device/tbarstate.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <any>
#include <functional>
#include <string>

namespace panelhost {

/// The state of a key's LED. `color` and `mode` are as the component sets them; mode 1 blinks.
struct KeyLed
{
    int color = 2;
    int mode = 0;
    int brightness = 0; ///< percent
    int period = 800;   ///< of one blink, in milliseconds
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
    double speed = 0;       ///< of what is plugged in, in Mbit/s; USB only; 0 if it isn't known
};

struct TestPattern
{
    int type = 0;
    int index = 0;
    int level = 0;
};

/// The state of a device as a value. The panel shows it, and expectations of scenarios check it.
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
    QStringList missingParts; ///< parts of a board that have disappeared, such as "keys"
};

/// The interface of a device for the services and the panel. Operations can be called on any thread. Listeners are
/// called on the device's thread.
class Device
{
public:
    virtual ~Device() = default;

    virtual DeviceState state() const = 0;

    // operations of the component
    virtual void setKeyLed(int halKey, const KeyLed &led) = 0;
    virtual void setAllKeyBrightness(int level) = 0;
    virtual void setScreenBrightness(int screen, int level) = 0;
    virtual void setTestPattern(int type, int index) = 0;
    virtual void setPatternLevel(int level) = 0;
    virtual void setPanelMode(int mode) = 0;
    virtual void setTestType(int type) = 0;
    virtual void setMachineTestKind(int kind) = 0;
    /// Called when the host enters or exits factory mode. A board grabs its input devices only while factory mode is
    /// active.
    virtual void setFactoryMode(bool active) = 0;
    /// Runs the calibration step @p command. @p result is called on the device's thread when the step is done or has
    /// failed. The T-Bar must be in the position that the step needs when this is called.
    virtual void calibrate(int command, const std::function<void(bool ok, const std::string &message)> &result) = 0;
    /// Starts a factory reset. @p result is called on the device's thread when it is done or has failed. On a device
    /// without a factory reset, @p result is called with a failure at once.
    virtual void resetToFactoryState(const std::function<void(bool ok, const std::string &message)> &result);

    // operations of an operator
    virtual bool setKeyDown(int halKey, bool down) = 0;
    virtual void setTBarPosition(double position) = 0;
    virtual bool setPlugged(const QString &port, bool plugged) = 0;
    virtual bool setBlocked(const QString &port, bool blocked) = 0;
    /// Sets the speed of what is plugged into a USB port, in Mbit/s; 0 if it isn't known. It is only shown.
    virtual bool setPortSpeed(const QString &port, double speed) = 0;
    /// Ends the calibration step @p command, which waits for the result of a real T-Bar. @p message is the reason if it
    /// has failed. Returns false if no such step is running.
    virtual bool finishCalibration(int command, bool ok, const QString &message) = 0;
    /// Sets whether a part of the board, such as "keys", is there. A part may disappear and come back. Returns false if
    /// there is no such part.
    virtual bool setPartPresent(const QString &part, bool present) = 0;

    // listeners, all called on the device's thread
    using KeyListener = std::function<void(int halKey, bool down)>;
    using LinkListener = std::function<void(const std::any &payload)>;
    using CalibrationListener = std::function<void(int command, int value)>;
    virtual void setKeyListener(KeyListener listener) = 0;
    virtual void setNetListener(LinkListener changed) = 0;
    virtual void setUsbListener(LinkListener changed) = 0;
    virtual void setCalibrationListener(CalibrationListener listener) = 0;
    /// Returns the payload of a report on the current state of the ports, faults included.
    virtual std::any netReport() const = 0;
    virtual std::any usbReport() const = 0;
};

/// Returns the names of the parts that a board can have, such as "keys".
QStringList boardParts();

/// Return the key or port of @p state; nullptr if there is none. Valid as long as @p state.
const KeyState *findKey(const DeviceState &state, int halKey);
const PortState *findPort(const DeviceState &state, const QString &name);

}
