#include "services/linksubscriptions.h"

#include "device/faults.h"
#include "lcd/protocol/records.h"

#include <QtCore/QJsonArray>

#include <vector>

namespace panelhost {

using LCD::ProtocolImpl::s_NetworkPortLink;
using LCD::ProtocolImpl::s_NodeUSB;

namespace {

// Virtual milliseconds from a subscription to its first report, and to its first change.
constexpr Milliseconds reportDelay = 50;
constexpr Milliseconds firstChangeDelay = 100;

QJsonObject describe(const s_NetworkPortLink &record)
{
    return {{QStringLiteral("port"), record.port}, {QStringLiteral("link"), record.link}};
}

QJsonObject describe(const s_NodeUSB &record)
{
    return {{QStringLiteral("portId"), record.portId},
            {QStringLiteral("nodeType"), record.nodeType},
            {QStringLiteral("linkActive"), record.linkActive},
            {QStringLiteral("linkBlocked"), record.linkBlocked}};
}

template <class Record>
bool describeAs(const std::any &payload, QJsonObject &description)
{
    const auto *pointer = std::any_cast<std::shared_ptr<std::vector<Record>>>(&payload);
    if (!pointer)
        return false;
    if (!*pointer) {
        description.insert(QStringLiteral("payload"), QStringLiteral("null pointer"));
        return true;
    }
    QJsonArray records;
    for (const Record &record : **pointer)
        records << describe(record);
    description.insert(QStringLiteral("records"), records);
    return true;
}

}

QJsonObject describePayload(const std::any &payload)
{
    QJsonObject description;
    if (!payload.has_value())
        description.insert(QStringLiteral("payload"), QStringLiteral("no value"));
    else if (!describeAs<s_NetworkPortLink>(payload, description) && !describeAs<s_NodeUSB>(payload, description))
        description.insert(QStringLiteral("payload"), QStringLiteral("a value of another type"));
    return description;
}

LinkSubscriptions::LinkSubscriptions(const QString &service, Journal &journal, const Faults &faults,
                                     bool changedOnSubscribe, std::function<std::any()> present)
    : m_service(service), m_journal(journal), m_faults(faults), m_changedOnSubscribe(changedOnSubscribe),
      m_present(std::move(present))
{
}

void LinkSubscriptions::registerReport(const std::string &subscriber, int mode, const Callback &callback)
{
    journalRegistration("registerReportCallback", subscriber, mode, callback);
    subscribe(&LinkSubscriptions::m_report, subscriber, callback);
    deliverLater(reportDelay, &LinkSubscriptions::m_report, subscriber);
}

void LinkSubscriptions::registerChanged(const std::string &subscriber, int mode, const Callback &callback)
{
    journalRegistration("registerChangedCallback", subscriber, mode, callback);
    subscribe(&LinkSubscriptions::m_changed, subscriber, callback);
    if (m_changedOnSubscribe)
        deliverLater(firstChangeDelay, &LinkSubscriptions::m_changed, subscriber);
}

void LinkSubscriptions::requestReport()
{
    deliverLater(reportDelay, &LinkSubscriptions::m_report, {});
}

void LinkSubscriptions::announceChange(const std::any &payload)
{
    deliverTo(&LinkSubscriptions::m_changed, {}, payload);
}

void LinkSubscriptions::journalRegistration(const char *operation, const std::string &subscriber, int mode,
                                            const Callback &callback)
{
    m_journal.add(Journal::Kind::Call, m_service + QLatin1Char('.') + QLatin1String(operation),
                  {{QStringLiteral("subscriber"), QString::fromStdString(subscriber)},
                   {QStringLiteral("mode"), mode},
                   {QStringLiteral("callback"), callback ? QStringLiteral("set") : QStringLiteral("empty")}});
}

void LinkSubscriptions::subscribe(Table LinkSubscriptions::*table, const std::string &subscriber,
                                  const Callback &callback)
{
    const std::lock_guard lock(m_mutex);
    (this->*table)[subscriber] = callback;
}

void LinkSubscriptions::deliverLater(Milliseconds delay, Table LinkSubscriptions::*table, const std::string &subscriber)
{
    VirtualClock::instance().schedule(delay, [self = weak_from_this(), table, subscriber] {
        if (const auto alive = self.lock())
            alive->deliverTo(table, subscriber, alive->m_present());
    });
}

void LinkSubscriptions::deliverTo(Table LinkSubscriptions::*table, const std::string &subscriber,
                                  const std::any &payload)
{
    Table listeners;
    {
        const std::lock_guard lock(m_mutex);
        listeners = this->*table;
    }
    for (const auto &[name, callback] : listeners) {
        if (callback && (subscriber.empty() || subscriber == name))
            deliver(table, name, callback, payload);
    }
}

void LinkSubscriptions::deliver(Table LinkSubscriptions::*table, const std::string &subscriber,
                                const Callback &callback, const std::any &payload)
{
    const bool isReport = table == &LinkSubscriptions::m_report;
    QJsonObject data = describePayload(payload);
    data.insert(QStringLiteral("subscriber"), QString::fromStdString(subscriber));
    const int times = m_faults.isOn(QStringLiteral("duplicate-reports")) ? 2 : 1;
    for (int time = 0; time < times; ++time) {
        m_journal.add(Journal::Kind::Event,
                      m_service + (isReport ? QStringLiteral(".report") : QStringLiteral(".changed")), data);
        callback(payload);
    }
}

}
