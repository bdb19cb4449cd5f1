#pragma once

#include "singletestsupport.h"

/// A link test whose listeners write "state n" and "links ..." among the calls of the services.
template <class Biz>
class LinkSession : public Session<Biz>
{
public:
    explicit LinkSession(std::initializer_list<const char *> absent = {}) : Session<Biz>(absent)
    {
        this->listenAsDriver();
    }
    void begin()
    {
        this->biz().enter();
        this->biz().startTest();
        this->take();
        this->log.clear();
    }
    /// What listeners and services hear of one payload.
    QStringList callsOf(const ListenerSlot<std::any> &subscription, const std::any &payload)
    {
        this->take();
        if (!subscription.fire(payload))
            return {QStringLiteral("nobody subscribed")};
        return this->take();
    }
    QString linksLine(const std::vector<bool> &links) const { return QStringLiteral("links %1").arg(bitText(links)); }
};

/// The calls that make both subscriptions.
inline QStringList subscriptionsOf(const QString &service, const QString &subscriber)
{
    return {QStringLiteral("%1.registerReportCallback(%2, 2)").arg(service, subscriber),
            QStringLiteral("%1.registerChangedCallback(%2, 2)").arg(service, subscriber)};
}
