#include "scenario/wallpace.h"

#include <chrono>
#include <thread>

namespace panelhost {

namespace {

constexpr Instant Frame = 20;

}

// Virtual time stands still between two steps, so no Qt timer could tell when the next one is due.
bool advanceAtWallPace(Timeline &timeline, Instant duration, const std::function<bool()> &done)
{
    auto due = std::chrono::steady_clock::now();
    const Instant end = timeline.now() + duration;
    while (timeline.now() < end) {
        const auto step = qMin(Frame, end - timeline.now());
        due += std::chrono::milliseconds(step);
        std::this_thread::sleep_until(due);
        if (timeline.advanceUntil(step, done))
            return true;
    }
    return false;
}

}
