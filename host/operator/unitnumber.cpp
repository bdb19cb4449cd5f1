#include "operator/unitnumber.h"

#include <QtCore/QString>

#include <algorithm>

namespace panelhost {

constexpr int MaxLength = 100;

QString unitNumberProblem(const QString &number)
{
    if (number.isEmpty())
        return QStringLiteral("A serial number can't be empty.");
    if (number.size() > MaxLength)
        return QStringLiteral("The serial number has %1 characters; at most %2 are allowed.")
            .arg(number.size())
            .arg(MaxLength);
    if (std::any_of(number.begin(), number.end(), [](QChar character) { return !character.isPrint(); }))
        return QStringLiteral("The serial number contains control characters.");
    return {};
}

}
