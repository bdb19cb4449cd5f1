#pragma once

#include "scenario/scenario.h"

#include <optional>

namespace panelhost {

/// The scenario in the file at @p path. Nothing, and every problem of the file in @p errors, if it can't be played.
/// @p base is the device that the file's own description changes.
std::optional<Scenario> loadScenario(const QString &path, const Session::Options &base, QStringList *errors);

}
