#include "operator/unitnumber.h"

#include <QtCore/QString>

#include <algorithm>

namespace panelhost {

constexpr int MaxUnitLength = 100;

QString identityProblem(const QString &text)
{
    if (text.size() > MaxUnitLength)
        return QStringLiteral("has %1 characters; at most %2 are allowed").arg(text.size()).arg(MaxUnitLength);
    if (std::any_of(text.begin(), text.end(), [](QChar character) { return !character.isPrint(); }))
        return QStringLiteral("contains control characters");
    return {};
}

QString unitNumberProblem(const QString &number)
{
    if (number.isEmpty())
        return QStringLiteral("A serial number can't be empty.");
    const QString problem = identityProblem(number);
    return problem.isEmpty() ? QString() : QStringLiteral("The serial number %1.").arg(problem);
}

}
