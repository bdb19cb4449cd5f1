#include "commands.h"
#include "scenario/htmlreport.h"
#include "scenario/junitreport.h"
#include "scenario/player.h"
#include "scenario/progress.h"
#include "scenario/scenarioloader.h"
#include "scenario/screenshotnames.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <cstdio>

namespace panelhost {

namespace {

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int NotBegun = 2;

/// Where the results go. An empty path: nowhere.
struct Outputs
{
    explicit Outputs(const QCommandLineParser &parser)
        : report(parser.value(QStringLiteral("report"))), journal(parser.value(QStringLiteral("journal"))),
          screenshots(parser.value(QStringLiteral("screenshots")))
    {
    }

    bool wantsScreenshots() const { return !report.isEmpty() || !screenshots.isEmpty(); }

    QString report;
    QString journal;
    QString screenshots;
};

// All of them, before any is played.
bool loadAll(const CommandLine &line, QVector<Scenario> *scenarios)
{
    QStringList problems;
    for (const auto &path : line.arguments) {
        QStringList found;
        const auto scenario = loadScenario(path, line.session, &found);
        problems += found;
        if (scenario)
            scenarios->append(*scenario);
    }
    for (const auto &problem : qAsConst(problems))
        std::fprintf(stderr, "%s\n", qPrintable(problem));
    return problems.isEmpty();
}

bool makeDirectory(const QString &path, QString *error)
{
    if (path.isEmpty() || QDir().mkpath(path))
        return true;
    *error = QStringLiteral("The directory \"%1\" can't be made.").arg(path);
    return false;
}

// A device, a pipe: it is written and never replaced.
bool writeInto(const QString &path, const QByteArray &content, QString *error)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(content) == content.size())
        return true;
    *error = QStringLiteral("%1: %2").arg(path, file.errorString());
    return false;
}

bool write(const QString &path, const QByteArray &content, QString *error)
{
    const QFileInfo place(path);
    if (place.exists() && !place.isFile() && !place.isDir())
        return writeInto(path, content, error);
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit())
        return true;
    *error = QStringLiteral("%1: %2").arg(path, file.errorString());
    return false;
}

bool writeScreenshots(const QDir &directory, const ScenarioResult &result, ScreenshotNames &names, QString *error)
{
    for (const auto &step : result.steps) {
        if (step.png.isEmpty())
            continue;
        if (!write(directory.filePath(names.fileName(result.file, step.screenshot)), step.png, error))
            return false;
    }
    return true;
}

bool writeOutputs(const Outputs &outputs, const ScenarioResults &results, QString *error)
{
    QByteArray journal;
    ScreenshotNames names;
    for (const auto &result : results) {
        journal += result.journal;
        if (!outputs.screenshots.isEmpty() && !writeScreenshots(outputs.screenshots, result, names, error))
            return false;
    }
    if (!outputs.journal.isEmpty() && !write(outputs.journal, journal, error))
        return false;
    const QDir directory(outputs.report);
    return outputs.report.isEmpty()
        || (write(directory.filePath(QStringLiteral("report.html")), htmlReport(results), error)
            && write(directory.filePath(QStringLiteral("report.xml")), junitReport(results), error));
}

ScenarioResult playOne(const Scenario &scenario, const Player::Options &options, Progress &progress)
{
    progress.begin(scenario.file, playedSteps(scenario.steps));
    const auto tell = [&progress](const StepResult &step, qint64 number) { progress.step(step, number); };
    const auto result = Player(scenario, options, tell).play();
    progress.end(result);
    return result;
}

int statusOf(const ScenarioResults &results)
{
    const auto any = [&results](auto holds) { return std::any_of(results.begin(), results.end(), holds); };
    if (any([](const ScenarioResult &result) { return !result.error.isEmpty(); }))
        return NotBegun;
    return any([](const ScenarioResult &result) { return !result.passed; }) ? Failed : Done;
}

}

int runPlay(const CommandLine &line)
{
    const Outputs outputs(line.parser);
    QVector<Scenario> scenarios;
    QString error;
    if (!loadAll(line, &scenarios))
        return refuse(QStringLiteral("Nothing was played."));
    if (!makeDirectory(outputs.report, &error) || !makeDirectory(outputs.screenshots, &error))
        return refuse(error);
    const Player::Options options{line.parser.isSet(QStringLiteral("realtime")), outputs.wantsScreenshots()};
    Progress progress;
    ScenarioResults results;
    for (const auto &scenario : qAsConst(scenarios))
        results.append(playOne(scenario, options, progress));
    progress.summary(results);
    if (!writeOutputs(outputs, results, &error))
        return refuse(error);
    return statusOf(results);
}

}
