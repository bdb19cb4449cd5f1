#include "commands/commands.h"

#include "records/recordsoptions.h"
#include "records/runfilteroptions.h"
#include "records/runrecords.h"
#include "records/statisticsoptions.h"
#include "window/windowoptions.h"

#include <limits>

namespace panelhost {

namespace {

QCommandLineOption option(const char *name, const char *description, const char *value = nullptr)
{
    return {QString::fromLatin1(name), QString::fromUtf8(description), QString::fromLatin1(value)};
}

QCommandLineOption hidden(const char *name, const char *value)
{
    QCommandLineOption result = option(name, "", value);
    result.setFlags(QCommandLineOption::HiddenFromHelp);
    return result;
}

constexpr int anyCount = std::numeric_limits<int>::max();

}

const QList<Command> &commands()
{
    static const QList<Command> table = {
        {QString(), QStringLiteral("[options]"), QStringLiteral("opens the window"),
         WindowOptions::commandLineOptions() + RunRecords::options(), 0, 0, Platform::Display, runWindow},
        {QStringLiteral("play"), QStringLiteral("play FILE..."), QStringLiteral("plays scenarios"),
         QList<QCommandLineOption>{option("report", "Write a report with screenshots to DIR.", "DIR"),
                                   option("journal", "Write the journal to FILE.", "FILE"),
                                   option("screenshots", "Write each screenshot to DIR.", "DIR"),
                                   option("realtime", "Play by the wall clock."),
                                   option("force", "Overwrite a recording."), hidden("device", "FILE")}
             + RunRecords::options(),
         1, anyCount, Platform::Offscreen, runPlay},
        {QStringLiteral("record"), QStringLiteral("record FILE"),
         QStringLiteral("opens the window and records your actions as a scenario"),
         WindowOptions::commandLineOptions() + RunRecords::options(), 1, 1, Platform::Display, runRecord},
        {QStringLiteral("view"),
         QStringLiteral("view FILE [OTHER]"),
         QStringLiteral("shows any moment of a scenario, or of two side by side"),
         {QCommandLineOption(QStringLiteral("at"), QStringLiteral("The time to show first, such as 65s or 71250ms."),
                             QStringLiteral("TIME"), QStringLiteral("0s")),
          option("line", "The line of the journal to show first, instead of a time.", "NUMBER"),
          option("take-over", "Go on with the session from that time, without showing it first."),
          option("recording", "With --take-over: record the session as a scenario in FILE.", "FILE"),
          option("screenshot", "Write a picture of the window to FILE and exit.", "FILE")},
         1,
         2,
         Platform::Display,
         runView},
        {QStringLiteral("probe"),
         QStringLiteral("probe"),
         QStringLiteral("lists what this machine offers to a board profile"),
         {option("profile", "Write a board profile to start from.")},
         0,
         0,
         Platform::Offscreen,
         runProbe},
        {QStringLiteral("restore"),
         QStringLiteral("restore"),
         QStringLiteral("restores the LEDs and backlights of a board after a crash"),
         {WindowOptions::stateOption()},
         0,
         0,
         Platform::Offscreen,
         runRestore},
        {QStringLiteral("check"),
         QStringLiteral("check [DIR]"),
         QStringLiteral("checks the two XML files of a share directory"),
         {option("strict", "Count warnings as errors.")},
         0,
         1,
         Platform::Offscreen,
         runCheck},
        {QStringLiteral("info"),
         QStringLiteral("info"),
         QStringLiteral("loads the component and prints what each step has found"),
         {},
         0,
         0,
         Platform::Offscreen,
         runInfo},
        {QStringLiteral("runs"), QStringLiteral("runs"),
         QStringLiteral("prints the runs that were saved, or those of a journal"),
         QList<QCommandLineOption>{option("from", "The journal to derive the runs from.", "JOURNAL"),
                                   option("json", "Print one JSON object a line."),
                                   option("csv", "Print comma-separated values.")}
             + recordsOptions() + runFilterOptions(),
         0, 0, Platform::None, runRuns},
        {QStringLiteral("run"), QStringLiteral("run ID"),
         QStringLiteral("prints everything about one saved run, with its journal"),
         QList<QCommandLineOption>{option("journal", "Print the journal alone.")} + recordsOptions(), 1, 1,
         Platform::None, runRun},
        {QStringLiteral("stats"), QStringLiteral("stats"), QStringLiteral("prints statistics of the saved runs"),
         QList<QCommandLineOption>{option("html", "Write a page with charts to DIR.", "DIR"),
                                   option("json", "Print one JSON object."),
                                   option("csv", "Print comma-separated values.")}
             + recordsOptions() + statisticsOptions(),
         0, 0, Platform::None, runStats, QStringLiteral("html")},
        {QStringLiteral("prune"), QStringLiteral("prune"), QStringLiteral("copies old runs to a file and deletes them"),
         QList<QCommandLineOption>{option("older-than", "Runs that began earlier than this, such as 5y.", "AGE"),
                                   option("archive", "The new file for the copies.", "FILE"),
                                   option("unit", "Only runs of this unit.", "NUMBER"),
                                   option("yes", "Delete without being asked.")}
             + recordsOptions(),
         0, 0, Platform::None, runPrune},
        {QStringLiteral("schema"),
         QStringLiteral("schema"),
         QStringLiteral("prints the SQL that prepares a PostgreSQL database for runs"),
         {QCommandLineOption(QStringLiteral("from"), QStringLiteral("The version that the database has."),
                             QStringLiteral("VERSION"), QStringLiteral("0")),
          QCommandLineOption(QStringLiteral("role"), QStringLiteral("The role of the stations."),
                             QStringLiteral("NAME"), QStringLiteral("station"))},
         0,
         0,
         Platform::None,
         runSchema},
        {QStringLiteral("generate"),
         QStringLiteral("generate KIND"),
         QStringLiteral("prints a manual page (man [COMMAND]) or a shell completion (bash, zsh)"),
         {},
         1,
         2,
         Platform::None,
         runGenerate},
    };
    return table;
}

}
