#pragma once

#include "time/virtualclock.h"

namespace panelhost {

/// Like VirtualClock::advanceUntil(), but not faster than real time, for `play --realtime`. Blocks the GUI thread.
bool waitInRealTime(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done);

}
