#include "yaml/yamlreader.h"

#include "diagnostics/excerpt.h"
#include "diagnostics/suggestion.h"
#include "yaml/duration.h"
#include "yaml/limits.h"

namespace panelhost {

namespace {

constexpr qint64 LongestDuration = limits::DurationHours * 3600LL * 1000;
constexpr int LongestQuotation = 60;

QString listed(const QStringList &words)
{
    return words.size() == 1 ? words.first() : QStringLiteral("one of ") + words.join(QStringLiteral(", "));
}

}

QString YamlReader::scalar(const YamlNode &node)
{
    return node.text();
}

QString YamlReader::found(const YamlNode &node)
{
    switch (node.kind()) {
    case YamlNode::Kind::Scalar:
        return QLatin1Char('"') + beginningOf(scalar(node), LongestQuotation) + QLatin1Char('"');
    case YamlNode::Kind::Sequence:
        return QStringLiteral("a list");
    case YamlNode::Kind::Map:
        return QStringLiteral("a map");
    case YamlNode::Kind::Null:
        break;
    }
    return QStringLiteral("nothing");
}

YamlReader::Entries YamlReader::map(const YamlNode &node, const QStringList &allowed)
{
    Entries known;
    for (const auto &entry : freeMap(node)) {
        if (allowed.contains(scalar(entry.first)))
            known.append(entry);
        else
            errorExpected(entry.first, listed(allowed), allowed);
    }
    return known;
}

YamlReader::Entries YamlReader::freeMap(const YamlNode &node)
{
    Entries entries;
    if (!node.isMap()) {
        errorExpected(node, QStringLiteral("a map"));
        return entries;
    }
    QStringList seen;
    for (const auto &entry : node.entries()) {
        if (isNew(entry.first, seen))
            entries.append(entry);
    }
    return entries;
}

bool YamlReader::isNew(const YamlNode &key, QStringList &seen)
{
    if (!key.isScalar()) {
        errorExpected(key, QStringLiteral("a word"));
        return false;
    }
    if (seen.contains(scalar(key))) {
        error(key, QStringLiteral("%1 occurs twice").arg(found(key)));
        return false;
    }
    seen.append(scalar(key));
    return true;
}

std::optional<QString> YamlReader::text(const YamlNode &node, const QString &expected)
{
    if (node.isScalar())
        return scalar(node);
    errorExpected(node, expected);
    return std::nullopt;
}

std::optional<QStringList> YamlReader::texts(const YamlNode &node, const QString &expected)
{
    if (!node.isSequence()) {
        const auto single = text(node, expected);
        return single ? std::optional<QStringList>(QStringList{*single}) : std::nullopt;
    }
    QStringList list;
    for (const auto &element : node.items()) {
        const auto one = text(element, expected);
        if (!one)
            return std::nullopt;
        list.append(*one);
    }
    return list;
}

std::optional<int> YamlReader::integer(const YamlNode &node, int min, int max)
{
    bool isNumber = false;
    const int value = node.isScalar() ? scalar(node).toInt(&isNumber) : 0;
    if (isNumber && value >= min && value <= max)
        return value;
    errorExpected(node, QStringLiteral("a whole number from %1 to %2").arg(min).arg(max));
    return std::nullopt;
}

std::optional<double> YamlReader::number(const YamlNode &node, double min, double max)
{
    bool isNumber = false;
    const double value = node.isScalar() ? scalar(node).toDouble(&isNumber) : 0;
    if (isNumber && value >= min && value <= max)
        return value;
    errorExpected(node, QStringLiteral("a number from %1 to %2").arg(min).arg(max));
    return std::nullopt;
}

std::optional<bool> YamlReader::flag(const YamlNode &node)
{
    const auto value = node.isScalar() ? scalar(node) : QString();
    if (value == QLatin1String("true") || value == QLatin1String("on"))
        return true;
    if (value == QLatin1String("false") || value == QLatin1String("off"))
        return false;
    errorExpected(node, QStringLiteral("true or false"));
    return std::nullopt;
}

std::optional<qint64> YamlReader::duration(const YamlNode &node)
{
    const auto value = durationFromText(node.isScalar() ? scalar(node) : QString());
    if (value && *value <= LongestDuration)
        return value;
    errorExpected(node,
                  value ? QStringLiteral("a duration of at most %1h").arg(limits::DurationHours)
                        : QStringLiteral("a duration such as 500ms, 20s, 2min or 1h"));
    return std::nullopt;
}

std::optional<QString> YamlReader::word(const YamlNode &node, const QStringList &allowed)
{
    if (node.isScalar() && allowed.contains(scalar(node)))
        return scalar(node);
    errorExpected(node, listed(allowed), allowed);
    return std::nullopt;
}

void YamlReader::errorExpected(const YamlNode &where, const QString &expected, const QStringList &words)
{
    const QString suggestion = where.isScalar() ? suggestionFor(scalar(where), words) : QString();
    error(where, QStringLiteral("found %1, expected %2").arg(found(where), expected) + suggestion);
}

void YamlReader::error(const YamlNode &where, const QString &text)
{
    m_diagnostics.add(where.definition(), where.aliases(), text);
}

}
