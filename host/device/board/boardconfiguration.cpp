#include "device/board/boardconfiguration.h"

namespace panelhost {

QStringList KeyLedConfiguration::names() const
{
    QStringList names;
    for (const QString &name : {single, multicolor, red, green, blue}) {
        if (!name.isEmpty())
            names << name;
    }
    return names;
}

}
