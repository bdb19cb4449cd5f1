#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <QtCore/QVector>

namespace LCD::FactoryModeImpl {

/// Protects all tables of listeners, all requester names and all single listeners of the component, so that one thread
/// may register a listener while another one notifies. The mutex is held for a look-up or an assignment only, never
/// while a listener runs.
inline std::mutex listenersMutex;

/// A registered function. Copies of a Listener share the function, so it keeps its own state from call to call. It
/// isn't deleted while it runs if the caller has a copy, even if another function replaces it.
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

    /// Calls the function. Throws std::bad_function_call if there is none. The listener must not be replaced meanwhile:
    /// call a copy of a stored one.
    template <class... Values>
    void operator()(const Values &...values) const
    {
        if (!m_function)
            throw std::bad_function_call();
        (*m_function)(values...);
    }

private:
    std::shared_ptr<Function> m_function;
};

/// The listeners of one event, in ascending order of the names of their requesters. There are one or two of them, so
/// a requester is searched one by one. A registration replaces the list by a changed copy, so a notification walks
/// through the list as it was at its start, without copying it. The list is a QVector, because a std::shared_ptr to
/// another container would need a dozen relocations for each kind of listener.
///
/// Threads: as for Listener.
template <class... Args>
class Listeners
{
public:
    using List = QVector<std::pair<std::string, Listener<Args...>>>;

    std::size_t size() const { return static_cast<std::size_t>(m_list.size()); }
    typename List::const_iterator begin() const { return m_list.cbegin(); }
    void clear() { m_list = List(); }

    /// Returns the listener of @p requester for an assignment, and adds an empty one if there is none.
    Listener<Args...> &operator[](const std::string &requester)
    {
        List changed = m_list;
        auto entry = std::find_if(changed.begin(), changed.end(), // begin() copies the list
                                  [&requester](const auto &other) { return other.first >= requester; });
        if (entry == changed.end() || entry->first != requester)
            entry = changed.insert(entry, {requester, nullptr});
        const auto index = static_cast<int>(entry - changed.begin());
        m_list.swap(changed);
        return m_list[index].second;
    }

    /// Returns a copy of the listener of @p requester, or an empty one.
    Listener<Args...> find(const std::string &requester) const
    {
        for (const auto &[name, listener] : m_list) {
            if (name == requester)
                return listener;
        }
        return {};
    }

    /// Returns the present list. Later registrations don't change it.
    List list() const { return m_list; }

private:
    List m_list;
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
typename Listeners<Args...>::List currentListeners(const Listeners<Args...> &table)
{
    const std::lock_guard locker(listenersMutex);
    return table.list();
}

/// Returns a copy of the listener of @p requester, or an empty one. Another thread may change the requester meanwhile.
template <class... Args>
Listener<Args...> currentListener(const Listeners<Args...> &table, const std::string &requester)
{
    const std::lock_guard locker(listenersMutex);
    return table.find(requester);
}

/// Calls only the listener of @p requester, on the caller's thread.
template <class... Args, class... Values>
void notifyRequester(const Listeners<Args...> &table, const std::string &requester, const Values &...values)
{
    if (const auto listener = currentListener(table, requester))
        listener(values...);
}

/// Calls all listeners in ascending order of their names, on the caller's thread. A listener that is registered or
/// replaced meanwhile takes part from the next notification on. A listener may delete the table.
template <class... Args, class... Values>
void notifyAll(const Listeners<Args...> &table, const Values &...values)
{
    const auto listeners = currentListeners(table);
    for (const auto &[requester, listener] : listeners) {
        if (listener)
            listener(values...);
    }
}

}
