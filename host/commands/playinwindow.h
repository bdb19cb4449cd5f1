#pragma once

#include "commands/windowrequest.h"

namespace panelhost {

/// Plays @p scenario in the window and shows the result. Returns the exit status when the window is closed or the user
/// asks for another session, which is then in @p next.
int playInWindow(const Scenario &scenario, WindowRequest *next);

}
