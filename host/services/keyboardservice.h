#pragma once

#include "journal/journal.h"
#include "lcd/factorymode/ikeyboardevent.h"

#include <mutex>

namespace panelhost {

class Device;
class Faults;

/// Service "lcdKeyboardEvent" for the keys, screens and T-Bar of a device. The listener is called when a key goes down,
/// with value 1. It is called when a key goes up only if the fault "key-releases" is on.
class KeyboardService final : public LCD::FactoryMode::IKeyboardEvent
{
public:
    KeyboardService(Device &device, Journal &journal, const Faults &faults);

    void setFactoryPanelMode(int mode) override;
    void setKeyLed(const int &halKey, LCD::KeyboardProxy::KeyLedRequest request) override;
    void registerKeyCallback(const LCD::FactoryMode::KeyListener &listener) override;
    void setAllButtonBrightness(int level) override;
    void setScreenBrightness(int screenIndex, int level) override;
    void setKeyLedUpdating(bool updating) override;
    void setLcdTestPattern(int patternType, int patternIndex) override;
    int getTBarType() override;

private:
    void call(const char *operation, const QJsonObject &arguments);
    void onKey(int halKey, bool down);
    void send(int halKey, float value);

    Device &m_device;
    Journal &m_journal;
    const Faults &m_faults;
    std::mutex m_mutex;
    LCD::FactoryMode::KeyListener m_listener;
};

}
