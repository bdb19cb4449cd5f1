#pragma once

#include "diagnostics/diagnostic.h"

namespace panelhost {

/// Returns the diagnostics about both configuration files in @p directory, in the order of the files.
Diagnostics checkDirectory(const QString &directory);

}
