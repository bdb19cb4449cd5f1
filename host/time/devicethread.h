#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace panelhost {

/// The thread on which the device lives, as a baton: whoever runs work on it waits until it rests again, so that the
/// two threads never run at once. Starts with the first work and ends with the object.
class DeviceThread
{
public:
    DeviceThread() = default;
    ~DeviceThread();
    DeviceThread(const DeviceThread &) = delete;
    DeviceThread &operator=(const DeviceThread &) = delete;

    /// Runs @p work there and returns when it is done; at once when called on the device thread itself.
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
