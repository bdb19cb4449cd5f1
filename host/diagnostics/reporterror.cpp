#include "diagnostics/reporterror.h"

#include <QtCore/QString>

#include <cstdio>

namespace panelhost {

int reportError(const QString &message)
{
    std::fprintf(stderr, "panelhost: %s\n", message.toLocal8Bit().constData());
    return 2;
}

}
