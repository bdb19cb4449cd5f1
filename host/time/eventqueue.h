#pragma once

#include "time/virtualclock.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <utility>

namespace panelhost {

/// What is due and when: timers of the GUI thread by their identifier, and work of the device thread. One order for
/// both, by instant and then by the order in which they were put in. Any thread.
class EventQueue
{
public:
    struct Item
    {
        int timerId = 0; ///< 0: this is work of the device thread
        std::function<void()> work;
    };

    void addTimer(int timerId, Milliseconds due);
    void removeTimer(int timerId);
    /// When the timer fires, if it is waiting.
    std::optional<Milliseconds> dueTime(int timerId) const;
    void addWork(Milliseconds due, std::function<void()> work);
    void dropWork();

    std::optional<Milliseconds> nextDue() const;
    /// Takes the first item out if it is due by @p now.
    std::optional<Item> take(Milliseconds now);
    /// Moves all items to an earlier instant: the clock has been set back by @p span.
    void shiftBack(Milliseconds span);

private:
    using Position = std::pair<Milliseconds, quint64>;

    mutable std::mutex m_mutex;
    quint64 m_sequence = 0;
    std::map<Position, Item> m_items;
    std::unordered_map<int, Position> m_timers;
};

}
