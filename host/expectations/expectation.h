#pragma once

#include "diagnostics/diagnostic.h"
#include "expectations/condition.h"
#include "expectations/journalquery.h"

#include <QtCore/QString>
#include <QtCore/QVector>

namespace panelhost {

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

}
