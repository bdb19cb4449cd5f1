#pragma once

#include "operator/operatoraction.h"

namespace panelhost {

/// How a scenario says whether a fault is on: "on" itself is the word for true in older YAML.
QString activeWord();
/// @p action as a scenario writes it: "press: 27", "fault: {active: true, key: 27, name: key-dead}".
QString stepText(const OperatorAction &action);
/// A fault that is on, as the description of a device has it: "{key: 27, name: key-dead}".
QString faultText(const QString &name, QVariantMap arguments);

}
