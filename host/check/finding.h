#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

namespace panelhost {

/// A place in a text file, counted from 1.
struct Place
{
    int line = 1;
    int column = 1;
};

/// One thing that `panelhost check` has to say about a configuration file.
struct Finding
{
    enum class Severity {
        Error,
        Warning
    };

    QString file;
    Place place;
    Severity severity = Severity::Error;
    QString text;

    /// "file:line:column: error|warning: text"
    QString toLine() const;
};

using Findings = QVector<Finding>;

/// In the order of their places.
Findings sortedByPlace(Findings findings);
/// Number of findings of @p severity.
int countOf(const Findings &findings, Finding::Severity severity);

}
