#pragma once

#include "diagnostics/diagnostic.h"

namespace panelhost {

/// Checks the menu file at @p path. Errors are what the component rejects, warnings what is probably a mistake.
Diagnostics checkMenu(const QString &path);

}
