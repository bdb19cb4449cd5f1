#include "expectations/expectation.h"

#include <algorithm>
#include <functional>

namespace panelhost {

namespace {

bool isList(const QVariant &value)
{
    return value.type() == QVariant::StringList || value.type() == QVariant::List;
}

QStringList elementsOf(const QVariant &value)
{
    return isList(value) ? value.toStringList() : QStringList{value.toString()};
}

bool equals(const QVariant &actual, const QVariant &expected)
{
    if (isList(actual) != isList(expected))
        return textOf(actual) == textOf(expected);
    return elementsOf(actual) == elementsOf(expected);
}

bool anyElement(const QVariant &actual, const std::function<bool(const QString &)> &is)
{
    const auto elements = elementsOf(actual);
    return std::any_of(elements.begin(), elements.end(), is);
}

QString wordOf(Condition::Comparison comparison)
{
    switch (comparison) {
    case Condition::Comparison::Equals:
        return {};
    case Condition::Comparison::Contains:
        return QStringLiteral("contains ");
    case Condition::Comparison::Matches:
        return QStringLiteral("matches ");
    }
    return {};
}

QString queryText(const JournalQuery &query)
{
    QStringList parts;
    if (!query.name.isEmpty())
        parts.append(query.name);
    for (auto it = query.arguments.begin(); it != query.arguments.end(); ++it)
        parts.append(it.key() + QLatin1Char('=') + textOf(it.value()));
    if (query.times)
        parts.append(QStringLiteral("%1 times").arg(*query.times));
    return parts.join(QLatin1Char(' '));
}

}

bool Condition::holds(const QVariant &actual) const
{
    bool does = false;
    switch (comparison) {
    case Comparison::Equals:
        does = equals(actual, expected);
        break;
    case Comparison::Contains:
        does = anyElement(actual, [this](const QString &text) { return text.contains(expected.toString()); });
        break;
    case Comparison::Matches:
        does = anyElement(actual, [this](const QString &text) { return pattern.match(text).hasMatch(); });
        break;
    }
    return does != isNegated;
}

QString Condition::toText() const
{
    return (isNegated ? QStringLiteral("not ") : QString()) + wordOf(comparison) + textOf(expected);
}

QString Expectation::toText() const
{
    QStringList parts;
    for (const auto &condition : conditions)
        parts.append(condition.toText());
    const auto queried = queryText(query);
    if (!queried.isEmpty())
        parts.prepend(queried);
    return property + QStringLiteral(": ") + parts.join(QStringLiteral(" and "));
}

QString textOf(const QVariant &value)
{
    if (!isList(value))
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    QStringList elements;
    for (const auto &element : value.toStringList())
        elements.append(QLatin1Char('"') + element + QLatin1Char('"'));
    return QLatin1Char('[') + elements.join(QStringLiteral(", ")) + QLatin1Char(']');
}

}
