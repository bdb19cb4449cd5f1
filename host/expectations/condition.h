#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace panelhost {

/// A condition for a value.
struct Condition
{
    enum class Comparison {
        Equals,
        Contains, ///< a text that contains it, or a list with such an element
        Matches   ///< a regular expression that matches anywhere in the text or in an element of the list
    };

    Comparison comparison = Comparison::Equals;
    bool isNegated = false;
    QVariant expected; ///< QString or QStringList
    QRegularExpression pattern;

    bool holds(const QVariant &actual) const;
    QString toText() const;
};

/// Returns a value in quotes, or a list of values in brackets.
QString textOf(const QVariant &value);

}
