#include "check/checker.h"
#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <cstdio>

namespace panelhost {

namespace {

QString directoryOf(const CommandLine &line)
{
    if (!line.arguments.isEmpty())
        return line.arguments.first();
    if (!line.session.share.isEmpty())
        return line.session.share;
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share"));
}

const char *plural(int count)
{
    return count == 1 ? "" : "s";
}

}

int runCheck(const CommandLine &line)
{
    const auto directory = directoryOf(line);
    if (!QFileInfo(directory).isDir())
        return reportError(QStringLiteral("\"%1\" isn't a directory.").arg(directory));
    const auto diagnostics = checkDirectory(directory);
    for (const auto &diagnostic : diagnostics)
        print(diagnostic.toLine() + QLatin1Char('\n'));
    const int errors = countOf(diagnostics, Diagnostic::Severity::Error);
    const int warnings = countOf(diagnostics, Diagnostic::Severity::Warning);
    std::fprintf(stderr, "panelhost: %s: %d error%s, %d warning%s\n", qPrintable(directory), errors, plural(errors),
                 warnings, plural(warnings));
    const bool isRejected = errors > 0 || (warnings > 0 && line.parser.isSet(QStringLiteral("strict")));
    return isRejected ? 1 : 0;
}

}
