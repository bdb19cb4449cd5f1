#pragma once

#include "device/board/boardconfiguration.h"
#include "device/board/eventloop.h"
#include "device/board/hardwareevent.h"

#include <QtCore/QMap>

#include <functional>
#include <memory>
#include <vector>

namespace panelhost {

/// The keys, knob, T-Bar and ports of a board. Everything that they report is a hardware event. They run on a thread of
/// their own, and the handler is called on that thread.
class BoardInputs
{
public:
    BoardInputs(const BoardConfiguration &board, HardwareHandler handler);
    ~BoardInputs();

    /// Starts all parts. Returns false and sets @p error to a sentence for each of them that isn't there.
    bool start(QString *error);

    // Return immediately. Any thread.

    /// Takes the input devices for this process, or releases them.
    void setGrabbed(bool grabbed);
    /// Begins the calibration step @p command. Its result is an event.
    void calibrate(int command);

private:
    // The parts of the profile that use one input device.
    struct InputDevice
    {
        EvdevInput::Configuration configuration;
        std::vector<InputConfiguration> users;
        std::unique_ptr<EvdevInput> input;
    };

    // On the loop's thread.
    void createParts();
    void createInputDevices();
    void createTBar();
    void createNet();
    void createUsb();
    void startParts();
    void destroyParts();
    void addSources(const QList<EventSource *> &sources);
    void deviceStatus(const InputDevice &device, const QString &problem);
    /// A part is present as long as nothing that the profile lists for it has a problem.
    void setProblem(const QString &part, const QString &where, const QString &problem);
    void usbChanged(int port, const UsbPorts::State &state);
    void send(const char *action, const QVariantMap &arguments);

    const BoardConfiguration m_board;
    const HardwareHandler m_handler;
    QMap<QString, QMap<QString, QString>> m_problems; // sentences by part and place in the profile
    bool m_isStarted = false;
    QList<EventSource *> m_sources;
    std::vector<InputDevice> m_devices;
    std::unique_ptr<SliderInput> m_tbar;
    std::unique_ptr<NetLinks> m_net;
    std::unique_ptr<UsbPorts> m_usb;
    std::vector<UsbPorts::State> m_usbStates;
    EventLoop m_loop;
};

}
