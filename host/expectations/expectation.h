#pragma once

#include "diagnostics/diagnosticcollector.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <optional>

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

/// Selects entries of the journal since the last mark by their name and arguments.
struct JournalQuery
{
    QString name; ///< empty: any
    QVariantMap arguments;
    std::optional<int> times; ///< absent: at least once
};

/// A property and the conditions for its value. All conditions must hold.
struct Expectation
{
    SourceLocation where;
    QString property;
    QVector<Condition> conditions;
    JournalQuery query; ///< for journal properties

    /// Returns the expectation as one line.
    QString toText() const;
};

using Expectations = QVector<Expectation>;

/// Returns a value in quotes, or a list of values in brackets.
QString textOf(const QVariant &value);

}
