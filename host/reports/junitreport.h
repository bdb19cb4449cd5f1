#pragma once

#include "playing/scenarioresult.h"

namespace panelhost {

/// Returns a report on @p results as JUnit XML, which continuous integration systems read.
QByteArray junitReport(const ScenarioResults &results);

}
