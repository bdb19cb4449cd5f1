#pragma once

#include "playing/result.h"

namespace panelhost {

/// One page that tells what was played, with everything in it: no file beside it, no script.
QByteArray htmlReport(const ScenarioResults &results);

}
