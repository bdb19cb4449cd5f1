#include "commands/runinwindow.h"

#include "commands/playinwindow.h"
#include "commands/windowappearance.h"

#include "device/board/savedoutputs.h"
#include "diagnostics/reporterror.h"
#include "lcd/translate/lcdfwtranslatemanager.h"
#include "output/replacefile.h"
#include "panel/patternscreens.h"
#include "profile/boardprofile.h"
#include "records/runrecords.h"
#include "records/storereader.h"
#include "window/kioskwindow.h"
#include "window/layoutdump.h"
#include "window/panelwindow.h"
#include "window/problemdialog.h"
#include "window/quitonsignal.h"
#include "window/windowfiles.h"
#include "window/windowoptions.h"
#include "window/windowsettings.h"

#include <QtCore/QJsonDocument>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

#include <cstdio>
#include <optional>

namespace panelhost {

namespace {

bool saveLayout(const PanelWindow &window, const QString &path, QString *error)
{
    return replaceFile(path, QJsonDocument(dumpLayout(window)).toJson(), error);
}

int takeScreenshot(PanelWindow &window, Session &session, const QString &path)
{
    session.clock().settle();
    window.refresh();
    QCoreApplication::processEvents();
    return window.grab().save(path) ? 0 : reportError(QStringLiteral("%1: the picture can't be written.").arg(path));
}

// Calls @p function with the window, on the GUI thread, if there is still one by then. Comes on any thread.
void callWindow(const std::function<void(PanelWindow &)> &function)
{
    const auto call = [function] {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget *widget : windows) {
            if (auto *window = qobject_cast<PanelWindow *>(widget))
                function(*window);
        }
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), call, Qt::QueuedConnection);
}

// Comes on any thread.
void tellProblem(const QString &sentence)
{
    reportError(sentence);
    callWindow([sentence](PanelWindow &window) { window.addFailure(sentence); });
}

// The same, until the runs are sent.
void tellSendingProblem(const QString &sentence)
{
    reportError(sentence);
    callWindow([sentence](PanelWindow &window) { window.setSendingProblem(sentence); });
}

// Nothing goes to a sink that is empty.
Journal::Sink both(const Journal::Sink &file, RunRecords &recording)
{
    return [file, &recording](const Journal::Entry &entry) {
        if (file)
            file(entry);
        recording.add(entry);
    };
}

// Shows what is saved: whether a unit has already passed, and the figures of today.
void showRecords(PanelWindow &window, const WindowOptions &options, const RunRecords &records, StoreReader &reader,
                 const QString &unit)
{
    QObject::connect(&window, &PanelWindow::unitBegun, &reader, &StoreReader::readPassed);
    QObject::connect(&reader, &StoreReader::passedRead, &window, &PanelWindow::warnThatUnitPassed);
    if (options.asksForUnit)
        window.askForUnits(options.unitPattern, unit);
    window.setPendingRuns(records.pendingCount());
    if (!records.location().isNone())
        window.addToday(reader, [&records] { return records.savedCount(); });
}

int runEventLoop(Session &session, WindowFiles &files)
{
    const int status = QuitOnSignal::isAsked() ? 0 : QApplication::exec();
    files.close(session);
    return status;
}

int showKiosk(Session &session, const WindowOptions &options, WindowFiles &files)
{
    KioskWindow window(session);
    files.reportFailures();
    session.clock().run(options.speed);
    window.showFullScreen();
    return runEventLoop(session, files);
}

int showPanel(Session &session, const WindowOptions &options, WindowFiles &files, const RunRecords &records,
              WindowRequest *request)
{
    StoreReader reader(records.location());
    PanelWindow window(session);
    showRecords(window, options, records, reader, request->unit);
    WindowSettings settings;
    // A picture doesn't depend on what was used last.
    const bool remembers = options.screenshot.isEmpty();
    if (remembers)
        settings.restore(window);
    window.setSpeed(options.hasSpeed || !remembers ? options.speed : settings.speed().value_or(options.speed));
    files.showIn(window);
    // A scenario needs the simulated device.
    if (!session.options().board)
        acceptRequests(window, request);
    window.show();
    const QString problem = std::exchange(request->problem, {});
    if (!problem.isEmpty())
        showProblem(&window, window.windowTitle(), PanelWindow::tr("The scenario can't be played."), problem);
    if (!options.screenshot.isEmpty())
        return takeScreenshot(window, session, options.screenshot);
    QCoreApplication::processEvents();
    QString error;
    if (!options.layout.isEmpty() && !saveLayout(window, options.layout, &error))
        return reportError(error);
    const int status = runEventLoop(session, files);
    settings.save(window, session.language());
    return status;
}

