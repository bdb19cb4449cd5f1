#include "check/checker.h"

#include "check/keylistcheck.h"
#include "check/menucheck.h"

namespace panelhost {

Findings checkDirectory(const QString &directory)
{
    const auto path = QStringLiteral("%1/%2");
    return sortedByPlace(checkMenu(path.arg(directory, QStringLiteral("factorymenu.xml"))))
        + sortedByPlace(checkKeyList(path.arg(directory, QStringLiteral("factorykeychecklist.xml"))));
}

}
