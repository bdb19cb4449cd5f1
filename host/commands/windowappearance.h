#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Sets the language of the windows of this process, which is that of --language or the one that was used last, and
/// their theme. A picture doesn't depend on what was used last, nor on the computer. Call it before a window is made.
void applyWindowAppearance(const CommandLine &line);

}
