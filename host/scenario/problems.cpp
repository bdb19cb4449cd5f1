#include "scenario/problems.h"

namespace panelhost {

void Problems::add(Place where, const QString &text)
{
    m_findings.append({m_file, where, Finding::Severity::Error, text});
}

void Problems::add(Place where, const QString &found, const QString &expected)
{
    add(where, QStringLiteral("found %1, expected %2").arg(found, expected));
}

QStringList Problems::lines() const
{
    QStringList lines;
    for (const auto &finding : sortedByPlace(m_findings))
        lines.append(finding.toLine());
    return lines;
}

}
