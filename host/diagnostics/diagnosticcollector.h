#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Everything that is wrong with one scenario file, so that its author sees all of it at once.
class DiagnosticCollector
{
public:
    explicit DiagnosticCollector(const QString &file) : m_file(file) {}

    void add(SourceLocation where, const QString &text) { add(where, {}, text); }
    /// What was reached through @p aliases is told at the last of them, and only if it isn't wrong without them, too.
    void add(SourceLocation definition, const QVector<SourceLocation> &aliases, const QString &text);

    QString file() const { return m_file; }
    bool isEmpty() const { return m_entries.isEmpty(); }
    /// "file:line:column: error: text", one line each, in the order of the file.
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
