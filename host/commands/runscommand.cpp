#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"
#include "records/journalreader.h"
#include "records/openrecords.h"
#include "records/runfilteroptions.h"
#include "records/runprinter.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

namespace panelhost {

namespace {

RunPrinter::Format formatOf(const QCommandLineParser &parser)
{
    if (parser.isSet(QStringLiteral("json")))
        return RunPrinter::Format::Json;
    return parser.isSet(QStringLiteral("csv")) ? RunPrinter::Format::Csv : RunPrinter::Format::Table;
}

// Prints what could be read before an error, too.
bool printRunsOfJournal(const QString &path, RunPrinter &printer, QString *error)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
        const bool isDirectory = QFileInfo(path).isDir();
        *error = QStringLiteral("%1: %2").arg(path, isDirectory ? QStringLiteral("not a file") : file.errorString());
        return false;
    }
    RunExtractor extractor([&printer](const Run &run) { printer.add(run); });
    const bool isWhole = readJournal(file, path, extractor, error);
    extractor.endSession();
    printer.finish();
    return isWhole;
}

bool printRunsOfStore(const QCommandLineParser &parser, RunPrinter &printer, QString *error)
{
    const auto filter = readRunFilter(parser, error);
    const auto store = filter ? openRecords(parser, error) : nullptr;
    const auto add = [&printer](const Run &run) { printer.add(run); };
    const bool isRead = store && store->read(*filter, add, error);
    if (isRead)
        printer.finish();
    else
        printer.flush();
    return isRead;
}

}

int runRuns(const CommandLine &line)
{
    if (line.parser.isSet(QStringLiteral("json")) && line.parser.isSet(QStringLiteral("csv")))
        return reportError(QStringLiteral("Give --json or --csv, not both."));
    RunPrinter printer(formatOf(line.parser));
    QString error;
    const QString journal = line.parser.value(QStringLiteral("from"));
    const bool done = journal.isEmpty() ? printRunsOfStore(line.parser, printer, &error)
                                        : printRunsOfJournal(journal, printer, &error);
    return done ? 0 : reportError(error);
}

int runRun(const CommandLine &line)
{
    QString error;
    const QUuid id = QUuid::fromString(line.arguments.first());
    if (id.isNull())
        return reportError(QStringLiteral("\"%1\" is no id of a run.").arg(line.arguments.first()));
    const auto store = openRecords(line.parser, &error);
    const auto run = store ? store->run(id, &error) : std::nullopt;
    if (!error.isEmpty())
        return reportError(error);
    if (!run)
        return reportError(QStringLiteral("There is no run %1 in %2.").arg(line.arguments.first(), store->path()));
    const QByteArray journal = store->journal(id, &error);
    if (!error.isEmpty())
        return reportError(error);
    if (line.parser.isSet(QStringLiteral("journal")))
        print(QString::fromUtf8(journal));
    else
        print(QString::fromUtf8(QJsonDocument(run->toJson()).toJson()) + QString::fromUtf8(journal));
    return 0;
}

}
