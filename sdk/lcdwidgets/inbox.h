#pragma once

#include <QtCore/QObject>

#include <functional>
#include <mutex>
#include <vector>

namespace LCD::Widget {

/// Brings work from any thread to the thread it lives on, in the order in which it was posted. What still waits when
/// it is destroyed is dropped.
class Inbox : public QObject
{
    Q_OBJECT

public:
    using Work = std::function<void()>;

    /// Any thread. On the inbox's own thread the work is done before post() returns, after what waits already.
    void post(Work work);

public Q_SLOTS:
    /// Does what waits; on the inbox's own thread.
    void deliver();

private:
    // The work waits here and not in Qt's event queue, whose lock the thread sanitizer doesn't see.
    std::mutex m_mutex;
    std::vector<Work> m_waiting;
};

}
