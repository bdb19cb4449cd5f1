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
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const auto value = entry.data.constFind(it.key());
        if (value == entry.data.constEnd() || textOf(value.value().toVariant()) != textOf(it.value()))
            return false;
    }
    return true;
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

Journal::Kind journalKind(const QString &subject)
{
    return kinds()[subject];
}

bool isAskedFor(const Journal::Entry &entry, const Expectation &expectation)
{
    const auto &query = expectation.query;
    if (entry.kind != journalKind(expectation.subject))
        return false;
    if (!query.name.isEmpty() && entry.name != query.name)
        return false;
    const auto text = entry.data.value(QLatin1String("text")).toString();
    const auto holds = [&](const Condition &condition) { return condition.holds(text); };
    return hasArguments(entry, query.arguments)
        && std::all_of(expectation.conditions.begin(), expectation.conditions.end(), holds);
}

}
