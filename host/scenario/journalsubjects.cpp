#include "scenario/journalsubjects.h"

#include <QtCore/QMap>

#include <algorithm>

namespace panelhost {

namespace {

const QMap<QString, Journal::Kind> &kinds()
{
    static const QMap<QString, Journal::Kind> bySubject{{QStringLiteral("call"), Journal::Kind::Call},
                                                        {QStringLiteral("event"), Journal::Kind::Event},
                                                        {QStringLiteral("signal"), Journal::Kind::Signal},
                                                        {logLineSubject(), Journal::Kind::Log}};
    return bySubject;
}

bool hasArguments(const Journal::Entry &entry, const QVariantMap &arguments)
{
    const auto data = entry.data.toVariantMap();
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        if (!data.contains(it.key()) || textOf(data.value(it.key())) != textOf(it.value()))
            return false;
    }
    return true;
}

bool matches(const Journal::Entry &entry, const Expectation &expectation)
{
    const auto &query = expectation.query;
    if (entry.kind != kinds()[expectation.subject])
        return false;
    if (!query.name.isEmpty() && entry.name != query.name)
        return false;
    const auto text = entry.data.value(QLatin1String("text")).toString();
    const auto holds = [&](const Condition &condition) { return condition.holds(text); };
    return hasArguments(entry, query.arguments)
        && std::all_of(expectation.conditions.begin(), expectation.conditions.end(), holds);
}

}

QStringList journalSubjectNames()
{
    return kinds().keys();
}

bool isJournalSubject(const QString &subject)
{
    return kinds().contains(subject);
}

QString logLineSubject()
{
    return QStringLiteral("log-line");
}

int countMatches(const QVector<Journal::Entry> &entries, const Expectation &expectation)
{
    const auto is = [&](const Journal::Entry &entry) { return matches(entry, expectation); };
    return static_cast<int>(std::count_if(entries.begin(), entries.end(), is));
}

}
