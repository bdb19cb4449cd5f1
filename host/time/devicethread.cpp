#include "time/devicethread.h"

namespace panelhost {

namespace {

thread_local const DeviceThread *currentDeviceThread = nullptr;

}

DeviceThread::~DeviceThread()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void DeviceThread::run(const std::function<void()> &work)
{
    if (isCurrent()) {
        work();
        return;
    }
    std::unique_lock lock(m_mutex);
    if (!m_thread.joinable())
        m_thread = std::thread(&DeviceThread::loop, this);
    m_changed.wait(lock, [this] { return !m_work; });
    m_work = &work;
    m_changed.notify_all();
    m_changed.wait(lock, [this, &work] { return m_work != &work; });
}

bool DeviceThread::isCurrent() const
{
    return currentDeviceThread == this;
}

void DeviceThread::loop()
{
    currentDeviceThread = this;
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_work || m_ending; });
        if (!m_work)
            return;
        lock.unlock();
        (*m_work)();
        lock.lock();
        m_work = nullptr;
        m_changed.notify_all();
    }
}

}
