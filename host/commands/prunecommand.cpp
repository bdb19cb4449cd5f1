#include "commands/commands.h"
#include "diagnostics/reporterror.h"
#include "output/standardoutput.h"
#include "records/openrecords.h"
#include "records/runarchive.h"
#include "records/statisticstext.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>

#include <unistd.h>

namespace panelhost {

namespace {

// "5y", "6m", "10w" or "30d" before @p now; invalid for anything else.
QDateTime timeBefore(const QDateTime &now, const QString &age)
{
    static const QRegularExpression form(QStringLiteral("^([1-9]\\d{0,4})([ymwd])$"));
    const auto match = form.match(age);
    const int count = match.captured(1).toInt();
    if (!match.hasMatch())
        return {};
    switch (match.captured(2).at(0).toLatin1()) {
    case 'y':
        return now.addYears(-count);
    case 'm':
        return now.addMonths(-count);
    case 'w':
        return now.addDays(-7LL * count);
    default:
        return now.addDays(-count);
    }
}

std::optional<RunFilter> readFilter(const QCommandLineParser &parser, QString *error)
{
    const QString age = parser.value(QStringLiteral("older-than"));
    RunFilter filter;
    filter.unit = parser.value(QStringLiteral("unit"));
    filter.before = timeBefore(QDateTime::currentDateTimeUtc(), age);
    if (age.isEmpty())
        *error = QStringLiteral("Give --older-than AGE, such as 5y.");
    else if (!filter.before.isValid())
        *error = QStringLiteral("--older-than is \"%1\", expected an age such as 5y, 6m, 10w or 30d.").arg(age);
    else
        return filter;
    return std::nullopt;
}

bool isConfirmed(const QString &question, QString *error)
{
    if (::isatty(STDIN_FILENO) == 0) {
        *error = QStringLiteral("Nothing was deleted: the standard input is no terminal. Give --yes to delete without "
                                "being asked.");
        return false;
    }
    print(question + QStringLiteral(" [y/N] "));
    const QString answer = QTextStream(stdin).readLine().trimmed().toLower();
    if (answer == QLatin1String("y") || answer == QLatin1String("yes"))
        return true;
    *error = QStringLiteral("Nothing was deleted.");
    return false;
}

bool prune(RecordStore &store, const RunFilter &filter, const QCommandLineParser &parser, QString *error)
{
    const QString archive = QFileInfo(parser.value(QStringLiteral("archive"))).absoluteFilePath();
    const auto ids = store.sentIds(filter, error);
    if (!ids)
        return false;
    if (ids->isEmpty()) {
        print(QStringLiteral("There are no such runs.\n"));
        return true;
    }
    const QString question =
        QStringLiteral("%1 in %2 began before %3. Copy to %4 and delete?")
            .arg(countText(ids->size(), "run", "runs"), store.path(), filter.before.toString(Qt::ISODate), archive);
    if (!parser.isSet(QStringLiteral("yes")) && !isConfirmed(question, error))
        return false;
    if (!moveToArchive(store, *ids, archive, error))
        return false;
    print(QStringLiteral("Deleted %1; copies are in %2.\n").arg(countText(ids->size(), "run", "runs"), archive));
    return true;
}

}

int runPrune(const CommandLine &line)
{
    QString error;
    const auto filter = readFilter(line.parser, &error);
    if (!filter)
        return reportError(error);
    if (line.parser.value(QStringLiteral("archive")).isEmpty())
        return reportError(QStringLiteral("Give --archive FILE, a new file for copies of the runs that are deleted."));
    const auto store = openRecords(line.parser, &error);
    return store && prune(*store, *filter, line.parser, &error) ? 0 : reportError(error);
}

}
