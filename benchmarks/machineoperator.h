#pragma once

#include "factorymodewidget.h"
#include "quiethost.h"
#include "virtualtime.h"

/// The menu with the key list, of which the machine test asks.
class Menu : public LCD::FactoryModeImpl::FactoryModeWidget
{
public:
    explicit Menu(QuietHost &host) : FactoryModeWidget(nullptr)
    {
        host.services["lcdFactoryModeWidget"] = static_cast<FactoryModeWidget *>(this);
        setFactoryModeData(QStringLiteral("menuConfigPath"), QStringLiteral(LCD_SOURCE_DIR "/share"));
    }
};

using Keys = QList<QPair<int, QString>>;

template <class PressRight>
void pressRightTimes(int times, const PressRight &right)
{
    for (int i = 0; i < times; ++i)
        right();
}

/// Passes the first five phases of a run, and starts the test of the net ports: presses the right button and the keys.
template <class PressRight>
void passUpToNetPorts(const QuietHost &host, const Keys &keys, const PressRight &right)
{
    constexpr int LevelTestDuration = 20000; // ms
    VirtualTime::advance(LevelTestDuration);
    pressRightTimes(1, right);
    pressRightTimes(13, right); // the test patterns, and the verdict
    VirtualTime::advance(LevelTestDuration);
    pressRightTimes(1, right);
    for (const auto &key : keys)
        host.keyboard.press(key.first);
    pressRightTimes(1, right);
    pressRightTimes(8, right); // the T-Bar's steps, and the verdict
    pressRightTimes(1, right);
}

/// Passes a whole run: plugs the ports, too.
template <class PressRight>
void passRun(const QuietHost &host, const Keys &keys, const PressRight &right)
{
    passUpToNetPorts(host, keys, right);
    host.network.changed(netReport(2));
    pressRightTimes(1, right);
    host.usb.changed(usbReport(2));
    pressRightTimes(4, right);
}
