#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Collects the errors in one scenario file, so that its author sees all of them at once.
class DiagnosticCollector
{
public:
    explicit DiagnosticCollector(const QString &file) : m_file(file) {}

    void add(SourceLocation where, const QString &text) { add(where, {}, text); }
    /// Adds an error in a value that was reached through @p aliases. It is reported at the last alias. It isn't
    /// reported if the value is also wrong where it is defined.
    void add(SourceLocation definition, const QVector<SourceLocation> &aliases, const QString &text);

    QString file() const { return m_file; }
    bool isEmpty() const { return m_entries.isEmpty(); }
    /// Returns the errors as "file:line:column: error: text", in the order of the file.
    QStringList lines() const;

private:
    struct Entry
    {
        SourceLocation definition;
        QVector<SourceLocation> aliases;
        QString text;
    };

    static QString keyOf(const Entry &entry, int aliases);

    QString m_file;
    QVector<Entry> m_entries;
};

}
