#pragma once

#include "time/virtualclock.h"

namespace panelhost {

/// Does the same as VirtualClock::advanceUntil(), but not faster than the wall clock, for a user who watches.
bool waitInRealTime(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done);

}
