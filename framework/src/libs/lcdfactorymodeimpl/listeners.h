#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace LCD::FactoryModeImpl {

/// Guards every table, requester name and single listener of the component against registering on one thread while
/// another notifies. It is held for a look-up or an assignment only, never while a listener runs.
inline std::mutex listenersMutex;

/// A registered function. Copies share it, so each call reaches the function itself with the state that the last call
/// left in it. It lives on while it runs, even when it is replaced meanwhile.
///
/// Threads: a stored listener is read and replaced by the functions below only, which may be called on any thread. The
/// function is called on the caller's thread, and must itself allow calls on several threads at once if they come.
template <class... Args>
class Listener
{
public:
    using Function = std::function<void(Args...)>;

    Listener() = default;
    Listener(std::nullptr_t) {}
    Listener(const Function &function) : m_function(function ? std::make_shared<Function>(function) : nullptr) {}

    explicit operator bool() const { return m_function != nullptr; }

    /// Throws std::bad_function_call when there is no function.
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

/// The listeners of an event by the name of the requester. Entries are never removed.
template <class... Args>
using Listeners = std::map<std::string, Listener<Args...>>;

/// Puts @p function in the place of an earlier one; an empty function leaves none.
template <class... Args>
void setListener(Listener<Args...> &listener, const std::function<void(Args...)> &function)
{
    Listener<Args...> set(function);
    const std::lock_guard locker(listenersMutex);
    std::swap(listener, set);
}

/// Returns @p listener, to be called without the lock.
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

/// Puts @p function under @p requester in the place of an earlier one; an empty function changes nothing.
template <class... Args>
void registerListener(Listeners<Args...> &table, const std::string &requester,
                      const std::function<void(Args...)> &function)
{
    if (!function)
        return;
    // What it replaces is destroyed without the lock.
    Listener<Args...> listener(function);
    const std::lock_guard locker(listenersMutex);
    std::swap(table[requester], listener);
}

/// As registerListener(), for a table whose listeners must have a name: an empty one changes nothing either.
template <class... Args>
void registerNamedListener(Listeners<Args...> &table, const std::string &requester,
                           const std::function<void(Args...)> &function)
{
    if (!requester.empty())
        registerListener(table, requester, function);
}

/// Calls the listener of @p requester alone, on the caller's thread.
template <class... Args, class... Values>
void notifyRequester(const Listeners<Args...> &table, const std::string &requester, const Values &...values)
{
    std::unique_lock locker(listenersMutex);
    const auto entry = table.find(requester);
    if (entry == table.end())
        return;
    const Listener<Args...> listener = entry->second;
    locker.unlock();
    if (listener)
        listener(values...);
}

/// Calls every listener in ascending order of name, on the caller's thread. A listener may register others meanwhile;
/// the table isn't touched any more when the last of them has been called.
template <class... Args, class... Values>
void notifyAll(const Listeners<Args...> &table, const Values &...values)
{
    std::unique_lock locker(listenersMutex);
    const auto end = table.end();
    for (auto entry = table.begin(); entry != end;) {
        const Listener<Args...> listener = entry->second;
        ++entry;
        locker.unlock();
        if (listener)
            listener(values...);
        locker.lock();
    }
}

}
