#pragma once

#include "diagnostics/diagnostic.h"

namespace panelhost {

/// Checks the key check list at @p path. Errors are what the component rejects, warnings what is probably a mistake.
Diagnostics checkKeyList(const QString &path);

}
