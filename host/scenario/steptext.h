#pragma once

#include "operator/operatoraction.h"

namespace panelhost {

/// Returns "active", the key that says whether a fault is on. The key isn't "on", because this means true in YAML 1.1.
QString activeWord();
/// Returns @p action as a step, such as "press: 27" or "fault: {active: true, key: 27, name: key-dead}".
QString stepText(const OperatorAction &action);
/// Returns a fault in the description of a device, such as "{key: 27, name: key-dead}".
QString faultText(const QString &name, QVariantMap arguments);

}
