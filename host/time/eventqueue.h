#pragma once

#include "time/virtualclock.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <utility>

namespace panelhost {

/// The timers of the GUI thread and the work of the device thread, ordered by due time and then by the order in which
/// they were added. Thread-safe.
class EventQueue
{
public:
    struct Item
    {
        int timerId = 0; ///< 0 for work of the device thread
        std::function<void()> work;
    };

    void addTimer(int timerId, Milliseconds due);
    void removeTimer(int timerId);
    /// Returns when the timer fires; nothing if it isn't active.
    std::optional<Milliseconds> dueTime(int timerId) const;
    void addWork(Milliseconds due, std::function<void()> work);
    void dropWork();

    std::optional<Milliseconds> nextDue() const;
    /// Removes and returns the first item if it is due at @p now.
    std::optional<Item> take(Milliseconds now);
    /// Makes all items due earlier by @p span, because the clock was set back.
    void shiftBack(Milliseconds span);

private:
    using Position = std::pair<Milliseconds, quint64>;

    mutable std::mutex m_mutex;
    quint64 m_sequence = 0;
    std::map<Position, Item> m_items;
    std::unordered_map<int, Position> m_timers;
};

}
