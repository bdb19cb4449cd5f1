#include "application/processsetup.h"
#include "playing/player.h"
#include "reports/htmlreport.h"
#include "reports/junitreport.h"
#include "scenario/scenarioloader.h"
#include "scenario/scenariowriter.h"
#include "shippedscenarios.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <sys/resource.h>

using namespace panelhost;

/// Scenarios played on a session with the component, recorded and reported.
class ScenarioPlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStepIsToldOnce();
    void screenshotsHaveDifferentNames();
    void failingExpectationTellsWhatWasThere();
    void stepThatCanNotBeDoneFails();
    void within_data();
    void within();
    void journalDoesNotDependOnWhatWasPlayedBefore();
    void recordingPlaysToTheSameJournal();
    void recordingIsReadableAfterEachStep();
    void killedRecorderLeavesAReadableScenario();
    void recordingIntoNowhereIsAnError();
    void fullDiskEndsTheRecordingWithAWholeStep();
    void roundsBetweenAreFolded();
    void failingRoundIsShown();
    void marksCountTheJournalFromThere();
    void longJournalIsShortened();
    void namesInTheJournalAreQuoted();
    void lcdIsPaintedOnlyForScreenshots();
    void interruptedPlayerStops();
    void reportsAreWellFormed();

private:
    ScenarioResult play(const QByteArray &text);
    ScenarioResult playFile(const QString &path, bool takesScreenshots = true, bool paintsLcd = false);

    QTemporaryDir m_directory;
    int m_told = 0;
};

namespace {

const QString RecordAndDie = QStringLiteral("--record-and-die");
constexpr int ActionsBeforeKill = 8;

/// Returns whether two pictures differ by less than anybody sees. The edges of large letters are not painted the same
/// each time: their shade depends on which text was painted before.
bool looksTheSame(const QByteArray &a, const QByteArray &b)
{
    constexpr int SmallestVisibleDifference = 16; // of 255
    const QImage first = QImage::fromData(a).convertToFormat(QImage::Format_RGB888);
    const QImage second = QImage::fromData(b).convertToFormat(QImage::Format_RGB888);
    if (first.size() != second.size())
        return false;
    for (int y = 0; y < first.height(); ++y) {
        if (!std::equal(first.constScanLine(y), first.constScanLine(y) + 3 * first.width(), second.constScanLine(y),
                        [](uchar left, uchar right) { return std::abs(left - right) < SmallestVisibleDifference; }))
            return false;
    }
    return true;
}

/// What an operator does in the recorded session, with the time before each action.
struct TimedAction
{
    Milliseconds wait;
    OperatorAction action;
};

QVector<TimedAction> timedActions()
{
    using Kind = OperatorAction::Kind;
    const auto with = [](Kind kind, const char *name, const QVariant &value) {
        return OperatorAction{kind, {{QString::fromLatin1(name), value}}};
    };
    const auto fault = [](bool on) {
        return OperatorAction{Kind::Fault,
                              {{QStringLiteral("name"), QStringLiteral("key-dead")},
                               {QStringLiteral("on"), on},
                               {QStringLiteral("key"), 27}}};
    };
    const auto down = with(Kind::Navigate, "key", QStringLiteral("down"));
    const auto enter = with(Kind::Navigate, "key", QStringLiteral("enter"));
    const auto back = with(Kind::Navigate, "key", QStringLiteral("back"));
    const auto right = with(Kind::Soft, "side", QStringLiteral("right"));
    const OperatorAction fastPlug{Kind::Plug,
                                  {{QStringLiteral("port"), QStringLiteral("usb2")}, {QStringLiteral("speed"), 1.5}}};
    return {{0, fastPlug},
            {0, with(Kind::Plug, "port", QStringLiteral("net1"))},
            {250, down},
            {1234, enter},
            {0, fault(true)},
            {17, right},
            {3, with(Kind::TBar, "position", 0.1)},
            {20000, with(Kind::Press, "key", 27)},
            {2000, with(Kind::Language, "code", QStringLiteral("zh_CN"))},
            {1, right},
            {40, with(Kind::Hold, "key", 1)},
            {60, with(Kind::Release, "key", 1)},
            {7, fault(false)},
            {30, with(Kind::Block, "port", QStringLiteral("usb1"))},
            {0, with(Kind::Unblock, "port", QStringLiteral("usb1"))},
            {0, with(Kind::Unplug, "port", QStringLiteral("net1"))},
            {500, OperatorAction{Kind::Touch, {{QStringLiteral("x"), 400}, {QStringLiteral("y"), 200}}}},
            {20, OperatorAction{Kind::TouchDown, {{QStringLiteral("x"), 400}, {QStringLiteral("y"), 200}}}},
            {20, OperatorAction{Kind::TouchMove, {{QStringLiteral("x"), 410}, {QStringLiteral("y"), 220}}}},
            {20, OperatorAction{Kind::TouchUp, {}}},
            {500, OperatorAction{Kind::ExitFactoryMode, {}}},
            {0, with(Kind::Unit, "unit", QStringLiteral("0012: \\\"B\" # é"))},
            {500, OperatorAction{Kind::EnterFactoryMode, {}}},
            {0, back}};
}

/// Does the timedActions with a writer listening; the journal of it.
QByteArray record(const QString &path, Session &session)
{
    session.lcd()->show();
    session.clock().settle();
    ScenarioWriter writer(path, session);
    QString error;
    if (!writer.open(LineFile::IfExists::Overwrite, &error))
        return error.toUtf8();
    for (const auto &timed : timedActions()) {
        session.clock().advance(timed.wait);
        if (!session.panelOperator().perform(timed.action, &error))
            return error.toUtf8();
    }
    session.clock().advance(777);
    writer.close();
    return session.journal().toJsonLines();
}

}

