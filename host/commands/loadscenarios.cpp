#include "commands/loadscenarios.h"

#include "diagnostics/terminalcolor.h"
#include "scenario/scenarioloader.h"

#include <cstdio>

namespace panelhost {

bool loadScenarios(const CommandLine &line, QVector<Scenario> *scenarios)
{
    QStringList errors;
    QStringList paths = line.arguments;
    if (paths.count(QStringLiteral("-")) > 1) {
        errors.append(QStringLiteral("-:1:1: error: the standard input can be read only once"));
        paths.removeAll(QStringLiteral("-"));
    }
    for (const auto &path : qAsConst(paths)) {
        QStringList found;
        const auto scenario = loadScenario(path, line.session, &found);
        errors += found;
        if (scenario)
            scenarios->append(*scenario);
    }
    for (const auto &error : qAsConst(errors))
        std::fprintf(stderr, "%s\n", qPrintable(coloredDiagnostic(error, stderr)));
    return errors.isEmpty();
}

}
