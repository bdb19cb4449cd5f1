#pragma once

#include <QtCore/QRegularExpression>

#include <optional>

namespace panelhost {

/// Which serial numbers a unit may have: any, or those that match a regular expression as a whole.
class UnitPattern
{
public:
    /// Allows any serial number.
    UnitPattern() = default;

    /// Returns nullopt and sets @p error to a sentence if @p text isn't a regular expression.
    static std::optional<UnitPattern> fromText(const QString &text, QString *error);

    /// Returns why @p unit can't be the serial number of a unit, in one sentence; empty if it can.
    QString problem(const QString &unit) const;

private:
    QString m_text;
    QRegularExpression m_expression;
};

}