int show(Session &session, const WindowOptions &options, WindowFiles &files, const RunRecords &records,
         WindowRequest *request)
{
    std::optional<PatternScreens> patterns;
    if (session.options().board)
        patterns.emplace(session.device(), session.options().board->screens);
    return options.isKiosk ? showKiosk(session, options, files) : showPanel(session, options, files, records, request);
}

// The LCD of a kiosk fills the screen.
bool readDevice(const CommandLine &line, const WindowOptions &options, Session::Options &device, QString *error)
{
    if (options.isKiosk && !line.parser.isSet(QStringLiteral("size")))
        device.lcdSize = QGuiApplication::primaryScreen()->size();
    QStringList errors;
    if (options.board.isEmpty() || readBoardProfile(options.board, stateDirectory(options.state), device, &errors))
        return true;
    for (const QString &each : qAsConst(errors))
        std::fprintf(stderr, "%s\n", qPrintable(each));
    *error = QStringLiteral("--device is \"%1\"; the board profile has errors.").arg(options.board);
    return false;
}

QString rememberedLanguage(const QString &fallback)
{
    const QString code = WindowSettings().language(LCDFWTranslateManager::instance()->languages());
    return code.isEmpty() ? fallback : code;
}

// Returns when the window is closed and the session has ended.
int runSession(const Session::Options &device, const WindowOptions &options, WindowFiles &files,
               const RunRecords &records, WindowRequest *request, QString *error)
{
    const std::unique_ptr<Session> session = Session::open(device, error);
    if (!session || !files.beginRecording(*session, error))
        return reportError(*error);
    const int status = show(*session, options, files, records, request);
    files.close(*session);
    return status;
}

}

// The files of the command line belong to the first session. A window that asks for units begins with the next unit.
static int runNextSession(Session::Options device, const WindowOptions &options, RunRecords &records,
                          WindowRequest *request)
{
    const std::optional<Scenario> scenario = std::exchange(request->scenario, std::nullopt);
    request->isNewSession = false;
    if (scenario)
        return playInWindow(*scenario, records, request);
    if (options.asksForUnit) {
        request->unit.clear();
        device.startsInFactoryMode = false;
    }
    WindowFiles none;
    QString error;
    device.sessionLine = records.beginSession(device, request->unit);
    device.journalSink = both({}, records);
    return runSession(device, options, none, records, request, &error);
}

int runInWindow(const CommandLine &line, const QString &recording)
{
    WindowOptions options;
    WindowFiles files;
    RunRecords records;
    QString error;
    if (!options.read(line.parser, &error))
        return reportError(error);
    records.setPendingListener(
        [](int count) { callWindow([count](PanelWindow &window) { window.setPendingRuns(count); }); });
    records.setSendingListener(tellSendingProblem);
    if (options.asksForUnit)
        records.setRunListener([](const Run &run) { callWindow([run](PanelWindow &window) { window.showRun(run); }); });
    if (!records.open(line.parser, RunRecords::Default::Save, tellProblem, &error)
        || !files.open(line.session, options, recording, &error))
        return reportError(error);
    Session::Options device = line.session;
    device.startsInFactoryMode = !options.asksForUnit || !records.unit().isEmpty();
    if (!line.parser.isSet(QStringLiteral("language")) && options.screenshot.isEmpty() && !options.isKiosk)
        device.language = rememberedLanguage(device.language);
    if (!readDevice(line, options, device, &error))
        return reportError(error);
    device.sessionLine = records.beginSession(device, records.unit());
    files.addSessionLine(device.sessionLine);
    device.journalSink = both(files.journalSink(), records);
    applyWindowAppearance(line);
    // Before a signal ends the process, runs are saved, files are completed, and a board is restored.
    QuitOnSignal quitOnSignal;
    WindowRequest request;
    request.base = line.session;
    request.unit = records.unit();
    int status = runSession(device, options, files, records, &request, &error);
    if (!error.isEmpty())
        return status;
    records.endSession();
    while (request.isSet() && status == 0 && !QuitOnSignal::isAsked()) {
        status = runNextSession(device, options, records, &request);
        records.endSession();
    }
    const bool isSaved = records.finish();
    quitOnSignal.endProcessIfAsked();
    return !isSaved || files.hasFailed() ? 2 : status;
}

}
