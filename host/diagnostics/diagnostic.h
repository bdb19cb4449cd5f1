#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

namespace panelhost {

/// A line and column in a text file, counted from 1.
struct SourceLocation
{
    int line = 1;
    int column = 1;
};

/// An error or a warning about a file that was read.
struct Diagnostic
{
    enum class Severity {
        Error,
        Warning
    };

    QString file;
    SourceLocation location;
    Severity severity = Severity::Error;
    QString text;

    /// "file:line:column: error|warning: text"
    QString toLine() const;
};

using Diagnostics = QVector<Diagnostic>;

/// Returns @p diagnostics in the order of their locations.
Diagnostics sortedByLocation(Diagnostics diagnostics);
/// Returns the number of @p diagnostics with @p severity.
int countOf(const Diagnostics &diagnostics, Diagnostic::Severity severity);

}
