#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Opens the window on a new session and returns the exit status after it is closed. What is done in the window is
/// recorded as a scenario in the file @p recording, unless that is empty.
int runInWindow(const CommandLine &line, const QString &recording);

}
