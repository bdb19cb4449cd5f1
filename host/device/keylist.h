#pragma once

#include "device/device.h"

namespace panelhost {

/// Returns the keys of the panel from "factorykeychecklist.xml" in @p directory, in the order of the file, each once.
/// Reads up to the first error in the file. Returns no keys if the file can't be opened.
QList<KeyState> readKeyList(const QString &directory);

}
