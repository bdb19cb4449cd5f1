#include "diagnostics/reporterror.h"

#include "diagnostics/terminalcolor.h"

#include <QtCore/QString>

#include <cstdio>

namespace panelhost {

int reportError(const QString &message)
{
    const QString name = colored(QStringLiteral("panelhost:"), TerminalColor::Red, stderr);
    std::fprintf(stderr, "%s %s\n", qPrintable(name), message.toLocal8Bit().constData());
    return 2;
}

}
