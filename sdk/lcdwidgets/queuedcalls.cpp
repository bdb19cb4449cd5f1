#include "queuedcalls.h"

#include <QtCore/QThread>

namespace LCD::Widget {

void QueuedCalls::post(Work work)
{
    bool wake = false;
    {
        const std::lock_guard lock(m_mutex);
        wake = m_waiting.empty();
        m_waiting.push_back(std::move(work));
    }
    if (QThread::currentThread() == thread())
        deliver();
    else if (wake)
        QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection);
}

void QueuedCalls::deliver()
{
    std::vector<Work> due;
    {
        const std::lock_guard lock(m_mutex);
        due.swap(m_waiting);
    }
    for (const Work &work : due)
        work();
}

}
