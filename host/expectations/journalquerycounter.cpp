#include "expectations/journalquerycounter.h"

#include "expectations/journalproperties.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace panelhost {

namespace {

QJsonArray keyOf(const Condition &condition)
{
    return {static_cast<int>(condition.comparison), condition.isNegated, QJsonValue::fromVariant(condition.expected)};
}

// Identifies the entries that an expectation is about, regardless of their number.
QByteArray keyOf(const Expectation &expectation)
{
    QJsonArray conditions;
    for (const auto &condition : expectation.conditions)
        conditions.append(keyOf(condition));
    const auto &query = expectation.query;
    return QJsonDocument(
               QJsonArray{expectation.property, query.name, QJsonObject::fromVariantMap(query.arguments), conditions})
        .toJson(QJsonDocument::Compact);
}

QString kindAndName(Journal::Kind kind, const QString &name)
{
    return Journal::kindName(kind) + QLatin1Char('/') + name;
}

}

JournalQueryCounter::JournalQueryCounter(const Expectations &expectations)
{
    for (const auto &expectation : expectations) {
        if (isJournalProperty(expectation.property))
            addQuery(expectation);
    }
}

void JournalQueryCounter::addQuery(const Expectation &expectation)
{
    const auto key = keyOf(expectation);
    if (m_indexOfKey.contains(key))
        return;
    m_indexOfKey.insert(key, m_queries.size());
    m_indexesOfName[kindAndName(journalKind(expectation.property), expectation.query.name)].push_back(m_queries.size());
    m_queries.push_back({expectation, 0});
}

void JournalQueryCounter::add(const Journal::Entry &entry)
{
    if (m_queries.empty())
        return;
    const std::lock_guard lock(m_mutex);
    for (const auto &name : {entry.name, QString()}) {
        const auto indexes = m_indexesOfName.constFind(kindAndName(entry.kind, name));
        if (indexes == m_indexesOfName.constEnd())
            continue;
        for (const auto index : *indexes) {
            Query &query = m_queries[index];
            query.count += matches(entry, query.expectation) ? 1 : 0;
        }
    }
}

void JournalQueryCounter::restart()
{
    const std::lock_guard lock(m_mutex);
    for (auto &query : m_queries)
        query.count = 0;
}

int JournalQueryCounter::count(const Expectation &expectation) const
{
    const std::lock_guard lock(m_mutex);
    const auto index = m_indexOfKey.constFind(keyOf(expectation));
    return index == m_indexOfKey.constEnd() ? 0 : m_queries[*index].count;
}

}
