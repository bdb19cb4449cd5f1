#include "../shippedscenarios.h"
#include "application/processsetup.h"
#include "panel/control.h"
#include "panel/frontpanel.h"
#include "playing/player.h"
#include "scenario/scenarioloader.h"
#include "session/session.h"
#include "time/realtimetimer.h"
#include "window/filemenu.h"
#include "window/panelwindow.h"
#include "window/playbar.h"
#include "window/scenarioopener.h"
#include "window/unitbar.h"
#include "window/windowplayback.h"
#include "window/windowsettings.h"

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtGui/QDropEvent>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>

using namespace panelhost;

/// Scenarios that are opened and played in the window.
class WindowPlaybackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theJournalIsThatOfPlay_data();
    void theJournalIsThatOfPlay();
    void theResultIsShown();
    void theFirstFailureIsShown();
    void theStripIsUsedWithTheKeyboard();
    void theOperatorWaits();
    void pauseHoldsTheScenario();
    void oneStepWhilePaused();
    void theScenarioIsStopped();
    void closingTheWindowStops();
    void theSpeedIsKept();
    void aBadFileIsExplained();
    void aScenarioIsPlayedForAUnit();
    void aFileIsOpenedWithTheDialog();
    void aFileIsDropped();
    void recentFilesAreRemembered();
    void theTimelineHasTheSameDevice();

private:
    void open(const Scenario &scenario, double speed);
    ScenarioResult play(const std::function<void(qint64 step)> &onStep = {});
    Scenario scenarioOf(const QByteArray &steps);
    QString write(const QString &name, const QByteArray &text) const;
    QLabel *label(const char *name) const { return m_window->findChild<QLabel *>(QString::fromLatin1(name)); }
    QAction *action(const char *name) const { return m_window->findChild<QAction *>(QString::fromLatin1(name)); }
    QStringList lines() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    Scenario m_scenario;
    std::unique_ptr<Player> m_player;
    Session *m_session = nullptr;
    std::unique_ptr<PanelWindow> m_window;
    std::unique_ptr<WindowPlayback> m_playback;
    std::function<void(qint64)> m_onStep;
};

void WindowPlaybackTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory->path());
}

void WindowPlaybackTest::cleanup()
{
    m_playback.reset();
    m_window.reset();
    m_player.reset();
}

