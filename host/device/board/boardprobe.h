#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace panelhost {

/// Something of this machine that a board profile can name.
struct ProbedDevice
{
    QString name;         ///< as the profile names it
    QString details;      ///< such as "0 to 255, can be written"
    bool isUsable = true; ///< by this user
};

/// What this machine offers to a board profile.
struct ProbedBoard
{
    QVector<ProbedDevice> inputs; ///< evdev devices by name
    QVector<ProbedDevice> leds;
    QVector<ProbedDevice> backlights;
    QVector<ProbedDevice> outputs; ///< connected displays
    QVector<ProbedDevice> iio;     ///< channels, as "iio:device0 voltage1"
    QVector<ProbedDevice> net;     ///< interfaces of Ethernet
    QVector<ProbedDevice> usb;     ///< ports of hubs
};

/// Looks through /sys. Changes nothing.
ProbedBoard probeBoard();

/// Returns a description for a reader, a line for each device.
QString probeText(const ProbedBoard &board);
/// Returns a commented board profile to start from. @p keys are the names of the key list. It can be read as it is:
/// parts that this machine doesn't have are simulated.
QString probeProfile(const ProbedBoard &board, const QStringList &keys);

}
