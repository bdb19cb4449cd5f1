#pragma once

#include "commands/windowrequest.h"

namespace panelhost {

class RunRecords;

/// Plays @p scenario in the window and shows the result. Its session is one of @p records, with what the user does
/// after the scenario. Returns the exit status when the window is closed or the user asks for another session, which is
/// then in @p next.
int playInWindow(const Scenario &scenario, RunRecords &records, WindowRequest *next);

}
