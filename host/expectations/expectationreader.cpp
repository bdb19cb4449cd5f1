#include "expectations/expectationreader.h"

#include "expectations/journalproperties.h"
#include "expectations/properties.h"
#include "yaml/limits.h"

namespace panelhost {

namespace {

const QMap<QString, Condition::Comparison> &comparisons()
{
    static const QMap<QString, Condition::Comparison> words{
        {QStringLiteral("equals"), Condition::Comparison::Equals},
        {QStringLiteral("contains"), Condition::Comparison::Contains},
        {QStringLiteral("matches"), Condition::Comparison::Matches}};
    return words;
}

}

Expectations ExpectationReader::expectations(const YamlNode &node)
{
    Expectations all;
    for (const auto &entry : m_reader.freeMap(node)) {
        Expectation expectation;
        expectation.where = entry.first.definition();
        expectation.property = YamlReader::scalar(entry.first);
        if (isJournalProperty(expectation.property))
            journal(entry.second, expectation);
        else if (isProperty(expectation.property, m_deviceNames))
            seen(entry.second, expectation);
        else
            m_reader.errorExpected(entry.first,
                                   QStringLiteral("one of ")
                                       + (propertyNames() + journalPropertyNames()).join(QStringLiteral(", ")),
                                   propertyNames() + journalPropertyNames());
        all.append(expectation);
    }
    if (node.isMap() && node.entries().isEmpty())
        m_reader.errorExpected(node, QStringLiteral("something to expect"));
    return all;
}

void ExpectationReader::seen(const YamlNode &value, Expectation &expectation)
{
    conditions(value, false, expectation.conditions);
}

void ExpectationReader::journal(const YamlNode &value, Expectation &expectation)
{
    const bool isLine = expectation.property == logLineProperty();
    if (!value.isMap()) {
        const auto text =
            m_reader.text(value, isLine ? QStringLiteral("a text or a map") : QStringLiteral("a name or a map"));
        if (!text)
            return;
        if (isLine)
            condition(value, Condition::Comparison::Contains, false, expectation.conditions);
        else
            expectation.query.name = *text;
        return;
    }
    const auto allowed = isLine
        ? comparisons().keys() + QStringList{QStringLiteral("not"), QStringLiteral("times")}
        : QStringList{QStringLiteral("name"), QStringLiteral("arguments"), QStringLiteral("times")};
    for (const auto &entry : m_reader.map(value, allowed))
        journalEntry(entry, expectation);
}

void ExpectationReader::journalEntry(const YamlReader::Entry &entry, Expectation &expectation)
{
    const auto word = YamlReader::scalar(entry.first);
    auto &query = expectation.query;
    if (word == QLatin1String("times")) {
        query.times = m_reader.integer(entry.second, 0, limits::JournalTimes);
    } else if (word == QLatin1String("name")) {
        query.name = m_reader.text(entry.second, QStringLiteral("a name")).value_or(QString());
    } else if (word == QLatin1String("arguments")) {
        for (const auto &argument : m_reader.freeMap(entry.second)) {
            const auto value = m_reader.text(argument.second, QStringLiteral("a value"));
            query.arguments.insert(YamlReader::scalar(argument.first), value.value_or(QString()));
        }
    } else if (word == QLatin1String("not")) {
        conditions(entry.second, true, expectation.conditions);
    } else {
        condition(entry.second, comparisons()[word], false, expectation.conditions);
    }
}

void ExpectationReader::conditions(const YamlNode &node, bool isNegated, QVector<Condition> &conditions)
{
    if (!node.isMap())
        return condition(node, Condition::Comparison::Equals, isNegated, conditions);
    if (m_depth >= limits::NotDepth)
        return m_reader.errorExpected(node, QStringLiteral("not more than %1 negations").arg(limits::NotDepth));
    ++m_depth;
    const auto entries = m_reader.map(node, comparisons().keys() + QStringList{QStringLiteral("not")});
    for (const auto &entry : entries) {
        const auto word = YamlReader::scalar(entry.first);
        if (word == QLatin1String("not"))
            this->conditions(entry.second, !isNegated, conditions);
        else
            condition(entry.second, comparisons()[word], isNegated, conditions);
    }
    if (entries.isEmpty() && node.entries().isEmpty())
        m_reader.errorExpected(node, QStringLiteral("a value, a list or a map with equals, contains, matches or not"));
    --m_depth;
}

void ExpectationReader::condition(const YamlNode &node, Condition::Comparison comparison, bool isNegated,
                                  QVector<Condition> &conditions)
{
    const auto texts = m_reader.texts(node, QStringLiteral("a value or a list of values"));
    if (!texts)
        return;
    Condition condition;
    condition.comparison = comparison;
    condition.isNegated = isNegated;
    if (comparison == Condition::Comparison::Equals) {
        condition.expected = node.isSequence() ? QVariant(*texts) : QVariant(texts->first());
        conditions.append(condition);
        return;
    }
    for (const auto &text : *texts) {
        condition.expected = text;
        condition.pattern.setPattern(text);
        if (comparison == Condition::Comparison::Matches && !condition.pattern.isValid())
            m_reader.error(node,
                           QStringLiteral("bad regular expression \"%1\": %2, at character %3")
                               .arg(text, condition.pattern.errorString())
                               .arg(condition.pattern.patternErrorOffset()));
        else
            conditions.append(condition);
    }
}

}
