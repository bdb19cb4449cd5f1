#include "diagnostics/diagnosticcollector.h"

#include <QtCore/QSet>

#include <algorithm>

namespace panelhost {

void DiagnosticCollector::add(SourceLocation definition, const QVector<SourceLocation> &aliases, const QString &text)
{
    m_entries.append({definition, aliases, text});
}

// Identifies @p entry by its definition, its text and the last @p aliases of its aliases.
QString DiagnosticCollector::keyOf(const Entry &entry, int aliases)
{
    QString key = QStringLiteral("%1:%2").arg(entry.definition.line).arg(entry.definition.column);
    for (const auto &alias : entry.aliases.mid(entry.aliases.size() - aliases))
        key += QStringLiteral(" %1:%2").arg(alias.line).arg(alias.column);
    return key + QLatin1Char(' ') + entry.text;
}

QStringList DiagnosticCollector::lines() const
{
    QSet<QString> keys;
    for (const auto &entry : m_entries)
        keys.insert(keyOf(entry, entry.aliases.size()));
    Diagnostics diagnostics;
    for (const auto &entry : m_entries) {
        int shorter = 0;
        while (shorter < entry.aliases.size() && !keys.contains(keyOf(entry, shorter)))
            ++shorter;
        if (entry.aliases.isEmpty())
            diagnostics.append({m_file, entry.definition, Diagnostic::Severity::Error, entry.text});
        else if (shorter == entry.aliases.size())
            diagnostics.append(
                {m_file, entry.aliases.constLast(), Diagnostic::Severity::Error,
                 entry.text + QStringLiteral("; the alias refers to line %1").arg(entry.definition.line)});
    }
    QStringList lines;
    for (const auto &diagnostic : sortedByLocation(diagnostics))
        lines.append(diagnostic.toLine());
    return lines;
}

}
