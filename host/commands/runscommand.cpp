#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "records/journalreader.h"
#include "records/runprinter.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

RunPrinter::Format formatOf(const QCommandLineParser &parser)
{
    if (parser.isSet(QStringLiteral("json")))
        return RunPrinter::Format::Json;
    return parser.isSet(QStringLiteral("csv")) ? RunPrinter::Format::Csv : RunPrinter::Format::Table;
}

// Prints what could be read before an error, too.
bool printRunsOf(const QString &path, RunPrinter &printer, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(
            path, QFileInfo(path).isDir() ? QStringLiteral("not a file") : file.errorString());
        return false;
    }
    RunDeriver deriver([&printer](const Run &run) { printer.add(run); });
    const bool isWhole = readJournal(file, path, deriver, error);
    deriver.endSession();
    printer.finish();
    return isWhole;
}

}

int runRuns(const CommandLine &line)
{
    if (line.parser.isSet(QStringLiteral("json")) && line.parser.isSet(QStringLiteral("csv")))
        return reportError(QStringLiteral("Give --json or --csv, not both."));
    if (!line.parser.isSet(QStringLiteral("from")))
        return reportError(QStringLiteral("Usage: panelhost runs --from JOURNAL"));
    RunPrinter printer(formatOf(line.parser));
    QString error;
    return printRunsOf(line.parser.value(QStringLiteral("from")), printer, &error) ? 0 : reportError(error);
}

}
