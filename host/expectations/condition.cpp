#include "expectations/condition.h"

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
