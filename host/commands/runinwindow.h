#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Opens the window on a new session and stays until it is closed. @p recording is the file that what is done in it
/// is written to as a scenario; empty: none. The exit status.
int runInWindow(const CommandLine &line, const QString &recording);

}
