#include "time/eventqueue.h"

namespace panelhost {

void EventQueue::addTimer(int timerId, Milliseconds due)
{
    const std::lock_guard lock(m_mutex);
    const Position position(due, m_sequence++);
    m_timers[timerId] = position;
    m_items[position].timerId = timerId;
}

void EventQueue::removeTimer(int timerId)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_timers.find(timerId);
    if (found == m_timers.end())
        return;
    m_items.erase(found->second);
    m_timers.erase(found);
}

std::optional<Milliseconds> EventQueue::dueTime(int timerId) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_timers.find(timerId);
    return found == m_timers.end() ? std::nullopt : std::make_optional(found->second.first);
}

void EventQueue::addWork(Milliseconds due, std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_items[Position(due, m_sequence++)].work = std::move(work);
}

void EventQueue::dropWork()
{
    std::map<Position, Item> dropped; // ends outside the lock: work may hold objects that call back
    const std::lock_guard lock(m_mutex);
    for (auto item = m_items.begin(); item != m_items.end();) {
        const auto next = std::next(item);
        if (item->second.timerId == 0)
            dropped.insert(m_items.extract(item));
        item = next;
    }
}

std::optional<Milliseconds> EventQueue::nextDue() const
{
    const std::lock_guard lock(m_mutex);
    return m_items.empty() ? std::nullopt : std::make_optional(m_items.begin()->first.first);
}

std::optional<EventQueue::Item> EventQueue::take(Milliseconds now)
{
    const std::lock_guard lock(m_mutex);
    if (m_items.empty() || m_items.begin()->first.first > now)
        return std::nullopt;
    Item item = std::move(m_items.begin()->second);
    m_items.erase(m_items.begin());
    m_timers.erase(item.timerId);
    return item;
}

void EventQueue::shiftBack(Milliseconds span)
{
    const std::lock_guard lock(m_mutex);
    std::map<Position, Item> moved;
    for (auto &[position, item] : m_items)
        moved.emplace_hint(moved.end(), Position(position.first - span, position.second), std::move(item));
    for (auto &[timerId, position] : m_timers)
        position.first -= span;
    m_items = std::move(moved);
}

}
