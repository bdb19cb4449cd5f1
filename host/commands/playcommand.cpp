#include "commands/loadscenarios.h"
#include "commands/playoutputs.h"
#include "commands/progress.h"
#include "diagnostics/reporterror.h"
#include "lcd/platform.h"
#include "playing/interruption.h"
#include "playing/player.h"
#include "records/runrecords.h"
#include "time/realtimewait.h"

#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace panelhost {

namespace {

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int NotBegun = 2;

ScenarioResult playOne(const Scenario &scenario, const ScenarioResults &before, bool isRealTime, PlayOutputs &outputs,
                       RunRecords &recording, Progress &progress)
{
    Player::Options options;
    if (isRealTime)
        options.wait = waitInRealTime;
    options.takesScreenshots = outputs.wantsScreenshots();
    options.paintsLcd = hasDisplay(QGuiApplication::platformName());
    Scenario played = scenario;
    const QString unit = recording.unit().isEmpty() ? scenario.unit : recording.unit();
    played.device.sessionLine = recording.beginSession(scenario.device, unit);
    outputs.addSessionLine(played.device.sessionLine);
    options.journal = [&](const Journal::Entry &entry) {
        outputs.addEntry(entry);
        recording.add(entry);
    };
    options.isInterrupted = [] { return Interruption::signalNumber() != 0; };
    if (outputs.wantsReport()) {
        options.partialResult = [&](const ScenarioResult &result) {
            outputs.writeReport(before + ScenarioResults{result});
        };
    }
    const auto onStep = [&](const StepResult &step, qint64 number) {
        progress.step(step, number);
        outputs.writeScreenshot(scenario.file, step);
    };
    progress.begin(scenario.file, playedSteps(scenario.steps));
    auto result = Player(played, options, onStep).play();
    recording.endSession();
    progress.end(result);
    return result;
}

ScenarioResult notBegun(const Scenario &scenario)
{
    ScenarioResult result;
    result.file = scenario.file;
    result.title = scenario.title;
    result.state = ScenarioResult::State::Running;
    return result;
}

ScenarioResults playAll(const QVector<Scenario> &scenarios, bool isRealTime, PlayOutputs &outputs,
                        RunRecords &recording, Progress &progress)
{
    ScenarioResults results;
    for (const auto &scenario : scenarios) {
        if (Interruption::signalNumber() != 0)
            break;
        outputs.writeReport(results + ScenarioResults{notBegun(scenario)});
        results.append(playOne(scenario, results, isRealTime, outputs, recording, progress));
    }
    outputs.writeReport(results);
    outputs.close();
    progress.summary(results);
    return results;
}

[[noreturn]] void endInterrupted(const PlayOutputs &outputs)
{
    const auto files = outputs.files().join(QStringLiteral(", "));
    const auto name = QString::fromLocal8Bit(strsignal(Interruption::signalNumber()));
    reportError(files.isEmpty() ? QStringLiteral("Interrupted (%1).").arg(name)
                                : QStringLiteral("Interrupted (%1); what was played is in %2.").arg(name, files));
    Interruption::endProcess();
}

// On the saver's thread. A terminal shows the progress in one line instead.
void printSaved(const Run &run)
{
    if (::isatty(STDOUT_FILENO) != 0)
        return;
    std::printf("Saved the run %s.\n", qPrintable(run.id.toString(QUuid::WithoutBraces)));
    std::fflush(stdout);
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
    if (line.parser.isSet(QStringLiteral("device")))
        return reportError(QStringLiteral("A scenario is played on the simulated device; take --device away."));
    QVector<Scenario> scenarios;
    QString error;
    if (!loadScenarios(line, &scenarios))
        return reportError(QStringLiteral("Nothing was played."));
    PlayOutputs outputs(line, scenarios);
    RunRecords recording;
    recording.setSavedListener(printSaved);
    const auto onProblem = [](const QString &sentence) { reportError(sentence); };
    if (!recording.open(line.parser, RunRecords::Default::DoNotSave, onProblem, &error) || !outputs.open(&error))
        return reportError(error);
    const Interruption interruption;
    Progress progress;
    const auto results =
        playAll(scenarios, line.parser.isSet(QStringLiteral("realtime")), outputs, recording, progress);
    const bool isSaved = recording.finish();
    if (Interruption::signalNumber() != 0)
        endInterrupted(outputs);
    return outputs.hasFailed() || !isSaved ? NotBegun : statusOf(results);
}

}
