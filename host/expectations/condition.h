#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace panelhost {

/// A condition for the value of a property.
struct Condition
{
    enum class Comparison {
        Equals,
        Contains, ///< the text, or an element of the list, contains the expected text
        Matches   ///< the regular expression matches anywhere in the text or in an element of the list
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
