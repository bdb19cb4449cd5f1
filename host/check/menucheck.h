#pragma once

#include "diagnostics/diagnostic.h"

namespace panelhost {

/// What the component refuses in the menu file at @p path, and what it accepts but nobody means.
Diagnostics checkMenu(const QString &path);

}
