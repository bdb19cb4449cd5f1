#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"
#include "records/storeschema.h"

namespace panelhost {

int runSchema(const CommandLine &line)
{
    const QString from = line.parser.value(QStringLiteral("from"));
    bool isNumber = false;
    const int version = from.toInt(&isNumber);
    if (!isNumber || version < 0 || version > StoreSchemaVersion)
        return reportError(
            QStringLiteral("--from is \"%1\", expected a version from 0 to %2.").arg(from).arg(StoreSchemaVersion));
    const QString role = line.parser.value(QStringLiteral("role"));
    if (role.isEmpty())
        return reportError(QStringLiteral("--role is empty, expected the name of the role of the stations."));
    print(storeServerScript(version, role));
    return 0;
}

}
