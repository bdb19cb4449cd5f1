#include "services/keyboardservice.h"

#include "device/device.h"
#include "device/faults.h"

namespace panelhost {

using namespace LCD::KeyboardProxy;

KeyboardService::KeyboardService(Device &device, Journal &journal, const Faults &faults)
    : m_device(device), m_journal(journal), m_faults(faults)
{
    device.setKeyListener([this](int halKey, bool down) { onKey(halKey, down); });
}

void KeyboardService::call(const char *operation, const QJsonObject &arguments)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("lcdKeyboardEvent.") + QLatin1String(operation), arguments);
}

void KeyboardService::setFactoryPanelMode(int mode)
{
    call("setFactoryPanelMode", {{QStringLiteral("mode"), mode}});
    m_device.setPanelMode(mode);
}

void KeyboardService::setKeyLed(const int &halKey, KeyLedRequest request)
{
    call("setKeyLed",
         {{QStringLiteral("halKey"), halKey},
          {QStringLiteral("color"), request.color},
          {QStringLiteral("mode"), request.mode},
          {QStringLiteral("brightness"), request.brightness},
          {QStringLiteral("period"), request.period}});
    m_device.setKeyLed(halKey, {request.color, request.mode, request.brightness, request.period});
}

void KeyboardService::registerKeyCallback(const LCD::FactoryMode::KeyListener &listener)
{
    call("registerKeyCallback",
         {{QStringLiteral("listener"), listener ? QStringLiteral("set") : QStringLiteral("empty")}});
    if (m_faults.isOn(QStringLiteral("event-while-replacing"))) {
        const QList<KeyState> keys = m_device.state().keys;
        VirtualClock::instance().runOnDevice([&] { send(keys.isEmpty() ? 0 : keys.first().halKey, 1.0F); });
    }
    const std::lock_guard lock(m_mutex);
    m_listener = listener;
}

void KeyboardService::setAllButtonBrightness(int level)
{
    call("setAllButtonBrightness", {{QStringLiteral("level"), level}});
    m_device.setAllKeyBrightness(level);
}

void KeyboardService::setScreenBrightness(int screenIndex, int level)
{
    call("setScreenBrightness", {{QStringLiteral("screenIndex"), screenIndex}, {QStringLiteral("level"), level}});
    m_device.setScreenBrightness(screenIndex, level);
}

void KeyboardService::setKeyLedUpdating(bool updating)
{
    call("setKeyLedUpdating", {{QStringLiteral("updating"), updating}});
}

void KeyboardService::setLcdTestPattern(int patternType, int patternIndex)
{
    call("setLcdTestPattern",
         {{QStringLiteral("patternType"), patternType}, {QStringLiteral("patternIndex"), patternIndex}});
    m_device.setTestPattern(patternType, patternIndex);
}

int KeyboardService::getTBarType()
{
    const int type = static_cast<int>(m_device.state().tbar.type);
    call("getTBarType", {{QStringLiteral("result"), type}});
    return type;
}

void KeyboardService::onKey(int halKey, bool down)
{
    if (down || m_faults.isOn(QStringLiteral("key-releases")))
        send(halKey, down ? 1.0F : 0.0F);
}

// The listener is called outside the lock: it may replace itself.
void KeyboardService::send(int halKey, float value)
{
    LCD::FactoryMode::KeyListener listener;
    {
        const std::lock_guard lock(m_mutex);
        listener = m_listener;
    }
    if (!listener)
        return;
    m_journal.add(Journal::Kind::Event, QStringLiteral("lcdKeyboardEvent.key"),
                  {{QStringLiteral("halKey"), halKey}, {QStringLiteral("value"), static_cast<double>(value)}});
    KeyButtonTBar tbar;
    tbar.position = static_cast<float>(m_device.state().tbar.position);
    listener(static_cast<std::uint32_t>(halKey), value, 0, KeyButtonJoystick(), KeyTouchScreen(), tbar);
}

}
