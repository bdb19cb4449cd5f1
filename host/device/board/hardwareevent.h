#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <functional>

namespace panelhost {

/// Something that the hardware of a board has reported, as the name of an operator action, such as "hold", and its
/// arguments.
struct HardwareEvent
{
    QString action;
    QVariantMap arguments;
};

/// Called on the threads of a board.
using HardwareHandler = std::function<void(const HardwareEvent &event)>;

}
