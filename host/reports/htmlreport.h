#pragma once

#include "playing/scenarioresult.h"

namespace panelhost {

/// Returns a report on @p results as one HTML page that needs no other file. Without its script the page can be read,
/// but not searched.
QByteArray htmlReport(const ScenarioResults &results);

}
