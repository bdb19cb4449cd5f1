#include "time/agenda.h"

namespace panelhost {

void Agenda::addTimer(int timerId, Instant due)
{
    const std::lock_guard lock(m_mutex);
    const Place place(due, m_sequence++);
    m_timers[timerId] = place;
    m_items[place].timerId = timerId;
}

void Agenda::removeTimer(int timerId)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_timers.find(timerId);
    if (found == m_timers.end())
        return;
    m_items.erase(found->second);
    m_timers.erase(found);
}

std::optional<Instant> Agenda::dueOf(int timerId) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_timers.find(timerId);
    return found == m_timers.end() ? std::nullopt : std::make_optional(found->second.first);
}

void Agenda::addWork(Instant due, std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_items[Place(due, m_sequence++)].work = std::move(work);
}

void Agenda::dropWork()
{
    std::map<Place, Item> dropped; // ends outside the lock: work may hold objects that call back
    const std::lock_guard lock(m_mutex);
    for (auto item = m_items.begin(); item != m_items.end();) {
        const auto next = std::next(item);
        if (item->second.timerId == 0)
            dropped.insert(m_items.extract(item));
        item = next;
    }
}

std::optional<Instant> Agenda::nextDue() const
{
    const std::lock_guard lock(m_mutex);
    return m_items.empty() ? std::nullopt : std::make_optional(m_items.begin()->first.first);
}

std::optional<Agenda::Item> Agenda::take(Instant now)
{
    const std::lock_guard lock(m_mutex);
    if (m_items.empty() || m_items.begin()->first.first > now)
        return std::nullopt;
    Item item = std::move(m_items.begin()->second);
    m_items.erase(m_items.begin());
    m_timers.erase(item.timerId);
    return item;
}

void Agenda::shiftBack(Instant span)
{
    const std::lock_guard lock(m_mutex);
    std::map<Place, Item> moved;
    for (auto &[place, item] : m_items)
        moved.emplace_hint(moved.end(), Place(place.first - span, place.second), std::move(item));
    for (auto &[timerId, place] : m_timers)
        place.first -= span;
    m_items = std::move(moved);
}

}
