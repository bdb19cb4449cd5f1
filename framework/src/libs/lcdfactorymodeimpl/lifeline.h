#pragma once

#include "log.h"

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <new>
#include <thread>
#include <utility>
#include <vector>

namespace LCD::FactoryModeImpl {

/// Keeps the callbacks that an object has given to services from touching it once it is gone. Services never forget a
/// callback and call on any thread, so guarded() wraps each: from cut() on it does nothing. Callbacks never wait for
/// one another; cut() alone waits, for those that run on other threads. Make it the last member of its owner.
///
/// Threads: cut() and the guarded functions may be called on any thread.
class Lifeline
{
public:
    Lifeline() : m_calls(std::make_shared<Calls>()) {}
    ~Lifeline() { cut(); }
    Lifeline(const Lifeline &) = delete;
    Lifeline &operator=(const Lifeline &) = delete;

    /// A function that hands its arguments to @p call while the owner lives. It may be copied, called on any thread,
    /// and dropped by its holder while it runs; its copies share @p call. A call that has destroyed the owner must not
    /// touch it again.
    template <class Call>
    auto guarded(Call call) const
    {
        return [calls = m_calls, call = std::make_shared<Call>(std::move(call))](auto &&...args) {
            // A copy: what is captured may be dropped meanwhile.
            const std::shared_ptr<Call> running = call; // NOLINT(performance-unnecessary-copy-initialization)
            const Entry entry(calls);
            if (entry.admitted)
                (*running)(std::forward<decltype(args)>(args)...);
        };
    }

    /// guarded() for a callback that a service calls. A service must see no exception, so a report for which there is
    /// no memory is dropped, with a warning in the name of @p listener.
    template <class Call>
    auto guardedReport(const char *listener, Call call) const
    {
        return [listener, admitted = guarded(std::move(call))](auto &&...args) {
            const char *const name = listener; // what is captured may be dropped meanwhile
            try {
                admitted(std::forward<decltype(args)>(args)...);
            } catch (const std::bad_alloc &) {
                warnOfDroppedReport(name);
            }
        };
    }

    /// Refuses all further calls and waits for those under way on other threads. A call under way on this thread may
    /// cut the line too. Whoever cuts must hold no lock that a listener takes.
    void cut() { m_calls->cut(); }

private:
    static void warnOfDroppedReport(const char *listener)
    {
        try {
            qCWarning(componentLog).nospace() << listener << ": no memory for a report, dropped";
        } catch (const std::bad_alloc &) { // not even for the warning
        }
    }

    class Calls
    {
    public:
        bool enter()
        {
            const std::lock_guard locker(m_mutex);
            if (m_cut)
                return false;
            m_running.push_back(std::this_thread::get_id());
            return true;
        }

        void leave()
        {
            const std::lock_guard locker(m_mutex);
            m_running.erase(std::find(m_running.begin(), m_running.end(), std::this_thread::get_id()));
            m_left.notify_all();
        }

        void cut()
        {
            std::unique_lock locker(m_mutex);
            m_cut = true;
            m_left.wait(locker, [this, self = std::this_thread::get_id()] {
                return std::all_of(m_running.begin(), m_running.end(), [self](auto thread) { return thread == self; });
            });
        }

    private:
        std::mutex m_mutex;
        std::condition_variable m_left;
        std::vector<std::thread::id> m_running;
        bool m_cut = false;
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
