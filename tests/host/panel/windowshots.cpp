// Writes the pictures of the window that the documents show: windowshots <directory>
// Each picture shows a moment of a shipped scenario. tools/screenshots calls this program.

#include "../shippedscenarios.h"
#include "application/processsetup.h"
#include "history/historyrecorder.h"
#include "history/sessionreplay.h"
#include "panel/theme.h"
#include "records/recordstore.h"
#include "records/runextractor.h"
#include "records/storereader.h"
#include "scenario/scenarioloader.h"
#include "view/historywindow.h"
#include "window/journalview.h"
#include "window/panelwindow.h"
#include "window/todayview.h"
#include "window/unitpattern.h"
#include "window/windowfiles.h"
#include "window/windowoptions.h"

#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

using namespace panelhost;

namespace {

const QSize FullHd(1600, 900);
const QSize Small(1280, 800);

[[noreturn]] void fail(const QString &message)
{
    QTextStream(stderr) << "windowshots: " << message << '\n';
    std::exit(1);
}

QString directory()
{
    return QCoreApplication::arguments().at(1);
}

void save(QWidget &window, const char *name)
{
    QCoreApplication::processEvents();
    const QString file = QStringLiteral("%1/%2.png").arg(directory(), QLatin1String(name));
    if (!window.grab().save(file))
        fail(QStringLiteral("%1 can't be written").arg(file));
}

/// A scenario that was played, with all its moments.
struct Played
{
    explicit Played(const char *file)
    {
        QStringList errors;
        const auto loaded = loadScenario(shippedScenario(file), shippedOptions(), &errors);
        QString error;
        if (loaded)
            history = HistoryRecorder(*loaded).record([] { return false; }, &error);
        if (!history)
            fail(errors.join(QLatin1Char('\n')) + error);
        scenario = *loaded;
        VirtualClock::instance().run(1);
    }

    /// Returns the first line of the journal that contains @p text; the first line if it is empty.
    qint64 lineWith(const char *text) const
    {
        for (qint64 line = 1; line <= history->lineCount(); ++line) {
            if (history->line(line).contains(text))
                return line;
        }
        fail(QStringLiteral("%1: no line has \"%2\"").arg(scenario.file, QString::fromUtf8(text)));
    }

    std::unique_ptr<Session> sessionAt(const char *text) const
    {
        QString error;
        auto session = replaySession(
            scenario.device, *history, lineWith(text), [](Session &, QString *) { return true; }, &error);
        if (!session)
            fail(error);
        return session;
    }

    QVector<Run> runs() const
    {
        QVector<Run> runs;
        RunExtractor extractor([&runs](const Run &run) { runs << run; });
        for (qint64 line = 1; line <= history->lineCount(); ++line)
            extractor.add(*history->entry(line));
        extractor.endSession();
        return runs;
    }