ScenarioResult ScenarioPlayerTest::playFile(const QString &path, bool takesScreenshots, bool paintsLcd)
{
    QStringList errors;
    const auto scenario = loadScenario(path, shippedOptions(), &errors);
    ScenarioResult result;
    result.passed = false;
    result.error = errors.join(QLatin1Char('\n'));
    if (!scenario)
        return result;
    Player::Options how;
    how.takesScreenshots = takesScreenshots;
    how.paintsLcd = paintsLcd;
    return Player(*scenario, how, [this](const StepResult &, qint64 number) { m_told = static_cast<int>(number); })
        .play();
}

ScenarioResult ScenarioPlayerTest::play(const QByteArray &text)
{
    const auto path = m_directory.filePath(QStringLiteral("scenario.yaml"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return {};
    file.close();
    return playFile(path);
}

void ScenarioPlayerTest::everyStepIsToldOnce()
{
    const auto result = play("steps:\n"
                             "  - expect: {page: menu, menu.level: 1}\n"
                             "  - repeat: {times: 3, steps: [{wait: 1s}, {screenshot: again}]}\n"
                             "  - note: done\n");
    QVERIFY2(result.passed, qPrintable(result.failureText()));
    QCOMPARE(m_told, 8);
    QCOMPARE(result.steps.size(), 8);
    QCOMPARE(result.duration, 3000);
    QCOMPARE(result.steps.at(2).screenshot, QStringLiteral("again"));
    QCOMPARE(result.steps.at(6).screenshot, QStringLiteral("again-3"));
    QCOMPARE(QImage::fromData(result.steps.at(2).png).size(), QSize(800, 480));
}

void ScenarioPlayerTest::screenshotsHaveDifferentNames()
{
    const auto result = play("steps:\n"
                             "  - repeat: {times: 2, steps: [{screenshot: a}]}\n"
                             "  - screenshot: a-2\n"
                             "  - screenshot: b\n");
    QStringList names;
    for (const StepResult &step : result.steps)
        names << step.screenshot;
    names.removeAll(QString());
    QCOMPARE(names,
             (QStringList{QStringLiteral("a"), QStringLiteral("a-2"), QStringLiteral("a-2-2"), QStringLiteral("b")}));
}

void ScenarioPlayerTest::failingExpectationTellsWhatWasThere()
{
    const auto result = play("steps:\n"
                             "  - wait: 1s\n"
                             "  - expect: {page: aging, menu.level: 1, title: Aging}\n"
                             "  - wait: 1s\n");
    QVERIFY(!result.passed);
    QCOMPARE(result.steps.size(), 2);
    const auto text = result.failureText();
    QVERIFY(text.contains(QStringLiteral("scenario.yaml:3:5: failed at 0:01.000: expect: ")));
    QVERIFY(text.contains(QStringLiteral("expected page: \"aging\"\n  found    \"menu\"")));
    QVERIFY(text.contains(QStringLiteral("found    the page \"menu\" has no such property")));
    QVERIFY(!text.contains(QStringLiteral("expected menu.level")));
    QCOMPARE(result.lastLines.size(), 10);
}

void ScenarioPlayerTest::stepThatCanNotBeDoneFails()
{
    const auto button = play("steps:\n  - soft: left\n");
    QVERIFY(!button.passed);
    QVERIFY(button.failureText().contains(QStringLiteral("The page shows no left button.")));
    const auto entry = play("steps:\n  - open: Nothing/There\n");
    QVERIFY(entry.failureText().contains(QStringLiteral("the menu has no entry \"Nothing\": it shows Aging test")));
    const auto level = play("steps:\n  - open: LogExport/Net\n");
    QVERIFY(level.failureText().contains(QStringLiteral("\"LogExport\" opens no second level")));
}

void ScenarioPlayerTest::within_data()
{
    QTest::addColumn<QByteArray>("within");
    QTest::addColumn<bool>("passes");
    QTest::addColumn<int>("duration");
    QTest::newRow("at the tick") << QByteArray("2s") << true << 2000;
    QTest::newRow("long after") << QByteArray("1h") << true << 2000;
    QTest::newRow("a millisecond too early") << QByteArray("1999ms") << false << 1999;
}

void ScenarioPlayerTest::within()
{
    QFETCH(QByteArray, within);
    QFETCH(bool, passes);
    QFETCH(int, duration);
    const auto result = play("steps:\n"
                             "  - open: AgingMode\n"
                             "  - soft: right\n"
                             "  - expect: {screen.0.brightness: 30}\n"
                             "    within: "
                             + within + '\n');
    QCOMPARE(result.passed, passes);
    QCOMPARE(result.duration, duration);
}

void ScenarioPlayerTest::journalDoesNotDependOnWhatWasPlayedBefore()
{
    const auto alone = playFile(shippedScenario("aging.yaml"));
    QVERIFY2(alone.passed, qPrintable(alone.failureText()));
    const auto other = playFile(shippedScenario("machine-fail-6.yaml"));
    QVERIFY2(other.passed, qPrintable(other.failureText()));
    QCOMPARE(playFile(shippedScenario("aging.yaml")).journalText(), alone.journalText());
    QCOMPARE(playFile(shippedScenario("machine-fail-6.yaml")).journalText(), other.journalText());
}

void ScenarioPlayerTest::recordingPlaysToTheSameJournal()
{
    const auto path = m_directory.filePath(QStringLiteral("recorded.yaml"));
    QString error;
    auto recorded = shippedOptions();
    recorded.tbarTolerance = 0.1;
    auto session = Session::open(recorded, &error);
    QVERIFY2(session, qPrintable(error));
    const auto journal = record(path, *session);
    session.reset();
    QVERIFY2(journal.startsWith("{\"seq\":1,"), journal.constData());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto text = file.readAll();
    QVERIFY(text.contains("- tbar: 0.1\n"));
    QVERIFY(text.contains("  tbar-tolerance: 0.1\n"));
    const auto lines = text.split('\n');
    QCOMPARE(lines.at(0), QByteArray("# Recorded with panelhost. Play it with: panelhost play FILE"));
    const QByteArray prefix = "# yaml-language-server: $schema=";
    QVERIFY2(lines.at(1).startsWith(prefix), lines.at(1).constData());
    QVERIFY(QFile::exists(QString::fromUtf8(lines.at(1).mid(prefix.size()))));
    // Keys by name, as in factorykeychecklist.xml.
    QVERIFY(text.contains("  - press: BACK\n"));
    QVERIFY(text.contains("  - fault: {active: true, key: BACK, name: key-dead}\n"));

    const auto played = playFile(path);
    QVERIFY2(played.passed, qPrintable(played.failureText()));
    QCOMPARE(played.journalText(), journal);
    QVERIFY(journal.count("\"kind\":\"action\"") == timedActions().size());
}

void ScenarioPlayerTest::recordingIsReadableAfterEachStep()
{
    const auto path = m_directory.filePath(QStringLiteral("growing.yaml"));
    QString error;
    auto session = Session::open(shippedOptions(), &error);
    QVERIFY2(session, qPrintable(error));
    ScenarioWriter writer(path, *session);
    QVERIFY2(writer.open(LineFile::IfExists::Overwrite, &error), qPrintable(error));
    int steps = 1;
    for (const auto &timed : timedActions().mid(0, 5)) {
        QStringList errors;
        const auto scenario = loadScenario(path, shippedOptions(), &errors);
        QCOMPARE(errors, QStringList());
        QCOMPARE(scenario->steps.size(), steps);
        session->clock().advance(timed.wait);
        QVERIFY2(session->panelOperator().perform(timed.action, &error), qPrintable(error));
        steps += timed.wait > 0 ? 2 : 1;
    }
}

void ScenarioPlayerTest::killedRecorderLeavesAReadableScenario()
{
    const auto path = m_directory.filePath(QStringLiteral("killed.yaml"));
    QProcess recorder;
    recorder.start(QCoreApplication::applicationFilePath(), {RecordAndDie, path});
    QVERIFY(recorder.waitForFinished());
    QCOMPARE(recorder.exitStatus(), QProcess::CrashExit);
    QCOMPARE(recorder.exitCode(), SIGKILL);
    const auto played = playFile(path);
    QVERIFY2(played.passed, qPrintable(played.failureText()));
    QCOMPARE(played.journalText().count("\"kind\":\"action\""), ActionsBeforeKill);
}

void ScenarioPlayerTest::recordingIntoNowhereIsAnError()
{
    QString error;
    auto session = Session::open(shippedOptions(), &error);
    QVERIFY2(session, qPrintable(error));
    ScenarioWriter writer(m_directory.filePath(QStringLiteral("no/such/place.yaml")), *session);
    QVERIFY(!writer.open(LineFile::IfExists::Overwrite, &error));
    QVERIFY2(error.contains(QStringLiteral("place.yaml: No such file or directory")), qPrintable(error));
}

// A limit of the file's size is a full disk that anybody can make.
void ScenarioPlayerTest::fullDiskEndsTheRecordingWithAWholeStep()
{
    const auto path = m_directory.filePath(QStringLiteral("full.yaml"));
    QString error;
    auto session = Session::open(shippedOptions(), &error);
    QVERIFY2(session, qPrintable(error));
    ScenarioWriter writer(path, *session);
    QStringList told;
    connect(&writer, &ScenarioWriter::failed, this, [&told](const QString &reason) { told << reason; });
    QVERIFY2(writer.open(LineFile::IfExists::Overwrite, &error), qPrintable(error));
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{static_cast<rlim_t>(QFileInfo(path).size()) + 50, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    for (int press = 0; press < 5; ++press)
        session->panelOperator().perform(
            {OperatorAction::Kind::Navigate, {{QStringLiteral("key"), QStringLiteral("down")}}}, &error);
    setrlimit(RLIMIT_FSIZE, &before);
    session->panelOperator().perform({OperatorAction::Kind::Navigate, {{QStringLiteral("key"), QStringLiteral("up")}}},
                                     &error);
    writer.close();
    QCOMPARE(told, QStringList(path + QStringLiteral(": File too large")));
    QCOMPARE(writer.error(), told.first());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().endsWith("steps:\n  - note: recorded\n  - navigate: down\n  - navigate: down\n"));
}

void ScenarioPlayerTest::roundsBetweenAreFolded()
{
    const auto result = play("steps:\n  - repeat: {times: 9, steps: [{wait: 1s}, {note: end}]}\n  - note: over\n");
    QVERIFY2(result.passed, qPrintable(result.failureText()));
    QStringList lines;
    for (const auto &step : result.steps)
        lines.append(timeText(step.at) + QLatin1Char(' ') + step.text);
    QCOMPARE(lines,
             (QStringList{QStringLiteral("0:01.000 wait: 1s"), QStringLiteral("0:01.000 note: end"),
                          QStringLiteral("0:02.000 wait: 1s"), QStringLiteral("0:02.000 note: end"),
                          QStringLiteral("0:08.000 … repetitions 3 to 8 passed: 12 steps …"),
                          QStringLiteral("0:09.000 wait: 1s"), QStringLiteral("0:09.000 note: end"),
                          QStringLiteral("0:09.000 note: over")}));
    QCOMPARE(result.stepsPlayed, 19);
    QCOMPARE(m_told, 19);
}

void ScenarioPlayerTest::failingRoundIsShown()
{
    const auto result =
        play("steps:\n  - repeat: {times: 9, steps: [{navigate: down}, {expect: {menu.row: {not: 4}}}]}\n");
    QVERIFY(!result.passed);
    QCOMPARE(result.steps.size(), 7);
    QVERIFY(result.failedStep() == &result.steps.last());
    QVERIFY(result.failureText().contains(QStringLiteral("expected menu.row: not \"4\"")));
}

void ScenarioPlayerTest::marksCountTheJournalFromThere()
{
    const auto result =
        play("steps:\n"
             "  - expect: {log-line: {contains: Successfully loaded 42, times: 2}}\n"
             "  - open: AgingMode\n"
             "  - soft: right\n"
             "  - mark: running\n"
             "  - expect: {log-line: {contains: Successfully loaded 42, times: 0}}\n"
             "  - expect: {call: {name: lcdKeyboardEvent.setScreenBrightness, times: 3}}\n"
             "    within: 2s\n"
             "  - expect: {call: {name: lcdKeyboardEvent.setScreenBrightness, arguments: {level: 30}}}\n"
             "  - expect: {call: {name: lcdKeyboardEvent.setScreenBrightness, arguments: {level: 99}, times: 0}}\n"
             "  - repeat: {times: 3, steps: [{mark: again}, {expect: {log-line: {contains: x, times: 0}}}]}\n"
             "  - expect: {call: {name: lcdKeyboardEvent.setScreenBrightness, times: 0}}\n");
    QVERIFY2(result.passed, qPrintable(result.failureText()));
}

void ScenarioPlayerTest::longJournalIsShortened()
{
    const auto result = play("steps:\n  - open: AgingMode\n  - soft: right\n  - wait: 1h\n");
    QVERIFY2(result.passed, qPrintable(result.failureText()));
    QVERIFY(result.journal.count() > 2200);
    auto lines = result.journalText().split('\n');
    lines.removeLast();
    QCOMPARE(lines.size(), 2001);
    QVERIFY(lines.at(999).startsWith("{\"seq\":1000,"));
    QCOMPARE(QString::fromUtf8(lines.at(1000)), QStringLiteral("… %1 lines …").arg(result.journal.count() - 2000));
    QVERIFY(lines.last().startsWith("{\"seq\":" + QByteArray::number(result.journal.count()) + ','));
    QVERIFY(QString::fromUtf8(htmlReport({result}))
                .contains(QStringLiteral("Journal, %1 lines").arg(result.journal.count())));
}

void ScenarioPlayerTest::namesInTheJournalAreQuoted()
{
    for (const QString &name : {QStringLiteral("lcdConfig.get"), QStringLiteral("a \"b\" \\ c"),
                                QStringLiteral("\t\x1f\x7f"), QStringLiteral("日本 é"), QString()}) {
        const Journal::Entry entry{7, 20, QStringLiteral("gui"), Journal::Kind::Call, name, {}};
        QVERIFY2(entry.toJsonLine().startsWith("{\"seq\":7,\"t\":20,\"thread\":\"gui\",\"kind\":\"call\",\"name\":\""),
                 entry.toJsonLine().constData());
        QCOMPARE(QJsonDocument::fromJson(entry.toJsonLine()).object().value(QStringLiteral("name")).toString(), name);
    }
}

namespace {

/// Counts the paint events of the application while it lives.
class PaintCounter : public QObject
{
public:
    PaintCounter() { qApp->installEventFilter(this); }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

}

void ScenarioPlayerTest::lcdIsPaintedOnlyForScreenshots()
{
    const PaintCounter counter;
    const auto unseen = playFile(shippedScenario("machine-fail-6.yaml"), false);
    QVERIFY2(unseen.passed, qPrintable(unseen.failureText()));
    QCOMPARE(counter.count(), 0);
    const auto photographed = playFile(shippedScenario("machine-fail-6.yaml"));
    const int forScreenshots = counter.count();
    QVERIFY(forScreenshots > 0);
    const auto seen = playFile(shippedScenario("machine-fail-6.yaml"), true, true);
    QVERIFY(counter.count() - forScreenshots > forScreenshots);

    QCOMPARE(photographed.journalText(), unseen.journalText());
    QCOMPARE(seen.journalText(), unseen.journalText());
    for (int step = 0; step < seen.steps.size(); ++step)
        QVERIFY2(looksTheSame(photographed.steps.at(step).png, seen.steps.at(step).png),
                 qPrintable(QString::number(step)));
}

void ScenarioPlayerTest::interruptedPlayerStops()
{
    const auto path = m_directory.filePath(QStringLiteral("long.yaml"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("steps:\n  - open: AgingMode\n  - soft: right\n  - wait: 24h\n  - note: never\n");
    file.close();
    QStringList errors;
    const auto scenario = loadScenario(path, shippedOptions(), &errors);
    QCOMPARE(errors, QStringList());
    qint64 lines = 0;
    QByteArray journal;
    Player::Options how;
    how.journal = [&](const Journal::Entry &entry) {
        ++lines;
        journal += entry.toJsonLine() + '\n';
    };
    how.isInterrupted = [&lines] { return lines >= 300; };
    const auto result = Player(*scenario, how, [](const StepResult &, qint64) {}).play();
    QCOMPARE(result.verdict(), QStringLiteral("interrupted"));
    QVERIFY(!result.passed);
    QCOMPARE(result.steps.size(), 2);
    QVERIFY(result.duration > 0 && result.duration < 3600000);
    QCOMPARE(result.journal.count(), lines);
    QCOMPARE(result.journalText(), journal);
    QVERIFY(junitReport({result}).contains("errors=\"1\""));
}

void ScenarioPlayerTest::reportsAreWellFormed()
{
    auto passed = play("title: Some <b>bold</b> & strange title\nsteps:\n  - screenshot: menu\n  - open: AgingMode\n");
    const auto failed = play("steps:\n  - expect: {page: \"<aging> & \\\"more\\\"\"}\n");
    passed.steps[0].error = QStringLiteral("a control character \x01 in a text");
    for (const auto &report : {htmlReport({passed, failed}), junitReport({passed, failed})}) {
        QXmlStreamReader xml(report);
        while (!xml.atEnd())
            xml.readNext();
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    }
    const auto html = htmlReport({passed, failed});
    QCOMPARE(html.count("data:image/png;base64,"), 2); // the second is that of the failure
    QCOMPARE(html.count("<script"), 1);                // the search
    QVERIFY(!html.contains("http"));
    QVERIFY(html.contains("1 of 2 passed"));
    QVERIFY(junitReport({passed, failed}).contains("tests=\"2\" failures=\"1\""));
}

namespace {

/// The recorder that is killed in the middle of a session.
int recordAndDie(const QString &path)
{
    QString error;
    const auto session = Session::open(shippedOptions(), &error);
    if (!session)
        return 1;
    session->lcd()->show();
    ScenarioWriter writer(path, *session);
    if (!writer.open(LineFile::IfExists::Overwrite, &error))
        return 1;
    for (const auto &timed : timedActions().mid(0, ActionsBeforeKill)) {
        session->clock().advance(timed.wait);
        session->panelOperator().perform(timed.action);
    }
    return std::raise(SIGKILL);
}

}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    const auto arguments = QApplication::arguments();
    if (arguments.value(1) == RecordAndDie)
        return recordAndDie(arguments.value(2));
    ScenarioPlayerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scenarioplayer.moc"
