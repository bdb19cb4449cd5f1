#pragma once

#include "check/finding.h"

namespace panelhost {

/// What the component refuses in the menu file at @p path, and what it accepts but nobody means.
Findings checkMenu(const QString &path);

}
