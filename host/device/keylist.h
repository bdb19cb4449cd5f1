#pragma once

#include "device/device.h"

namespace panelhost {

/// The keys of the panel, from "factorykeychecklist.xml" in @p directory, in its order and each once. Tolerant: what
/// can be read is taken, up to the first error in the file; a file that can't be opened gives no keys.
QList<KeyState> readKeyList(const QString &directory);

}
