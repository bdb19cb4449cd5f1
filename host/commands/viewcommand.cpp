#include "commands/loadscenarios.h"
#include "commands/windowappearance.h"
#include "diagnostics/reporterror.h"
#include "history/historyrecorder.h"
#include "history/sessionreplay.h"
#include "output/outputcheck.h"
#include "panel/theme.h"
#include "playing/interruption.h"
#include "scenario/scenariowriter.h"
#include "view/historywindow.h"
#include "window/panelwindow.h"
#include "window/quitonsignal.h"
#include "yaml/duration.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>

#include <algorithm>

namespace panelhost {

namespace {

constexpr int Success = 0;

/// Where to go on with a session, and the file that gets the recording.
struct TakeOver
{
    qint64 line = 0;
    QString recording; ///< empty: it isn't recorded
    LineFile::IfExists ifExists = LineFile::IfExists::Refuse;
};

/// What is shown first: a line of the journal, or a time.
struct FirstMoment
{
    qint64 line = 0; ///< 0: the time
    Milliseconds at = 0;

    qint64 lineIn(const SessionHistory &history) const
    {
        return line > 0 ? std::min(line, history.lineCount()) : history.lineAt(at);
    }
};

std::optional<Milliseconds> readTime(const CommandLine &line, QString *error)
{
    const QString text = line.parser.value(QStringLiteral("at"));
    const auto at = durationFromText(text);
    if (!at)
        *error = QStringLiteral("--at is \"%1\", expected a time such as 65s, 1.5min or 71250ms.").arg(text);
    return at;
}

std::optional<FirstMoment> readMoment(const CommandLine &line, QString *error)
{
    if (!line.parser.isSet(QStringLiteral("line"))) {
        const auto at = readTime(line, error);
        return at ? std::optional(FirstMoment{0, *at}) : std::nullopt;
    }
    const QString text = line.parser.value(QStringLiteral("line"));
    bool isNumber = false;
    const FirstMoment moment{text.toLongLong(&isNumber), 0};
    if (isNumber && moment.line > 0 && !line.parser.isSet(QStringLiteral("at")))
        return moment;
    *error = isNumber && moment.line > 0
        ? QStringLiteral("--at and --line can't be used together.")
        : QStringLiteral("--line is \"%1\", expected the number of a line of the journal, such as 120.").arg(text);
    return std::nullopt;
}

bool recordAll(const QVector<Scenario> &scenarios, HistoryWindow::Histories *histories, QString *error)
{
    const Interruption interruption;
    for (const Scenario &scenario : scenarios) {
        histories->push_back(HistoryRecorder(scenario).record([] { return Interruption::signalNumber() != 0; }, error));
        if (Interruption::signalNumber() != 0)
            Interruption::endProcess();
        if (!histories->back())
            return false;
    }
    return true;
}

// The session goes on in the window of the device. Returns when the window is closed.
int goOn(const Scenario &scenario, const SessionHistory &history, const TakeOver &where)
{
    QString error;
    std::unique_ptr<ScenarioWriter> writer;
    const auto opened = [&](Session &session, QString *problem) {
        if (where.recording.isEmpty())
            return true;
        writer = std::make_unique<ScenarioWriter>(where.recording, session);
        return OutputCheck(scenario.files).addOutput(QStringLiteral("--recording"), where.recording, true, problem)
            && writer->open(where.ifExists, problem);
    };
    const auto session = replaySession(scenario.device, history, where.line, opened, &error);
    if (!session)
        return reportError(error);
    QuitOnSignal quitOnSignal;
    PanelWindow window(*session);
    if (writer) {
        window.setRecording(QFileInfo(where.recording).fileName());
        QObject::connect(writer.get(), &ScenarioWriter::failed, &window, &PanelWindow::addFailure);
    }
    window.setSpeed(1);
    window.show();
    const int status = QuitOnSignal::isAsked() ? Success : QApplication::exec();
    session->journal().setSink({});
    if (writer)
        writer->close();
    quitOnSignal.endProcessIfAsked();
    return writer && !writer->error().isEmpty() ? reportError(writer->error()) : status;
}

// Asks for the file of the recording. Returns false if the user cancels.
bool askForRecording(QWidget *parent, TakeOver *where)
{
    QFileDialog dialog(parent, HistoryWindow::tr("Record the session"), QString(), QStringLiteral("*.yaml"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("yaml"));
    theme::applyTo(&dialog);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    *where = {where->line, dialog.selectedFiles().constFirst(), LineFile::IfExists::Overwrite};
    return true;
}

int saveScreenshot(HistoryWindow &window, const QString &path)
{
    QCoreApplication::processEvents();
    return window.grab().save(path) ? Success
                                    : reportError(QStringLiteral("%1: the picture can't be written.").arg(path));
}

int showHistories(const CommandLine &line, const HistoryWindow::Histories &histories, const FirstMoment &first,
                  std::optional<TakeOver> *takeOver)
{
    QuitOnSignal quitOnSignal;
    VirtualClock::instance().run(1); // so that Qt's timers run
    HistoryWindow window(histories);
    if (first.line > 0)
        window.showLine(0, first.lineIn(*histories.front()));
    else
        window.showTime(first.at);
    window.show();
    if (line.parser.isSet(QStringLiteral("screenshot")))
        return saveScreenshot(window, line.parser.value(QStringLiteral("screenshot")));
    QObject::connect(&window, &HistoryWindow::takeOverRequested, &window, [&](qint64 from, bool isRecorded) {
        TakeOver where{from, {}, LineFile::IfExists::Refuse};
        if (isRecorded && !askForRecording(&window, &where))
            return;
        *takeOver = where;
        QCoreApplication::quit();
    });
    const int status = QuitOnSignal::isAsked() ? Success : QApplication::exec();
    VirtualClock::instance().restart();
    quitOnSignal.endProcessIfAsked();
    return status;
}

}

int runView(const CommandLine &line)
{
    QVector<Scenario> scenarios;
    HistoryWindow::Histories histories;
    QString error;
    const auto first = readMoment(line, &error);
    if (!first || !loadScenarios(line, &scenarios) || !recordAll(scenarios, &histories, &error))
        return error.isEmpty() ? reportError(QStringLiteral("Nothing was played.")) : reportError(error);
    applyWindowAppearance(line);
    std::optional<TakeOver> takeOver;
    if (line.parser.isSet(QStringLiteral("take-over")))
        takeOver = TakeOver{first->lineIn(*histories.front()), line.parser.value(QStringLiteral("recording")),
                            LineFile::IfExists::Refuse};
    const int status = takeOver ? Success : showHistories(line, histories, *first, &takeOver);
    return takeOver ? goOn(scenarios.constFirst(), *histories.front(), *takeOver) : status;
}

}
