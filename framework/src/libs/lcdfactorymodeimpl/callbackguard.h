#pragma once

#include "log.h"

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <new>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace LCD::FactoryModeImpl {

/// Makes listeners harmless when the object that registered them is deleted. Services never unregister a listener and
/// call it on any thread. Therefore the object registers only functions that wrap() returns. After invalidate(), which
/// the destructor calls, these functions do nothing.
///
/// Wrapped functions never wait for each other. Only invalidate() waits, for calls that run on other threads. Make the
/// guard the last member of its owner, so that it is destroyed first.
///
/// Threads: invalidate() and the wrapped functions may be called on any thread.
class CallbackGuard
{
public:
    CallbackGuard() : m_calls(std::make_shared<Calls>()) {}
    ~CallbackGuard() { invalidate(); }
    CallbackGuard(const CallbackGuard &) = delete;
    CallbackGuard &operator=(const CallbackGuard &) = delete;

    /// Returns a function that passes its arguments to @p call, or does nothing after invalidate(). The function may be
    /// copied and called on any thread. Whoever holds it may delete it while it runs. Therefore each call runs a copy
    /// of @p call, and @p call may hold only pointers and numbers. The functions that Listeners stores are different:
    /// they are not copied, and keep their own state. If @p call deletes the owner of the guard, it must not use the
    /// owner afterwards.
    template <class Call>
    auto wrap(Call call) const
    {
        static_assert(std::is_trivially_copyable_v<Call>);
        return [calls = m_calls, call](auto &&...args) {
            // A copy, because the captured values may be deleted during the call.
            const Call running = call; // NOLINT(performance-unnecessary-copy-initialization)
            const Entry entry(calls);
            if (entry.admitted)
                running(std::forward<decltype(args)>(args)...);
        };
    }

    /// Like wrap(), for a function that a service calls. No exception may reach the service: if there is no memory for
    /// a report, the report is dropped with a warning that begins with @p listener.
    template <class Call>
    auto wrapReport(const char *listener, Call call) const
    {
        return [listener, admitted = wrap(call)](auto &&...args) {
            const char *const name = listener; // the captured value may be deleted during the call
            try {
                admitted(std::forward<decltype(args)>(args)...);
            } catch (const std::bad_alloc &) {
                warnOfDroppedReport(name);
            }
        };
    }

    /// Refuses all further calls and waits for the calls that are running on other threads. May be called from within
    /// a wrapped function. The caller must not hold a lock that a listener takes.
    void invalidate() { m_calls->invalidate(); }

private:
    static void warnOfDroppedReport(const char *listener)
    {
        try {
            qCWarning(componentLog).nospace() << listener << ": no memory for a report, dropped";
        } catch (const std::bad_alloc &) { // no memory for the warning either
        }
    }

    class Calls
    {
    public:
        bool enter()
        {
            const std::lock_guard locker(m_mutex);
            if (m_invalid)
                return false;
            m_running.push_back(std::this_thread::get_id());
            return true;
        }

        void leave()
        {
            const std::lock_guard locker(m_mutex);
            m_running.erase(std::find(m_running.begin(), m_running.end(), std::this_thread::get_id()));
            if (m_invalid)
                m_left.notify_all();
        }

        void invalidate()
        {
            std::unique_lock locker(m_mutex);
            m_invalid = true;
            m_left.wait(locker, [this, self = std::this_thread::get_id()] {
                return std::all_of(m_running.begin(), m_running.end(), [self](auto thread) { return thread == self; });
            });
        }

    private:
        std::mutex m_mutex;
        std::condition_variable m_left;
        std::vector<std::thread::id> m_running;
        bool m_invalid = false;
    };

    struct Entry
    {
        explicit Entry(std::shared_ptr<Calls> entered) : calls(std::move(entered)), admitted(calls->enter()) {}
        ~Entry()
        {
            if (admitted)
                calls->leave();
        }
        Entry(const Entry &) = delete;
        Entry &operator=(const Entry &) = delete;

        const std::shared_ptr<Calls> calls;
        const bool admitted;
    };

    const std::shared_ptr<Calls> m_calls;
};

}
