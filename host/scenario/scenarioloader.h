#pragma once

#include "scenario/scenario.h"

#include <optional>

namespace panelhost {

/// Returns the scenario in the file at @p path. Returns nothing and sets @p errors to all errors in the file if it
/// can't be played. @p base has the options of the device that the file doesn't set.
std::optional<Scenario> loadScenario(const QString &path, const Session::Options &base, QStringList *errors);

}