    Scenario scenario;
    std::unique_ptr<SessionHistory> history;
};

void show(PanelWindow &window, const QSize &size)
{
    window.setSpeed(-1);
    window.resize(size);
    window.show();
    window.refresh();
}

/// A picture of the window at the first line of the journal that contains a text.
struct Picture
{
    const char *name;
    const char *scenario;
    const char *text;
    QSize size;
};

const Picture pictures[] = {
    {"window-menu", "tour.yaml", "", FullHd},
    {"window-aging", "aging.yaml", "Net ports failed", Small},
    {"window-machine-keys", "machine-pass.yaml", "Key function", Small},
    {"window-tbar-failed", "tbar-positions.yaml", "step 2 (top) failed", Small},
    {"window-verdict", "machine-fail-6.yaml", "\"#ff483c\"", Small},
};

void saveMoments()
{
    for (const Picture &picture : pictures) {
        const auto session = Played(picture.scenario).sessionAt(picture.text);
        PanelWindow window(*session);
        show(window, picture.size);
        window.findChild<JournalView *>()->setVisible(picture.size == FullHd);
        window.refresh(); // fills the journal
        save(window, picture.name);
    }
}

void saveRun(RecordStore &store, Run run, const char *unit, int minutesAgo)
{
    run.id = QUuid::createUuid();
    run.session = newSessionInfo(QString::fromLatin1(unit), QStringLiteral("line 2"), {}, QStringLiteral("en"), {});
    run.session.begin = QDateTime::currentDateTimeUtc().addSecs(-60 * minutesAgo);
    QString error;
    if (!store.save(run, {}, &error))
        fail(error);
}

// The strip that asks for serial numbers after a unit has failed, without and with the figures of today.
void saveUnits()
{
    const QTemporaryDir records;
    const QString file = records.filePath(QStringLiteral("runs.sqlite"));
    const Run passed = Played("machine-pass.yaml").runs().constFirst();
    const Played failedScenario("machine-fail-6.yaml");
    Run failed = failedScenario.runs().constFirst();
    failed.session.unit = QStringLiteral("A1046");
    QString error;
    const auto store = RecordStore::open(file, &error);
    if (!store)
        fail(error);
    const char *const units[] = {"A1041", "A1042", "A1043", "A1044", "A1045"};
    int minutesAgo = 50;
    for (const char *unit : units)
        saveRun(*store, unit == units[2] ? failed : passed, unit, minutesAgo -= 8);
    saveRun(*store, failed, "A1046", 1);

    const auto session = failedScenario.sessionAt("\"#ff483c\"");
    StoreReader reader({file, false, {}});
    PanelWindow window(*session);
    window.askForUnits(UnitPattern(), QStringLiteral("A1046"));
    window.showRun(failed);
    show(window, Small);
    save(window, "window-unit-failed");
    QEventLoop untilRead;
    window.addToday(reader, [] { return 6; });
    // After the dock's own connection, so that the figures are shown first.
    QObject::connect(&reader, &StoreReader::todayRead, &untilRead, &QEventLoop::quit, Qt::QueuedConnection);
    window.findChild<TodayView *>()->show();
    window.resize(FullHd);
    untilRead.exec();
    save(window, "window-today");
}

// The journal goes to a device that is always full.
void saveWriteFailure()
{
    const QTemporaryDir full;
    WindowOptions options;
    options.journal = full.filePath(QStringLiteral("morning.jsonl"));
    options.force = true;
    Session::Options device = shippedOptions();
    WindowFiles files;
    QString error;
    if (!QFile::link(QStringLiteral("/dev/full"), options.journal) || !files.open(device, options, {}, &error))
        fail(error);
    device.journalSink = files.journalSink();
    const auto session = Session::open(device, &error);
    if (!session)
        fail(error);
    PanelWindow window(*session);
    files.showIn(window);
    show(window, Small);
    save(window, "window-write-failure");
    files.close(*session);
}

HistoryWindow::Histories historiesOf(const QVector<const char *> &scenarios)
{
    HistoryWindow::Histories histories;
    for (const char *scenario : scenarios)
        histories.push_back(std::move(Played(scenario).history));
    return histories;
}

void saveHistories()
{
    const auto one = historiesOf({"machine-pass.yaml"});
    HistoryWindow window(one);
    window.resize(Small);
    window.show();
    window.showTime(40000);
    save(window, "view");
    window.hide();

    const auto two = historiesOf({"machine-pass.yaml", "machine-fail-5.yaml"});
    HistoryWindow compared(two);
    compared.resize(FullHd);
    compared.show();
    compared.showLine(0, firstDifference(*two[0], *two[1]));
    save(compared, "view-two");
}

}

int main(int argc, char **argv)
{
    prepareProcess(false);
    const QApplication application(argc, argv);
    prepareApplication();
    if (QCoreApplication::arguments().size() != 2)
        fail(QStringLiteral("expected <directory>"));
    saveMoments();
    saveUnits();
    saveWriteFailure();
    saveHistories();
    return 0;
}
