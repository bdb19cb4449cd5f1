#pragma once

#include "time/virtualclock.h"

namespace panelhost {

/// VirtualClock::advanceUntil() in small steps, none of them ahead of the wall clock, for an operator who watches.
bool advanceInRealTime(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done);

}
