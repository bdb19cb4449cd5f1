#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Whether the command that was typed opens a window; asked before there is an application.
bool needsDisplay(int argc, const char *const *argv);

/// Reads @p arguments, the program's name first, and runs the command. The exit status.
int runCommandLine(const QStringList &arguments);

}
