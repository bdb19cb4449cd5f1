#include "check/finding.h"

#include <algorithm>
#include <tuple>

namespace panelhost {

QString Finding::toLine() const
{
    const auto word = severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
    return QStringLiteral("%1:%2:%3: ").arg(file).arg(place.line).arg(place.column) + word + QStringLiteral(": ")
        + text;
}

Findings sortedByPlace(Findings findings)
{
    std::stable_sort(findings.begin(), findings.end(), [](const Finding &a, const Finding &b) {
        return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
    });
    return findings;
}

int countOf(const Findings &findings, Finding::Severity severity)
{
    const auto isWanted = [severity](const Finding &finding) { return finding.severity == severity; };
    return static_cast<int>(std::count_if(findings.begin(), findings.end(), isWanted));
}

}
