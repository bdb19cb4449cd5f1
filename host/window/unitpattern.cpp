#include "window/unitpattern.h"

#include "operator/unitnumber.h"

#include <QtCore/QCoreApplication>

namespace panelhost {

std::optional<UnitPattern> UnitPattern::fromText(const QString &text, QString *error)
{
    // Checked without the anchors, so that the error and its place are about the text that was given.
    const QRegularExpression given(text);
    if (!given.isValid()) {
        *error = QStringLiteral("--unit-pattern is \"%1\", expected a regular expression: %2 at character %3.")
                     .arg(text, given.errorString())
                     .arg(given.patternErrorOffset() + 1);
        return std::nullopt;
    }
    UnitPattern pattern;
    pattern.m_text = text;
    pattern.m_expression.setPattern(QRegularExpression::anchoredPattern(text));
    return pattern;
}

QString UnitPattern::problem(const QString &unit) const
{
    const QString problem = unitNumberProblem(unit);
    if (!problem.isEmpty() || m_text.isEmpty() || m_expression.match(unit).hasMatch())
        return problem;
    return QCoreApplication::translate("panelhost::UnitBar", "\"%1\" isn't a serial number that matches %2.")
        .arg(unit, m_text);
}

}
