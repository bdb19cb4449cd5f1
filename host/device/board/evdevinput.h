#pragma once

#include "device/board/inputdevice.h"
#include "device/board/udevmonitor.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSet>

#include <functional>
#include <memory>
#include <optional>

struct input_event;
struct libevdev;

namespace panelhost {

/// One input device of the kernel: keys, a knob, a joystick and the axis of a slider. The device is opened when it
/// appears, closed when it disappears, and opened again when it returns.
class EvdevInput final : public EventSource
{
public:
    /// An event that moves the selection on the LCD. Codes are those of <linux/input-event-codes.h>.
    struct Navigation
    {
        unsigned type; ///< EV_KEY, EV_REL or EV_ABS
        unsigned code;
        /// 1 or -1: the direction of a relative axis, or the side to which a stick is pushed. Not used for EV_KEY.
        int direction;
        QString key; ///< such as "up"
    };

    struct Configuration
    {
        InputDeviceSelector device;
        QMap<unsigned, int> keys; ///< hal keys by key code
        QList<Navigation> navigation;
        std::optional<unsigned> axis; ///< code of the absolute axis that is reported as it is
    };

    struct Callbacks
    {
        std::function<void(int halKey, bool down)> key;
        std::function<void(const QString &key)> navigate;
        /// Called when the axis has moved and when the device was opened, with the limits that the driver states.
        std::function<void(int value, int minimum, int maximum)> axis;
        /// Called with a sentence when the device is missing or can't be used as configured, and with an empty one when
        /// everything works again.
        std::function<void(const QString &problem)> status;
    };

    EvdevInput(const Configuration &configuration, Callbacks callbacks);
    ~EvdevInput() override;

    /// Opens the device if it is there; reports the status otherwise.
    void start();
    QList<EventSource *> sources() { return {this, &m_monitor}; }

    bool isOpen() const { return m_device != nullptr; }
    /// While an input device is grabbed, its events go to nobody else. Also applies to a device that appears later.
    void setGrabbed(bool grabbed);

    int fd() const override { return m_fd; }
    void ready() override;

private:
    struct DeviceDeleter
    {
        void operator()(libevdev *device) const;
    };

    void openIfThere();
    void reopen();
    void open(const QString &node);
    void close();
    void deviceChanged(const QString &action, udev_device &device);
    QString grab();
    QString missingCodes() const;
    void setProblem(const QString &problem);
    void reportAxis();
    void closeIfHungUp();

    void handle(const input_event &event);
    void handleKey(unsigned code, bool down);
    void handleRelative(unsigned code, int value);
    void handleAbsolute(unsigned code, int value);
    int zoneOf(unsigned code, int value, int before) const;
    void navigate(unsigned type, unsigned code, int direction);

    const Configuration m_configuration;
    const Callbacks m_callbacks;
    UdevMonitor m_monitor;
    int m_fd = -1;
    QString m_node;
    std::unique_ptr<libevdev, DeviceDeleter> m_device;
    bool m_isGrabbed = false;
    bool m_isSynchronizing = false; // events were lost; libevdev reports what has changed meanwhile
    QSet<int> m_down;               // hal keys
    QHash<unsigned, int> m_zones;   // of the sticks, by axis: -1, 0 or 1
    QString m_problem;
};

}
