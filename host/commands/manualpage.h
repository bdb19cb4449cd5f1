#pragma once

#include "commands/commands.h"

namespace panelhost {

/// Returns the manual page of the program, in troff.
QString programManualPage();

/// Returns the manual page of @p command, such as panelhost-play(1), in troff.
QString commandManualPage(const Command &command);

}
