#pragma once

#include "operator/action.h"

namespace panelhost {

/// @p action as a scenario writes it: "press: 27", "fault: {key: 27, name: key-dead, on: true}".
QString stepText(const Action &action);
/// A fault that is on, as the description of a device has it: "{key: 27, name: key-dead}".
QString faultText(const QString &name, QVariantMap arguments);

}
