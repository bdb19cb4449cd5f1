#pragma once

#include "playing/result.h"

namespace panelhost {

/// The results in the XML form that continuous integration systems read.
QByteArray junitReport(const ScenarioResults &results);

}
