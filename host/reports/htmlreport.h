#pragma once

#include "playing/scenarioresult.h"

namespace panelhost {

/// Returns a report on @p results as one HTML page that needs no other file and has no script.
QByteArray htmlReport(const ScenarioResults &results);

}
