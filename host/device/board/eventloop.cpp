#include "device/board/eventloop.h"

#include <algorithm>
#include <condition_variable>
#include <limits>

#include <sys/eventfd.h>
#include <unistd.h>

namespace panelhost {

EventLoop::EventLoop() : m_wakeUp(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), m_thread(&EventLoop::loop, this)
{
}

EventLoop::~EventLoop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    wakeUp();
    m_thread.join();
    close(m_wakeUp);
}

void EventLoop::post(Work work)
{
    {
        const std::lock_guard lock(m_mutex);
        m_posted.push_back(std::move(work));
    }
    wakeUp();
}

void EventLoop::run(const Work &work)
{
    if (isCurrent()) {
        work();
        return;
    }
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    post([&] {
        work();
        const std::lock_guard lock(mutex);
        isDone = true;
        done.notify_one();
    });
    std::unique_lock lock(mutex);
    done.wait(lock, [&isDone] { return isDone; });
}

bool EventLoop::isCurrent() const
{
    return std::this_thread::get_id() == m_thread.get_id();
}

void EventLoop::add(EventSource &source)
{
    if (std::find(m_sources.begin(), m_sources.end(), &source) == m_sources.end())
        m_sources.push_back(&source);
}

void EventLoop::remove(EventSource &source)
{
    m_sources.erase(std::remove(m_sources.begin(), m_sources.end(), &source), m_sources.end());
}

EventLoop::Timer EventLoop::startTimer(std::chrono::milliseconds delay, Work work)
{
    const Timer timer = ++m_lastTimer;
    m_timers.emplace(std::make_pair(Clock::now() + delay, timer), std::move(work));
    return timer;
}

void EventLoop::stopTimer(Timer timer)
{
    const auto found = std::find_if(m_timers.begin(), m_timers.end(),
                                    [timer](const auto &each) { return each.first.second == timer; });
    if (found != m_timers.end())
        m_timers.erase(found);
}

void EventLoop::loop()
{
    while (runPosted()) {
        runTimers();
        wait();
    }
}

// Writing to an eventfd fails only if its counter is full, and then the loop wakes up all the same.
void EventLoop::wakeUp()
{
    const quint64 one = 1;
    if (write(m_wakeUp, &one, sizeof one) < 0)
        return;
}

void EventLoop::drain()
{
    quint64 count = 0;
    if (read(m_wakeUp, &count, sizeof count) < 0)
        return;
}

// Returns false if the loop has to end. Everything that was posted before is done then.
bool EventLoop::runPosted()
{
    std::vector<Work> posted;
    bool isEnding = false;
    {
        const std::lock_guard lock(m_mutex);
        posted.swap(m_posted);
        isEnding = m_ending;
    }
    for (const Work &work : posted)
        work();
    return !isEnding;
}

// Timers that are started by a timer wait for the next turn, so that descriptors are served in between.
void EventLoop::runTimers()
{
    const auto now = Clock::now();
    const Timer last = m_lastTimer;
    for (auto timer = m_timers.begin(); timer != m_timers.end() && timer->first.first <= now;) {
        if (timer->first.second > last) {
            ++timer;
            continue;
        }
        const Work work = std::move(timer->second);
        m_timers.erase(timer);
        work();
        timer = m_timers.begin();
    }
}

// In milliseconds, rounded up; -1 without a timer.
int EventLoop::timeout() const
{
    if (m_timers.empty())
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_timers.begin()->first.first - Clock::now());
    return static_cast<int>(std::clamp<qint64>(left.count(), 0, std::numeric_limits<int>::max()));
}

void EventLoop::wait()
{
    std::vector<pollfd> polled = {{m_wakeUp, POLLIN, 0}};
    const std::vector<EventSource *> waiting = m_sources;
    for (const EventSource *source : waiting)
        polled.push_back({source->fd(), source->events(), 0}); // poll() ignores -1
    if (poll(polled.data(), polled.size(), timeout()) <= 0)
        return;
    if (polled.front().revents)
        drain();
    polled.erase(polled.begin());
    callReady(polled, waiting);
}

// A source may have been removed by one that was called before it, or may have another descriptor by now.
void EventLoop::callReady(const std::vector<pollfd> &polled, const std::vector<EventSource *> &waiting)
{
    for (std::size_t index = 0; index < waiting.size(); ++index) {
        EventSource *source = waiting[index];
        const bool isThere = std::find(m_sources.begin(), m_sources.end(), source) != m_sources.end();
        if (isThere && polled[index].revents && source->fd() == polled[index].fd)
            source->ready();
    }
}

}
