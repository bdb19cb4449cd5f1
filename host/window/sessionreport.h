#pragma once

#include "playing/scenarioresult.h"

namespace panelhost {

class Session;

/// Returns what was done in @p session so far, for a report: the actions as steps, the pages that the LCD showed, the
/// journal, and a picture of the LCD as it is now.
ScenarioResult sessionResult(Session &session);

}
