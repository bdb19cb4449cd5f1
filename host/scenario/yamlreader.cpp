#include "scenario/yamlreader.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

constexpr qint64 LongestDuration = 366LL * 24 * 3600 * 1000;
constexpr int LongestQuotation = 60;

QString listed(const QStringList &words)
{
    return words.size() == 1 ? words.first() : QStringLiteral("one of ") + words.join(QStringLiteral(", "));
}

qint64 millisecondsOf(const QString &unit)
{
    if (unit == QLatin1String("ms"))
        return 1;
    if (unit == QLatin1String("s"))
        return 1000;
    return unit == QLatin1String("min") ? 60 * 1000 : 3600 * 1000;
}

}

QString YamlReader::scalar(const YAML::Node &node)
{
    return QString::fromStdString(node.Scalar());
}

Place YamlReader::placeOf(const YAML::Node &node) const
{
    const auto mark = node.Mark();
    const auto key = node.IsNull() ? m_keysOfNothing.find(mark.pos) : m_keysOfNothing.end();
    if (key != m_keysOfNothing.end())
        return key->second;
    return mark.is_null() ? Place() : Place{mark.line + 1, mark.column + 1};
}

QString YamlReader::found(const YAML::Node &node)
{
    switch (node.Type()) {
    case YAML::NodeType::Scalar:
        return QLatin1Char('"') + scalar(node).left(LongestQuotation) + QLatin1Char('"');
    case YAML::NodeType::Sequence:
        return QStringLiteral("a list");
    case YAML::NodeType::Map:
        return QStringLiteral("a map");
    case YAML::NodeType::Null:
    case YAML::NodeType::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

QString YamlReader::oneLine(const YAML::Node &node)
{
    YAML::Emitter emitter;
    emitter.SetMapFormat(YAML::Flow);
    emitter.SetSeqFormat(YAML::Flow);
    emitter << node;
    return QString::fromUtf8(emitter.c_str()).simplified();
}

YamlReader::Entries YamlReader::map(const YAML::Node &node, const QStringList &allowed)
{
    Entries known;
    for (const auto &entry : freeMap(node)) {
        if (allowed.contains(scalar(entry.first)))
            known.push_back(entry);
        else
            problem(entry.first, listed(allowed));
    }
    return known;
}

YamlReader::Entries YamlReader::freeMap(const YAML::Node &node)
{
    Entries entries;
    if (!node.IsMap()) {
        problem(node, QStringLiteral("a map"));
        return entries;
    }
    QStringList seen;
    for (const auto &entry : node) {
        if (entry.second.IsNull())
            m_keysOfNothing[entry.second.Mark().pos] = placeOf(entry.first);
        if (isNew(entry.first, seen))
            entries.emplace_back(entry.first, entry.second);
    }
    return entries;
}

bool YamlReader::isNew(const YAML::Node &key, QStringList &seen)
{
    if (!key.IsScalar()) {
        problem(key, QStringLiteral("a word"));
        return false;
    }
    if (seen.contains(scalar(key))) {
        complain(key, QStringLiteral("%1 stands here twice").arg(found(key)));
        return false;
    }
    seen.append(scalar(key));
    return true;
}

std::optional<QString> YamlReader::text(const YAML::Node &node, const QString &expected)
{
    if (node.IsScalar())
        return scalar(node);
    problem(node, expected);
    return std::nullopt;
}

std::optional<QStringList> YamlReader::texts(const YAML::Node &node, const QString &expected)
{
    if (!node.IsSequence()) {
        const auto single = text(node, expected);
        return single ? std::optional<QStringList>(QStringList{*single}) : std::nullopt;
    }
    QStringList list;
    for (const auto &element : node) {
        const auto one = text(element, expected);
        if (!one)
            return std::nullopt;
        list.append(*one);
    }
    return list;
}

std::optional<int> YamlReader::integer(const YAML::Node &node, int min, int max)
{
    bool isNumber = false;
    const int value = node.IsScalar() ? scalar(node).toInt(&isNumber) : 0;
    if (isNumber && value >= min && value <= max)
        return value;
    problem(node, QStringLiteral("a whole number from %1 to %2").arg(min).arg(max));
    return std::nullopt;
}

std::optional<double> YamlReader::number(const YAML::Node &node, double min, double max)
{
    bool isNumber = false;
    const double value = node.IsScalar() ? scalar(node).toDouble(&isNumber) : 0;
    if (isNumber && value >= min && value <= max)
        return value;
    problem(node, QStringLiteral("a number from %1 to %2").arg(min).arg(max));
    return std::nullopt;
}

std::optional<bool> YamlReader::flag(const YAML::Node &node)
{
    const auto value = node.IsScalar() ? scalar(node) : QString();
    if (value == QLatin1String("true") || value == QLatin1String("on"))
        return true;
    if (value == QLatin1String("false") || value == QLatin1String("off"))
        return false;
    problem(node, QStringLiteral("true or false"));
    return std::nullopt;
}

std::optional<qint64> YamlReader::duration(const YAML::Node &node)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,9}(?:\\.\\d{1,3})?)\\s*(ms|s|min|h)$"));
    const auto match = form.match(node.IsScalar() ? scalar(node) : QString());
    const auto value = match.hasMatch()
        ? qRound64(match.captured(1).toDouble() * static_cast<double>(millisecondsOf(match.captured(2))))
        : -1;
    if (value >= 0 && value <= LongestDuration)
        return value;
    problem(node, QStringLiteral("a duration such as 500ms, 20s, 2min or 1h"));
    return std::nullopt;
}

std::optional<QString> YamlReader::word(const YAML::Node &node, const QStringList &allowed)
{
    if (node.IsScalar() && allowed.contains(scalar(node)))
        return scalar(node);
    problem(node, listed(allowed));
    return std::nullopt;
}

void YamlReader::problem(const YAML::Node &where, const QString &expected)
{
    m_problems.add(placeOf(where), found(where), expected);
}

void YamlReader::complain(const YAML::Node &where, const QString &text)
{
    m_problems.add(placeOf(where), text);
}

QString durationText(qint64 milliseconds)
{
    if (milliseconds % 1000 == 0)
        return QStringLiteral("%1s").arg(milliseconds / 1000);
    return QStringLiteral("%1ms").arg(milliseconds);
}

}
