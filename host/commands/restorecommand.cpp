#include "commands/commands.h"
#include "device/board/savedoutputs.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"

namespace panelhost {

int runRestore(const CommandLine &line)
{
    SavedOutputs saved(stateDirectory(line.parser.value(QStringLiteral("state"))));
    QString error;
    if (!saved.exists()) {
        print(QStringLiteral("There is nothing to restore.\n"));
        return 0;
    }
    if (!saved.lock(&error))
        return reportError(error + QLatin1Char('.'));
    const QStringList problems = saved.restore();
    for (const QString &problem : problems)
        reportError(problem + QLatin1Char('.'));
    print(QStringLiteral("Restored: %1.\n").arg(saved.restoredCount()));
    return problems.isEmpty() ? 0 : 2;
}

}
