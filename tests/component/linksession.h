#pragma once

#include "singletestsupport.h"

/// A link test whose listeners add "state n" and "links ..." to the recorded calls.
template <class Biz>
class LinkSession : public Session<Biz>
{
public:
    explicit LinkSession(std::initializer_list<const char *> absent = {}) : Session<Biz>(absent)
    {
        this->registerDriverListener();
    }
    void begin()
    {
        this->biz().enter();
        this->biz().startTest();
        this->take();
        this->log.clear();
    }
    /// Delivers @p payload and returns the calls that follow.
    QStringList callsOf(const ListenerSlot<std::any> &subscription, const std::any &payload)
    {
        this->take();
        if (!subscription.fire(payload))
            return {QStringLiteral("nobody subscribed")};
        return this->take();
    }
    QString linksLine(const std::vector<bool> &links) const { return QStringLiteral("links %1").arg(bitText(links)); }
};

/// Returns the calls that register both listeners with a port service.
inline QStringList subscriptionsOf(const QString &service, const QString &subscriber)
{
    return {QStringLiteral("%1.registerReportCallback(%2, 2)").arg(service, subscriber),
            QStringLiteral("%1.registerChangedCallback(%2, 2)").arg(service, subscriber)};
}
