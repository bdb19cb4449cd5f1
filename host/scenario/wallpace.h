#pragma once

#include "time/timeline.h"

namespace panelhost {

/// Timeline::advanceUntil() in small steps, none of them ahead of the wall clock, for an operator who watches.
bool advanceAtWallPace(Timeline &timeline, Instant duration, const std::function<bool()> &done);

}