QString WindowPlaybackTest::write(const QString &name, const QByteArray &text) const
{
    QFile file(m_directory->filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s", qPrintable(file.errorString()));
    return file.fileName();
}

Scenario WindowPlaybackTest::scenarioOf(const QByteArray &steps)
{
    QStringList errors;
    const auto scenario =
        loadScenario(write(QStringLiteral("small.yaml"), "title: Small\nsteps:\n" + steps), shippedOptions(), &errors);
    if (!scenario)
        qFatal("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    return *scenario;
}

void WindowPlaybackTest::open(const Scenario &scenario, double speed)
{
    m_scenario = scenario;
    Player::Options options;
    options.keepsJournal = true;
    options.paintsLcd = true;
    options.isInterrupted = [this] { return m_playback->isStopped(); };
    options.wait = [this](VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done) {
        return m_playback->wait(clock, duration, done);
    };
    m_player = std::make_unique<Player>(m_scenario, options, [this](const StepResult &step, qint64 number) {
        if (m_onStep)
            m_onStep(number);
        m_playback->stepPlayed(step, number);
    });
    QString error;
    m_session = m_player->open(&error);
    QVERIFY2(m_session, qPrintable(error));
    m_window = std::make_unique<PanelWindow>(*m_session);
    m_window->setOpensScenarios(shippedOptions());
    m_window->setSpeed(speed);
    m_window->show();
    m_playback = std::make_unique<WindowPlayback>(*m_session, *m_window);
}

ScenarioResult WindowPlaybackTest::play(const std::function<void(qint64 step)> &onStep)
{
    m_onStep = onStep;
    m_window->beginPlaying(m_scenario);
    const ScenarioResult result = m_player->play();
    m_window->endPlaying(result);
    return result;
}

QStringList WindowPlaybackTest::lines() const
{
    QStringList lines;
    const auto entries = m_session->journal().entries();
    for (const Journal::Entry &entry : entries)
        lines << QString::fromUtf8(entry.toJsonLine());
    return lines;
}

void WindowPlaybackTest::theJournalIsThatOfPlay_data()
{
    QTest::addColumn<double>("speed");
    QTest::newRow("full speed") << 0.0;
    QTest::newRow("much faster than real time") << 1000.0;
}

// The window takes input and paints in between, which changes nothing.
void WindowPlaybackTest::theJournalIsThatOfPlay()
{
    QFETCH(double, speed);
    QStringList errors;
    const auto scenario = loadScenario(shippedScenario("machine-pass.yaml"), shippedOptions(), &errors);
    QVERIFY2(scenario, qPrintable(errors.join(QLatin1Char('\n'))));
    QStringList expected;
    Player::Options options;
    options.journal = [&expected](const Journal::Entry &entry) { expected << QString::fromUtf8(entry.toJsonLine()); };
    QVERIFY(Player(*scenario, options, [](const StepResult &, qint64) {}).play().passed);
    open(*scenario, speed);
    QVERIFY(play().passed);
    QVERIFY(expected.size() > 700);
    QCOMPARE(lines(), expected);
}

void WindowPlaybackTest::theResultIsShown()
{
    open(scenarioOf("  - press: 27\n  - wait: 2s\n"), 0);
    QVERIFY(!m_window->findChild<PlayBar *>()->isVisible());
    m_onStep = {};
    play([this](qint64 step) {
        if (step == 2) {
            QCOMPARE(label("play-verdict")->text(), QStringLiteral("Playing"));
            QCOMPARE(label("play-text")->text().left(30), QStringLiteral("Small  –  step 1 of 2: press: "));
        }
    });
    QVERIFY(m_window->findChild<PlayBar *>()->isVisible());
    QCOMPARE(label("play-verdict")->text(), QStringLiteral("PASSED"));
    QCOMPARE(label("play-text")->text(), QStringLiteral("Small  –  2 of 2 steps, 0:02.000"));
    QCOMPARE(m_window->windowTitle(), QString::fromUtf8("PASSED: Small – panelhost"));
    QVERIFY(!action("play-details")->isVisible() && !action("play-stop")->isVisible());
    const QSignalSpy again(m_window.get(), &PanelWindow::scenarioOpened);
    action("play-again")->trigger();
    QCOMPARE(again.size(), 1);
    WindowSettings().save(*m_window, {});
    m_playback.reset();
    m_window.reset();
    m_window = std::make_unique<PanelWindow>(*m_session);
    WindowSettings().restore(*m_window);
    QVERIFY(m_window->findChild<PlayBar *>()->isHidden());
}

void WindowPlaybackTest::theFirstFailureIsShown()
{
    open(scenarioOf("  - expect: {page: Nowhere}\n  - wait: 1s\n"), 0);
    QVERIFY(!play().passed);
    QCOMPARE(label("play-verdict")->text(), QStringLiteral("FAILED"));
    const QString shown = label("play-text")->text();
    QVERIFY2(shown.startsWith(QStringLiteral("small.yaml:3: ")), qPrintable(shown));
    QVERIFY2(shown.contains(QStringLiteral("Nowhere")) && shown.contains(QStringLiteral("found")), qPrintable(shown));
    action("play-details")->trigger();
    const auto *details = m_window->findChild<QPlainTextEdit *>(QStringLiteral("problem-lines"));
    QVERIFY(details && details->isVisible());
    QVERIFY(details->toPlainText().contains(QStringLiteral("the last lines of the journal")));
}

// In a small window, too.
void WindowPlaybackTest::theStripIsUsedWithTheKeyboard()
{
    open(scenarioOf("  - expect: {page: Nowhere}\n"), 0);
    m_window->resize(640, 400);
    play();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    const auto *verdict = label("play-verdict");
    QVERIFY(verdict->isVisible() && verdict->width() >= verdict->sizeHint().width());
    auto *bar = m_window->findChild<PlayBar *>();
    QWidget *details = bar->widgetForAction(action("play-details"));
    QTRY_VERIFY(details->isVisible());
    for (int presses = 0; presses < 100 && QApplication::focusWidget() != details; ++presses)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), details);
    QTest::keyClick(details, Qt::Key_Space);
    QVERIFY(m_window->findChild<QDialog *>(QStringLiteral("problem")));
}

// Actions of the operator would change what is played.
void WindowPlaybackTest::theOperatorWaits()
{
    open(scenarioOf("  - wait: 1s\n  - wait: 1s\n"), 0);
    const auto press = [this] {
        Q_EMIT m_window->findChild<FrontPanel *>()->actionTriggered(
            {OperatorAction::Kind::Press, {{QStringLiteral("key"), 27}}});
    };
    const auto pressed = [this] { return lines().filter(QStringLiteral("\"name\":\"press\"")).size(); };
    play([&press](qint64) { press(); });
    QCOMPARE(pressed(), 0);
    QCOMPARE(label("message")->text(), QStringLiteral("A scenario is being played. Stop it first."));
    press();
    QCOMPARE(pressed(), 1);
}

