#pragma once

#include <QtCore/QObject>

#include <functional>
#include <mutex>
#include <vector>

namespace LCD::Widget {

/// Runs functions from any thread on its own thread, in the order in which they were posted. Functions that still wait
/// when the object is destroyed are dropped.
class QueuedCalls : public QObject
{
    Q_OBJECT

public:
    using Work = std::function<void()>;

    /// Runs @p work on the object's thread. When called on that thread, it first runs the waiting functions, then @p
    /// work, and then returns. Thread-safe.
    void post(Work work);

public Q_SLOTS:
    /// Runs the waiting functions. Call it on the object's thread.
    void deliver();

private:
    // The functions wait here and not in Qt's event queue, because the thread sanitizer doesn't see Qt's locks.
    std::mutex m_mutex;
    std::vector<Work> m_waiting;
};

}
