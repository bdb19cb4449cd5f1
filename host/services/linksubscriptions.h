#pragma once

#include "journal/journal.h"

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace panelhost {

class Faults;

/// The subscribers to the reports and to the changes of the net ports or the USB ports. A report is sent after a
/// subscription and on request, a change when a link has changed. Callbacks are called on the device's thread.
class LinkSubscriptions : public std::enable_shared_from_this<LinkSubscriptions>
{
public:
    using Callback = std::function<void(std::any)>;

    /// @p service is the name in the journal. @p present returns the payload for the current state of the ports.
    /// If @p changedOnSubscribe, a new subscriber to changes gets the current value shortly after, as if it had just
    /// changed.
    LinkSubscriptions(const QString &service, Journal &journal, const Faults &faults, bool changedOnSubscribe,
                      std::function<std::any()> present);

    void registerReport(const std::string &subscriber, int mode, const Callback &callback);
    void registerChanged(const std::string &subscriber, int mode, const Callback &callback);
    /// Sends a report to all subscribers.
    void requestReport();
    /// Reports a change to all subscribers. Device thread.
    void announceChange(const std::any &payload);

private:
    using Table = std::map<std::string, Callback>;

    void journalRegistration(const char *operation, const std::string &subscriber, int mode, const Callback &callback);
    void subscribe(Table LinkSubscriptions::*table, const std::string &subscriber, const Callback &callback);
    /// Calls @p subscriber, or all subscribers if that is empty, after @p delay virtual milliseconds.
    void deliverLater(Milliseconds delay, Table LinkSubscriptions::*table, const std::string &subscriber);
    void deliverTo(Table LinkSubscriptions::*table, const std::string &subscriber, const std::any &payload);
    void deliver(Table LinkSubscriptions::*table, const std::string &subscriber, const Callback &callback,
                 const std::any &payload);

    QString m_service;
    Journal &m_journal;
    const Faults &m_faults;
    const bool m_changedOnSubscribe;
    std::function<std::any()> m_present;
    std::mutex m_mutex;
    Table m_report;
    Table m_changed;
};

/// What a link payload holds, for the journal.
QJsonObject describePayload(const std::any &payload);

}
