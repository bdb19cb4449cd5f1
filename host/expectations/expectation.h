#pragma once

#include "diagnostics/diagnosticcollector.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <optional>

namespace panelhost {

/// What a value must be like.
struct Condition
{
    enum class Comparison {
        Equals,
        Contains, ///< a text that holds it, or a list with an element that holds it
        Matches   ///< a regular expression, anywhere in the text or in an element of the list
    };

    Comparison comparison = Comparison::Equals;
    bool isNegated = false;
    QVariant expected; ///< QString or QStringList
    QRegularExpression pattern;

    bool holds(const QVariant &actual) const;
    QString toText() const;
};

/// Entries of the journal since the last mark that have a name and, among their data, the arguments.
struct JournalQuery
{
    QString name; ///< empty: any
    QVariantMap arguments;
    std::optional<int> times; ///< absent: at least once
};

/// A thing that can be seen, and what it must be like. All conditions must hold.
struct Expectation
{
    SourceLocation where;
    QString property;
    QVector<Condition> conditions;
    JournalQuery query; ///< for the properties that ask the journal

    /// The expectation as one line.
    QString toText() const;
};

using Expectations = QVector<Expectation>;

/// A value in quotes, or a list of such values in brackets.
QString textOf(const QVariant &value);

}
