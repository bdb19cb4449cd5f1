#include "diagnostics/diagnostic.h"

#include <algorithm>
#include <tuple>

namespace panelhost {

QString Diagnostic::toLine() const
{
    const auto word = severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
    return QStringLiteral("%1:%2:%3: ").arg(file).arg(location.line).arg(location.column) + word + QStringLiteral(": ")
        + text;
}

Diagnostics sortedByLocation(Diagnostics diagnostics)
{
    std::stable_sort(diagnostics.begin(), diagnostics.end(), [](const Diagnostic &a, const Diagnostic &b) {
        return std::tie(a.location.line, a.location.column) < std::tie(b.location.line, b.location.column);
    });
    return diagnostics;
}

int countOf(const Diagnostics &diagnostics, Diagnostic::Severity severity)
{
    const auto isWanted = [severity](const Diagnostic &diagnostic) { return diagnostic.severity == severity; };
    return static_cast<int>(std::count_if(diagnostics.begin(), diagnostics.end(), isWanted));
}

}
