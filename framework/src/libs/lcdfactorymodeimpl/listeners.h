#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace LCD::FactoryModeImpl {

/// Who hears of an event, by the name of the one who asked. A table has no lock: it is filled before a run.
template <class... Args>
using Listeners = std::map<std::string, std::function<void(Args...)>>;

/// Puts @p listener under @p requester in the place of an earlier one; an empty function changes nothing.
template <class... Args>
void registerListener(Listeners<Args...> &table, const std::string &requester,
                      const std::function<void(Args...)> &listener)
{
    if (listener)
        table.insert_or_assign(requester, listener);
}

/// As registerListener(), for a table whose listeners must have a name: an empty one changes nothing either.
template <class... Args>
void registerNamedListener(Listeners<Args...> &table, const std::string &requester,
                           const std::function<void(Args...)> &listener)
{
    if (!requester.empty())
        registerListener(table, requester, listener);
}

/// Calls the listener of @p requester alone, on the caller's thread.
template <class... Args, class... Values>
void notifyRequester(const Listeners<Args...> &table, const std::string &requester, const Values &...values)
{
    const auto entry = table.find(requester);
    if (entry == table.end())
        return;
    // A listener may register another in its own place, so it runs from a copy.
    if (const auto listener = entry->second)
        listener(values...);
}

/// Calls every listener in ascending order of name, on the caller's thread.
template <class... Args, class... Values>
void notifyAll(const Listeners<Args...> &table, const Values &...values)
{
    const Listeners<Args...> listeners = table;
    for (const auto &[requester, listener] : listeners) {
        if (listener)
            listener(values...);
    }
}

}
