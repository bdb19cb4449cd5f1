#pragma once

namespace panelhost {

/// Makes roles, states and actions of controls known to assistive technologies. Later calls have no effect.
void installControlAccessibility();

}
