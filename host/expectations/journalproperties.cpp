#include "expectations/journalproperties.h"

#include <QtCore/QMap>

#include <algorithm>

namespace panelhost {

namespace {

const QMap<QString, Journal::Kind> &kinds()
{
    static const QMap<QString, Journal::Kind> byProperty{{QStringLiteral("call"), Journal::Kind::Call},
                                                         {QStringLiteral("event"), Journal::Kind::Event},
                                                         {QStringLiteral("signal"), Journal::Kind::Signal},
                                                         {logLineProperty(), Journal::Kind::Log}};
    return byProperty;
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

QStringList journalPropertyNames()
{
    return kinds().keys();
}

bool isJournalProperty(const QString &property)
{
    return kinds().contains(property);
}

QString logLineProperty()
{
    return QStringLiteral("log-line");
}

Journal::Kind journalKind(const QString &property)
{
    return kinds()[property];
}

bool matches(const Journal::Entry &entry, const Expectation &expectation)
{
    const auto &query = expectation.query;
    if (entry.kind != journalKind(expectation.property))
        return false;
    if (!query.name.isEmpty() && entry.name != query.name)
        return false;
    const auto text = entry.data.value(QLatin1String("text")).toString();
    const auto holds = [&](const Condition &condition) { return condition.holds(text); };
    return hasArguments(entry, query.arguments)
        && std::all_of(expectation.conditions.begin(), expectation.conditions.end(), holds);
}

}
