#include "lcd/platform.h"

namespace panelhost {

bool hasDisplay(const QString &platform)
{
    return !platform.startsWith(QLatin1String("offscreen")) && !platform.startsWith(QLatin1String("minimal"));
}

}
