#pragma once

#include "check/finding.h"

namespace panelhost {

/// What the component refuses in the key check list at @p path, and what it accepts but nobody means.
Findings checkKeyList(const QString &path);

}
