#pragma once

#include "diagnostics/diagnostic.h"

namespace panelhost {

/// What the component refuses in the key check list at @p path, and what it accepts but nobody means.
Diagnostics checkKeyList(const QString &path);

}
