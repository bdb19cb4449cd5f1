#include "time/realtimewait.h"

#include <chrono>
#include <thread>

namespace panelhost {

namespace {

constexpr Milliseconds Frame = 20;

}

// Qt timers can't be used here: they run by the virtual clock, which stands still between two steps.
bool waitInRealTime(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done)
{
    auto due = std::chrono::steady_clock::now();
    const Milliseconds end = clock.now() + duration;
    while (clock.now() < end) {
        const auto step = qMin(Frame, end - clock.now());
        due += std::chrono::milliseconds(step);
        std::this_thread::sleep_until(due);
        if (clock.advanceUntil(step, done))
            return true;
    }
    return false;
}

}
