#pragma once

#include "operator/operatoraction.h"

#include <QtCore/QMap>

namespace panelhost {

/// The names of the keys of a panel by hal key. Keys without a name are written as hal keys.
using KeyNames = QMap<int, QString>;

/// Returns "active", the key that says whether a fault is on. The key isn't "on", because this means true in YAML 1.1.
QString activeWord();
/// Returns @p action as a step, such as "press: CUT" or "fault: {active: true, key: CUT, name: key-dead}".
QString stepText(const OperatorAction &action, const KeyNames &keys = {});
/// Returns a fault in the description of a device, such as "{key: CUT, name: key-dead}".
QString faultText(const QString &name, QVariantMap arguments, const KeyNames &keys = {});

}
