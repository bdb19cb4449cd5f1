#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Returns what the command needs. Call it before the application object is made.
Platform neededPlatform(int argc, const char *const *argv);

/// Reads @p arguments, of which the first is the name of the program, and runs the command. Returns the exit status.
int runCommandLine(const QStringList &arguments);

}
