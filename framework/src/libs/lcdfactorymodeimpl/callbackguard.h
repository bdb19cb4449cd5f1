#pragma once

#include "log.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <new>
#include <thread>
#include <type_traits>
#include <utility>

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
            Entry entry(calls);        // not const: the list of the running calls changes it
            if (entry.isAdmitted())
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

    class Entry;

    /// The running calls, as a list of objects on the stacks of their threads.
    class Calls
    {
    public:
        bool enter(Entry &entry)
        {
            const std::lock_guard locker(m_mutex);
            if (m_invalid)
                return false;
            entry.m_next = std::exchange(m_running, &entry);
            return true;
        }

        void leave(const Entry &entry)
        {
            const std::lock_guard locker(m_mutex);
            Entry **place = &m_running;
            while (*place != &entry)
                place = &(*place)->m_next;
            *place = entry.m_next;
            if (m_invalid)
                m_left.notify_all();
        }

        void invalidate()
        {
            std::unique_lock locker(m_mutex);
            m_invalid = true;
            m_left.wait(locker, [this] { return !isRunningOnOtherThread(); });
        }

    private:
        bool isRunningOnOtherThread() const
        {
            for (const Entry *entry = m_running; entry; entry = entry->m_next) {
                if (entry->m_thread != std::this_thread::get_id())
                    return true;
            }
            return false;
        }

        std::mutex m_mutex;
        std::condition_variable m_left;
        Entry *m_running = nullptr;
        bool m_invalid = false;
    };

    /// A call. It is in the list while it exists, unless it wasn't admitted.
    class Entry
    {
    public:
        explicit Entry(std::shared_ptr<Calls> calls) : m_calls(std::move(calls)), m_admitted(m_calls->enter(*this)) {}
        ~Entry()
        {
            if (m_admitted)
                m_calls->leave(*this);
        }
        Entry(const Entry &) = delete;
        Entry &operator=(const Entry &) = delete;

        bool isAdmitted() const { return m_admitted; }

    private:
        friend class Calls;

        const std::shared_ptr<Calls> m_calls;
        const std::thread::id m_thread = std::this_thread::get_id();
        Entry *m_next = nullptr;
        const bool m_admitted; // the last member: the others are set before the call is in the list
    };

    const std::shared_ptr<Calls> m_calls;
};

}
