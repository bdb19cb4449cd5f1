#pragma once

#include "device/board/eventsource.h"

#include <QtCore/QtGlobal>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace panelhost {

/// A thread of a board device. It waits for file descriptors, posted work and timers, and does nothing in between. The
/// thread starts with the object and ends with it.
class EventLoop
{
public:
    EventLoop();
    /// Ends the thread after the work that was posted before. Timers that are not due yet don't fire. Must not be
    /// called on the loop's own thread.
    ~EventLoop();
    EventLoop(const EventLoop &) = delete;
    EventLoop &operator=(const EventLoop &) = delete;

    /// Calls @p work on the loop's thread, in the order of the calls. Thread-safe.
    void post(std::function<void()> work);
    /// Calls @p work on the loop's thread and waits until it has returned. On that thread it calls @p work directly.
    /// Thread-safe.
    void run(const std::function<void()> &work);
    bool isCurrent() const;

    // On the loop's thread only.

    /// Waits for @p source, too. It must be removed before it is destroyed.
    void add(EventSource &source);
    /// Does nothing if @p source was not added.
    void remove(EventSource &source);

    using Timer = quint64;
    /// Calls @p work once after @p delay of the wall clock, for example to look for a missing device again. Returns a
    /// number for stopTimer() that is never 0.
    Timer startTimer(std::chrono::milliseconds delay, std::function<void()> work);
    /// Does nothing if the timer has fired or was stopped, or if @p timer is 0.
    void stopTimer(Timer timer);

private:
    using Clock = std::chrono::steady_clock;
    using Work = std::function<void()>;

    void loop();
    void wakeUp();
    void drain();
    bool runPosted();
    void runTimers();
    void wait();
    void callReady(const std::vector<pollfd> &polled, const std::vector<EventSource *> &waiting);
    int timeout() const;

    const int m_wakeUp; // an eventfd
    std::mutex m_mutex;
    std::vector<Work> m_posted;
    bool m_ending = false;
    std::vector<EventSource *> m_sources;
    std::map<std::pair<Clock::time_point, Timer>, Work> m_timers;
    Timer m_lastTimer = 0;
    std::thread m_thread;
};

}
