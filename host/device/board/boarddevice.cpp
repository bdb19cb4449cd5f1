#include "device/board/boarddevice.h"

namespace panelhost {

namespace {

BoardOutputs::PartHandler partHandler(const HardwareHandler &handler)
{
    return [handler](const QString &part, bool present) {
        handler({QStringLiteral("part"), {{QStringLiteral("name"), part}, {QStringLiteral("present"), present}}});
    };
}

}

BoardDevice::BoardDevice(const BoardConfiguration &board, const SimulatedDevice::Configuration &configuration,
                         VirtualClock &clock, const Faults &faults, const HardwareHandler &handler)
    : m_model(configuration, clock, faults), m_hasRealTBar(board.isReal(QStringLiteral("tbar"))),
      m_outputs(board, partHandler(handler)), m_inputs(board, handler)
{
}

BoardDevice::~BoardDevice() = default;

bool BoardDevice::start(QString *error)
{
    return m_outputs.start(error) && m_inputs.start(error);
}

// A fault can keep the LED as it was.
void BoardDevice::setKeyLed(int halKey, const KeyLed &led)
{
    m_model.setKeyLed(halKey, led);
    const DeviceState state = m_model.state();
    const KeyState *key = findKey(state, halKey);
    if (key && key->led == led)
        m_outputs.setKeyLed(halKey, led);
}

void BoardDevice::setAllKeyBrightness(int level)
{
    m_model.setAllKeyBrightness(level);
    const DeviceState state = m_model.state();
    for (const KeyState &key : state.keys) {
        if (key.led.brightness == level && key.led.mode == 0)
            m_outputs.setKeyLed(key.halKey, key.led);
    }
}

void BoardDevice::setScreenBrightness(int screen, int level)
{
    m_model.setScreenBrightness(screen, level);
    m_outputs.setScreenBrightness(screen, level);
}

void BoardDevice::setFactoryMode(bool active)
{
    m_inputs.setGrabbed(active);
}

void BoardDevice::calibrate(int command, const std::function<void(bool, const std::string &)> &result)
{
    m_model.calibrate(command, result);
    if (m_hasRealTBar)
        m_inputs.calibrate(command);
}

bool BoardDevice::finishCalibration(int command, bool ok, const QString &message)
{
    return m_model.finishCalibration(command, ok, message);
}

}
