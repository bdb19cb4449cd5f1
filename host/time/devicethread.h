#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace panelhost {

/// The device's thread. The thread that runs work on it waits until the work is done, so that the two never run at the
/// same time. The thread starts with the first work and ends with the object.
class DeviceThread
{
public:
    DeviceThread() = default;
    ~DeviceThread();
    DeviceThread(const DeviceThread &) = delete;
    DeviceThread &operator=(const DeviceThread &) = delete;

    /// Runs @p work on the thread and returns when it is done. On the thread itself it calls @p work directly.
    void run(const std::function<void()> &work);
    bool isCurrent() const;

private:
    void loop();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    const std::function<void()> *m_work = nullptr;
    bool m_ending = false;
    std::thread m_thread;
};

}