void WindowPlaybackTest::pauseHoldsTheScenario()
{
    open(scenarioOf("  - wait: 1s\n  - press: 27\n  - wait: 1s\n"), 0);
    RealTimeTimer timer;
    Milliseconds heldAt = -1;
    int ticks = 0;
    connect(&timer, &RealTimeTimer::timeout, this, [&] {
        if (++ticks < 10)
            return;
        heldAt = m_session->clock().now();
        m_window->setSpeed(0);
        timer.stop();
    });
    play([&](qint64 step) {
        if (step == 1) {
            m_window->setSpeed(-1);
            timer.start(5);
        }
    });
    QCOMPARE(heldAt, Milliseconds(1000));
    QCOMPARE(m_session->clock().now(), Milliseconds(2000));
}

void WindowPlaybackTest::oneStepWhilePaused()
{
    open(scenarioOf("  - press: 27\n  - press: 26\n  - press: 25\n"), 0);
    RealTimeTimer timer;
    QList<qint64> played;
    connect(&timer, &RealTimeTimer::timeout, this, [&] {
        if (played.size() < 2)
            m_window->step();
        else
            m_playback->stop();
    });
    m_window->setSpeed(-1);
    timer.start(20);
    play([&played](qint64 step) { played << step; });
    QCOMPARE(played, (QList<qint64>{1, 2}));
}

void WindowPlaybackTest::theScenarioIsStopped()
{
    open(scenarioOf("  - wait: 1s\n  - wait: 60s\n"), 0);
    const ScenarioResult result = play([this](qint64) { action("play-stop")->trigger(); });
    QCOMPARE(int(result.state), int(ScenarioResult::State::Interrupted));
    QCOMPARE(label("play-verdict")->text(), QStringLiteral("Stopped"));
    QCOMPARE(m_session->clock().now(), Milliseconds(1000));
}

void WindowPlaybackTest::closingTheWindowStops()
{
    open(scenarioOf("  - wait: 1s\n  - wait: 60s\n"), 0);
    play([this](qint64) { m_window->close(); });
    QCOMPARE(m_session->clock().now(), Milliseconds(1000));
}

// The pause at the end isn't what the user has chosen.
void WindowPlaybackTest::theSpeedIsKept()
{
    open(scenarioOf("  - wait: 1s\n"), 10);
    play();
    QCOMPARE(m_window->speed(), -1.0);
    QCOMPARE(m_window->chosenSpeed(), 10.0);
    m_window->setSpeed(-1);
    QCOMPARE(m_window->chosenSpeed(), -1.0);
}

void WindowPlaybackTest::aBadFileIsExplained()
{
    open(scenarioOf("  - wait: 1s\n"), 0);
    const QSignalSpy opened(m_window.get(), &PanelWindow::scenarioOpened);
    m_window->findChild<ScenarioOpener *>()->play(
        write(QStringLiteral("bad.yaml"), "title: Bad\nsteps:\n  - pres: 27\n"));
    const auto *problem = m_window->findChild<QPlainTextEdit *>(QStringLiteral("problem-lines"));
    QVERIFY(problem && problem->isVisible());
    QVERIFY2(problem->toPlainText().contains(QStringLiteral("bad.yaml:3:5: error: ")),
             qPrintable(problem->toPlainText()));
    QVERIFY(problem->toPlainText().contains(QStringLiteral("pres")));
    QVERIFY(opened.isEmpty() && WindowSettings().recentFiles().isEmpty());
    m_window->findChild<ScenarioOpener *>()->play(QStringLiteral("/nowhere.yaml"));
    const auto problems = m_window->findChildren<QPlainTextEdit *>(QStringLiteral("problem-lines"));
    QVERIFY(problems.last()->toPlainText().contains(QStringLiteral("/nowhere.yaml")));
}

// A window that asks for units plays a scenario for the one that is tested, or for that of the scenario.
void WindowPlaybackTest::aScenarioIsPlayedForAUnit()
{
    open(scenarioOf("  - wait: 1s\n"), -1);
    m_window->askForUnits({}, QString());
    m_session->panelOperator().perform({OperatorAction::Kind::ExitFactoryMode, {}});
    const QSignalSpy opened(m_window.get(), &PanelWindow::scenarioOpened);
    auto *opener = m_window->findChild<ScenarioOpener *>();
    opener->play(m_directory->filePath(QStringLiteral("small.yaml")));
    QCOMPARE(opened.size(), 0);
    QCOMPARE(label("message")->text(), QStringLiteral("Enter the serial number of the unit first."));
    QCOMPARE(m_window->unit(), QString());
    opener->play(write(QStringLiteral("own.yaml"), "unit: C3\nsteps:\n  - wait: 1s\n"));
    QCOMPARE(opened.size(), 1);
    Q_EMIT m_window->findChild<UnitBar *>()->unitEntered(QStringLiteral("B2"));
    QCOMPARE(m_window->unit(), QStringLiteral("B2"));
    opener->play(m_directory->filePath(QStringLiteral("small.yaml")));
    QCOMPARE(opened.size(), 2);
}

