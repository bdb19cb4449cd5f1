#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Returns true if the command opens a window. Call it before the application object is made.
bool needsDisplay(int argc, const char *const *argv);

/// Reads @p arguments, of which the first is the name of the program, and runs the command. Returns the exit status.
int runCommandLine(const QStringList &arguments);

}
