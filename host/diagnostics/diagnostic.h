#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

namespace panelhost {

/// A location in a text file, counted from 1.
struct SourceLocation
{
    int line = 1;
    int column = 1;
};

/// One thing that `panelhost check` has to say about a configuration file.
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

/// In the order of their places.
Diagnostics sortedByLocation(Diagnostics diagnostics);
/// Number of diagnostics of @p severity.
int countOf(const Diagnostics &diagnostics, Diagnostic::Severity severity);

}