void WindowPlaybackTest::aFileIsOpenedWithTheDialog()
{
    open(scenarioOf("  - wait: 1s\n"), 0);
    QString opened;
    connect(m_window.get(), &PanelWindow::scenarioOpened, this,
            [&opened](const Scenario &scenario) { opened = scenario.title; });
    action("open-scenario")->trigger();
    auto *dialog = m_window->findChild<QFileDialog *>(QStringLiteral("open-dialog"));
    QVERIFY(dialog && dialog->isVisible());
    Q_EMIT dialog->fileSelected(m_scenario.file);
    QTRY_COMPARE(opened, QStringLiteral("Small"));
}

void WindowPlaybackTest::aFileIsDropped()
{
    open(scenarioOf("  - wait: 1s\n"), 0);
    QString opened;
    connect(m_window.get(), &PanelWindow::scenarioOpened, this,
            [&opened](const Scenario &scenario) { opened = scenario.title; });
    const auto isTaken = [this](const QMimeData &data) {
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(m_window.get(), &enter);
        return enter.isAccepted();
    };
    QMimeData data;
    data.setText(QStringLiteral("text"));
    QVERIFY(!isTaken(data));
    data.setUrls({QUrl::fromLocalFile(m_scenario.file), QUrl::fromLocalFile(m_scenario.file)});
    QVERIFY(!isTaken(data));
    data.setUrls({QUrl::fromLocalFile(m_scenario.file)});
    QVERIFY(isTaken(data));
    QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &drop);
    QTRY_COMPARE(opened, QStringLiteral("Small"));
}

void WindowPlaybackTest::recentFilesAreRemembered()
{
    open(scenarioOf("  - wait: 1s\n"), 0);
    auto *files = m_window->findChild<FileMenu *>();
    auto *recent = m_window->findChild<QMenu *>(QStringLiteral("recent-files"));
    Q_EMIT files->aboutToShow();
    QVERIFY(!recent->isEnabled());
    auto *opener = m_window->findChild<ScenarioOpener *>();
    for (int number = 0; number < 10; ++number)
        opener->play(write(QStringLiteral("s%1 & co.yaml").arg(number), "steps: [{wait: 1s}]\n"));
    opener->play(m_directory->filePath(QStringLiteral("s5 & co.yaml")));
    Q_EMIT files->aboutToShow();
    QVERIFY(recent->isEnabled());
    QCOMPARE(recent->actions().size(), WindowSettings::MaxRecentFiles + 2);
    QCOMPARE(recent->actions().at(0)->text(), QStringLiteral("s5 && co.yaml"));
    QCOMPARE(recent->actions().at(1)->text(), QStringLiteral("s9 && co.yaml"));
    QString opened;
    connect(m_window.get(), &PanelWindow::scenarioOpened, this,
            [&opened](const Scenario &scenario) { opened = QFileInfo(scenario.file).fileName(); });
    recent->actions().at(1)->trigger();
    QCOMPARE(opened, QStringLiteral("s9 & co.yaml"));
    action("clear-recent-files")->trigger();
    QVERIFY(WindowSettings().recentFiles().isEmpty());
}

void WindowPlaybackTest::theTimelineHasTheSameDevice()
{
    open(scenarioOf("  - wait: 1s\n"), 0);
    const QSignalSpy requested(m_window.get(), &PanelWindow::viewRequested);
    m_window->findChild<ScenarioOpener *>()->showTimeline(m_scenario.file);
    QCOMPARE(requested.size(), 1);
    const QStringList arguments = requested.first().first().toStringList();
    QCOMPARE(arguments.mid(0, 2), (QStringList{QStringLiteral("view"), m_scenario.file}));
    const int share = arguments.indexOf(QStringLiteral("--share-unchecked"));
    QVERIFY(share > 0);
    QCOMPARE(arguments.at(share + 1), shippedOptions().share);
    QVERIFY(arguments.contains(QStringLiteral("800x480")));
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    QApplication::setQuitOnLastWindowClosed(false);
    WindowPlaybackTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowplayback.moc"
