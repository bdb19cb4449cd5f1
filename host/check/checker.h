#pragma once

#include "check/finding.h"

namespace panelhost {

/// The findings about both configuration files in @p directory, in the order of the files.
Findings checkDirectory(const QString &directory);

}
