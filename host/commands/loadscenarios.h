#pragma once

#include "commands/commands.h"
#include "scenario/scenario.h"

namespace panelhost {

/// Loads all scenarios in the arguments of @p line into @p scenarios, before any is played. Prints the errors of all
/// files and returns false if there are any.
bool loadScenarios(const CommandLine &line, QVector<Scenario> *scenarios);

}
