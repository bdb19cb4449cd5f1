#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace LCD::FactoryModeImpl {

/// Protects all tables of listeners, all requester names and all single listeners of the component, so that one thread
/// may register a listener while another one notifies. The mutex is held for a look-up or an assignment only, never
/// while a listener runs.
inline std::mutex listenersMutex;

/// A registered function. Copies of a Listener share the function, so it keeps its own state from call to call. It
/// isn't deleted while it runs, even if another function replaces it.
///
/// Threads: only the functions below read and replace a stored listener. They may be called on any thread. The function
/// runs on the caller's thread. If several threads may call it at the same time, it must allow that.
template <class... Args>
class Listener
{
public:
    using Function = std::function<void(Args...)>;

    Listener() = default;
    Listener(std::nullptr_t) {}
    Listener(const Function &function) : m_function(function ? std::make_shared<Function>(function) : nullptr) {}

    explicit operator bool() const { return m_function != nullptr; }

    /// Calls the function. Throws std::bad_function_call if there is none.
    template <class... Values>
    void operator()(const Values &...values) const
    {
        const std::shared_ptr<Function> function = m_function;
        if (!function)
            throw std::bad_function_call();
        (*function)(values...);
    }

private:
    std::shared_ptr<Function> m_function;
};

/// The listeners of one event, by the name of the requester. A registration replaces the map by a changed copy, so a
/// notification walks through the map as it was at its start, without copying it.
///
/// Threads: as for Listener.
template <class... Args>
class Listeners
{
public:
    using Map = std::map<std::string, Listener<Args...>>;

    std::size_t size() const { return m_map->size(); }
    typename Map::const_iterator begin() const { return m_map->begin(); }
    void clear() { m_map = std::make_shared<Map>(); }

    /// Returns the listener of @p requester for an assignment, and adds an empty one if there is none.
    Listener<Args...> &operator[](const std::string &requester)
    {
        const auto changed = std::make_shared<Map>(*m_map);
        Listener<Args...> &listener = (*changed)[requester];
        m_map = changed; // keeps the map of the returned listener
        return listener; // cppcheck-suppress returnReference
    }

    /// Returns the present map. Later registrations don't change it.
    std::shared_ptr<const Map> map() const { return m_map; }

private:
    std::shared_ptr<const Map> m_map = std::make_shared<Map>();
};

/// Replaces @p listener by @p function. An empty function removes the listener.
template <class... Args>
void setListener(Listener<Args...> &listener, const std::function<void(Args...)> &function)
{
    Listener<Args...> set(function);
    const std::lock_guard locker(listenersMutex);
    std::swap(listener, set);
}

/// Returns a copy of @p listener, which can be called without the mutex.
template <class... Args>
Listener<Args...> currentListener(const Listener<Args...> &listener)
{
    const std::lock_guard locker(listenersMutex);
    return listener;
}

inline void setRequester(std::string &requester, std::string name)
{
    const std::lock_guard locker(listenersMutex);
    requester.swap(name);
}

inline std::string currentRequester(const std::string &requester)
{
    const std::lock_guard locker(listenersMutex);
    return requester;
}

/// Registers @p function for @p requester, replacing an earlier one. Does nothing if @p function is empty.
template <class... Args>
void registerListener(Listeners<Args...> &table, const std::string &requester,
                      const std::function<void(Args...)> &function)
{
    if (!function)
        return;
    // The replaced function is deleted after the mutex was released.
    Listener<Args...> listener(function);
    const std::lock_guard locker(listenersMutex);
    std::swap(table[requester], listener);
}

/// As registerListener(), but also does nothing if @p requester is empty.
template <class... Args>
void registerNamedListener(Listeners<Args...> &table, const std::string &requester,
                           const std::function<void(Args...)> &function)
{
    if (!requester.empty())
        registerListener(table, requester, function);
}

template <class... Args>
std::shared_ptr<const typename Listeners<Args...>::Map> currentListeners(const Listeners<Args...> &table)
{
    const std::lock_guard locker(listenersMutex);
    return table.map();
}

/// Returns the listener of @p requester in @p listeners, or nullptr. Another thread may change the requester meanwhile.
template <class Map>
const typename Map::mapped_type *findListener(const Map &listeners, const std::string &requester)
{
    const std::lock_guard locker(listenersMutex);
    const auto entry = listeners.find(requester);
    return entry == listeners.end() ? nullptr : &entry->second;
}

/// Calls only the listener of @p requester, on the caller's thread.
template <class... Args, class... Values>
void notifyRequester(const Listeners<Args...> &table, const std::string &requester, const Values &...values)
{
    const auto listeners = currentListeners(table);
    const auto *listener = findListener(*listeners, requester);
    if (listener && *listener)
        (*listener)(values...);
}

/// Calls all listeners in ascending order of their names, on the caller's thread. A listener that is registered or
/// replaced meanwhile takes part from the next notification on. A listener may delete the table.
template <class... Args, class... Values>
void notifyAll(const Listeners<Args...> &table, const Values &...values)
{
    const auto listeners = currentListeners(table);
    for (const auto &[requester, listener] : *listeners) {
        if (listener)
            listener(values...);
    }
}

}
