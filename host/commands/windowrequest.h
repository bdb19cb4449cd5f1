#pragma once

#include "scenario/scenario.h"

#include <optional>

namespace panelhost {

class PanelWindow;

/// What the user wants to do after the session of the window. If nothing is set, the program ends with the session.
struct WindowRequest
{
    Session::Options base; ///< options of the device that a scenario doesn't set
    bool isNewSession = false;
    std::optional<Scenario> scenario; ///< to play in a session of its own
    QString unit;                     ///< that is tested, also by a scenario that doesn't name a unit of its own
    QString problem;                  ///< why that session couldn't be opened, to show in the next one

    bool isSet() const { return isNewSession || scenario; }
};

/// Lets the user open scenarios in @p window. Sets @p request and ends the event loop when the user asks for another
/// session. @p request must outlive the window.
void acceptRequests(PanelWindow &window, WindowRequest *request);

}
