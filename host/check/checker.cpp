#include "check/checker.h"

#include "check/keylistcheck.h"
#include "check/menucheck.h"

namespace panelhost {

Diagnostics checkDirectory(const QString &directory)
{
    const auto path = QStringLiteral("%1/%2");
    return sortedByLocation(checkMenu(path.arg(directory, QStringLiteral("factorymenu.xml"))))
        + sortedByLocation(checkKeyList(path.arg(directory, QStringLiteral("factorykeychecklist.xml"))));
}

}
