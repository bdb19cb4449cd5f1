#pragma once

#include <QtCore/QObject>

#include <memory>
#include <mutex>

namespace LCD::RepairPages {

/// Passes the reports of a service, which may arrive on any thread, to a receiver on the GUI thread. Make the queue a
/// member of the receiver. A report that arrives after the receiver was deleted is dropped.
class ReportQueue
{
public:
    explicit ReportQueue(QObject *receiver) : m_link(std::make_shared<Link>()) { m_link->receiver = receiver; }
    ~ReportQueue()
    {
        const std::lock_guard locker(m_link->mutex);
        m_link->receiver = nullptr;
    }
    ReportQueue(const ReportQueue &) = delete;
    ReportQueue &operator=(const ReportQueue &) = delete;

    /// Returns a listener for a service. @p handler is called later, on the GUI thread, with copies of the arguments.
    template <class Handler>
    auto listener(Handler handler) const
    {
        return [weak = std::weak_ptr(m_link), handler](const auto &...args) {
            const auto link = weak.lock();
            if (!link)
                return;
            const std::lock_guard locker(link->mutex);
            if (link->receiver)
                QMetaObject::invokeMethod(
                    link->receiver, [handler, args...] { handler(args...); }, Qt::QueuedConnection);
        };
    }

private:
    struct Link
    {
        std::mutex mutex;
        QObject *receiver = nullptr;
    };

    std::shared_ptr<Link> m_link;
};

}
