#include "scenario/problems.h"

#include <QtCore/QSet>

#include <algorithm>

namespace panelhost {

void Problems::add(Place definition, const QVector<Place> &aliases, const QString &text)
{
    m_problems.append({definition, aliases, text});
}

// What @p problem is with the last @p aliases of its aliases alone.
QString Problems::keyOf(const Problem &problem, int aliases)
{
    QString key = QStringLiteral("%1:%2").arg(problem.definition.line).arg(problem.definition.column);
    for (const auto &alias : problem.aliases.mid(problem.aliases.size() - aliases))
        key += QStringLiteral(" %1:%2").arg(alias.line).arg(alias.column);
    return key + QLatin1Char(' ') + problem.text;
}

QStringList Problems::lines() const
{
    QSet<QString> keys;
    for (const auto &problem : m_problems)
        keys.insert(keyOf(problem, problem.aliases.size()));
    Findings findings;
    for (const auto &problem : m_problems) {
        int shorter = 0;
        while (shorter < problem.aliases.size() && !keys.contains(keyOf(problem, shorter)))
            ++shorter;
        if (problem.aliases.isEmpty())
            findings.append({m_file, problem.definition, Finding::Severity::Error, problem.text});
        else if (shorter == problem.aliases.size())
            findings.append(
                {m_file, problem.aliases.constLast(), Finding::Severity::Error,
                 problem.text + QStringLiteral("; the alias stands for line %1").arg(problem.definition.line)});
    }
    QStringList lines;
    for (const auto &finding : sortedByPlace(findings))
        lines.append(finding.toLine());
    return lines;
}

}
