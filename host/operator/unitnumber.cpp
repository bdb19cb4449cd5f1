#include "operator/unitnumber.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

#include <algorithm>

namespace panelhost {

constexpr int MaxUnitLength = 100;

QString identityProblem(const QString &text)
{
    if (text.size() > MaxUnitLength)
        return QCoreApplication::translate("panelhost::UnitNumber", "has %1 characters; at most %2 are allowed")
            .arg(text.size())
            .arg(MaxUnitLength);
    if (std::any_of(text.begin(), text.end(), [](QChar character) { return !character.isPrint(); }))
        return QCoreApplication::translate("panelhost::UnitNumber", "contains control characters");
    return {};
}

QString unitNumberProblem(const QString &number)
{
    if (number.isEmpty())
        return QCoreApplication::translate("panelhost::UnitNumber", "A serial number can't be empty.");
    const QString problem = identityProblem(number);
    return problem.isEmpty()
        ? QString()
        : QCoreApplication::translate("panelhost::UnitNumber", "The serial number %1.").arg(problem);
}

}
