#include "application/processsetup.h"
#include "device/device.h"
#include "device/faults.h"
#include "panel/frontpanel.h"
#include "panel/lcdinput.h"
#include "panel/lcdview.h"
#include "panelfixture.h"
#include "scenario/scenarioloader.h"
#include "session/session.h"
#include "time/realtimetimer.h"
#include "window/faultmenu.h"
#include "window/faultview.h"
#include "window/journalmodel.h"
#include "window/journalview.h"
#include "window/panelwindow.h"
#include "window/problemdialog.h"
#include "window/speedbar.h"
#include "window/themechoice.h"
#include "window/windowfiles.h"
#include "window/windowlanguage.h"
#include "window/windowoptions.h"
#include "window/windowsettings.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGraphicsProxyWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QTreeWidget>

#include <sys/resource.h>

using namespace panelhost;

/// The window on a session with the real component, without a display.
class TestPanelWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void redrawingLeavesNoTrace();
    void keysGoThroughTheOperator();
    void touchGoesThroughTheOperator();
    void refusalIsShownAndGoesAway();
    void messageHasRoom();
    void nothingWidensTheWindow();
    void docksGetWhatThePanelCannotUse_data();
    void docksGetWhatThePanelCannotUse();
    void languageIsChosen();
    void faultIsSwitchedOnAndOff();
    void faultAsksForItsKey();
    void faultOffersItsValues();
    void failedCalibrationIsShown();
    void missingPartsAreShown();
    void speedMovesTime();
    void pausedWindowStillActs();
    void recordingLightShowsTheFile();
    void pendingRunsAreShown();
    void theReasonWhyRunsWaitGoesWithThem();
    void failuresAreShownAndStay();
    void fullDiskPutsTheRecordingLightOut();
    void journalFollows();
    void tabReachesEveryControl();
    void spaceUsesTheControl();
    void focusIsShown();
    void activatedWhileATestRuns();
    void homeAndEndMoveInTheMenu();
    void speedHasShortcuts();
    void theClockIsNeverCutOff();
    void stepGoesToTheNextLine();
    void savesWhatHappened_data();
    void savesWhatHappened();
    void recordsTheWholeSession();
    void inputFilesAreNotOverwritten();
    void helpIsShown_data();
    void helpIsShown();
    void severalKeysCanBeFaulty();
    void aWideFaultsDockShowsAllTexts();
    void docksShareTheirSide();
    void toolTipsAreShownWhilePaused();
    void ctrlFFindsInTheJournal();
    void oneTimeFormat();
    void themeIsChosen();
    void placeholdersAreDimmed();
    void dialogsHaveTheTheme();
    void dialogsFitTheWindow();
    void settingsAreRemembered();
    void damagedSettingsAreIgnored();
    void closesWithADialogOpen();
    void lcdOutlivesTheWindow();

private:
    void fillWindow(const QSize &size);
    QStringList actions() const;
    QAction *menuAction(const QString &menu, const QString &data) const;

    QTemporaryDir m_settings;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<PanelWindow> m_window;
};

void TestPanelWindow::initTestCase()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
}

void TestPanelWindow::init()
{
    Session::Options options;
    options.component = QStringLiteral(LCD_BUILD_DIR "/lib/liblcdfactorymodeimpl.so");
    options.share = QStringLiteral(LCD_BUILD_DIR "/share");
    QString error;
    m_session = Session::open(options, &error);
    QVERIFY2(m_session, qPrintable(error));
    m_window = std::make_unique<PanelWindow>(*m_session);
    m_window->setSpeed(-1);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestPanelWindow::cleanup()
{
    m_window.reset();
    m_session.reset();
}

QStringList TestPanelWindow::actions() const
{
    QStringList names;
    const auto entries = m_session->journal().entries();
    for (const Journal::Entry &entry : entries)
        if (entry.kind == Journal::Kind::Action)
            names << entry.name;
    return names;
}

QAction *TestPanelWindow::menuAction(const QString &menu, const QString &data) const
{
    const auto menus = m_window->menuBar()->findChildren<QMenu *>() + m_window->findChildren<QMenu *>();
    for (QMenu *each : menus) {
        if (each->title() != menu)
            continue;
        Q_EMIT each->aboutToShow();
        const auto entries = each->actions();
        for (QAction *action : entries)
            if (action->data().toString() == data || action->text() == data)
                return action;
    }
    return nullptr;
}

void TestPanelWindow::redrawingLeavesNoTrace()
{
    const int before = m_session->journal().entries().size();
    const Milliseconds at = m_session->clock().now();
    RealTimeTimer wall;
    int refreshes = 0;
    connect(&wall, &RealTimeTimer::timeout, this, [this, &refreshes] {
        m_window->refresh();
        ++refreshes;
    });
    wall.start(5);
    QTRY_VERIFY(refreshes >= 20);
    QCOMPARE(m_session->journal().entries().size(), before);
    QCOMPARE(m_session->clock().now(), at);
}

void TestPanelWindow::keysGoThroughTheOperator()
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(actions(), (QStringList{QStringLiteral("navigate"), QStringLiteral("navigate")}));
}

void TestPanelWindow::touchGoesThroughTheOperator()
{
    QTest::mouseClick(m_window->findChild<LcdInput *>(), Qt::LeftButton, {}, {80, 60});
    QCOMPARE(actions(), QStringList(QStringLiteral("touch")));
}

void TestPanelWindow::refusalIsShownAndGoesAway()
{
    auto *overlay = m_window->findChild<LcdInput *>();
    const auto *message = m_window->findChild<QLabel *>(QStringLiteral("message"));
    Q_EMIT overlay->actionTriggered({OperatorAction::Kind::Soft, {{QStringLiteral("side"), QStringLiteral("left")}}});
    QCOMPARE(message->text(), QStringLiteral("The page shows no left button."));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(message->text(), QString());
}

// Nothing in the corner of the menu bar is cut off by it, it stays off the menus, and the message is elided.
void TestPanelWindow::messageHasRoom()
{
    m_window->resize(1280, 800);
    m_window->show();
    m_window->setRecording(QStringLiteral("session.yaml"));
    m_session->device().calibrate(1, {});
    m_session->clock().settle();
    m_window->refresh();
    QCoreApplication::processEvents();
    const auto *bar = m_window->findChild<QWidget *>(QStringLiteral("speed-bar"));
    QVERIFY(bar->width() >= bar->sizeHint().width());
    for (const char *part : {"clock", "speed-max"}) {
        const auto *widget = bar->findChild<QWidget *>(QString::fromLatin1(part));
        QVERIFY2(widget->width() >= widget->sizeHint().width(), part);
    }
    for (const char *part : {"message", "recording"}) {
        const auto *widget = m_window->findChild<QWidget *>(QString::fromLatin1(part));
        QVERIFY2(widget->width() >= widget->sizeHint().width(), part);
    }
    const QRect lastMenu = m_window->menuBar()->actionGeometry(m_window->menuBar()->actions().last());
    QVERIFY(bar->x() >= lastMenu.right());
}

void TestPanelWindow::nothingWidensTheWindow()
{
    const QSize sizes[] = {{640, 400}, {640, 480}, {1280, 800}, {1366, 768}, {1920, 1080}};
    const QString languages[] = {QStringLiteral("de"), QStringLiteral("ja"), QStringLiteral("zh_CN"),
                                 QStringLiteral("en")};
    for (const QString &language : languages) {
        setWindowLanguage(language);
        QCoreApplication::processEvents();
        for (const QSize &size : sizes)
            fillWindow(size);
    }
}

// All that can be long is long, and has its place in the window.
void TestPanelWindow::fillWindow(const QSize &size)
{
    m_window->findChild<JournalView *>()->hide();
    m_window->resize(size);
    QTest::keyClick(m_window.get(), Qt::Key_J, Qt::ControlModifier);
    QVERIFY(m_window->findChild<JournalView *>()->isVisible());
    m_window->setRecording(QString(200, QLatin1Char('r')));
    m_window->addFailure(QString(300, QLatin1Char('f')));
    m_window->setPendingRuns(1000000);
    m_session->device().calibrate(1, {});
    const int missing = 8000 - static_cast<int>(m_session->journal().count());
    for (int line = 0; line < missing; ++line)
        m_session->journal().add(Journal::Kind::Log, QString(300, QLatin1Char('x')));
    m_session->clock().settle();
    m_window->refresh();
    m_window->refresh();
    QCoreApplication::processEvents();
    QCOMPARE(m_window->size(), size);
    const auto parts = m_window->findChildren<QWidget *>();
    for (const QWidget *part : parts) {
        if (part->isVisible() && part->window() == m_window.get() && !part->objectName().isEmpty()
            && !part->objectName().startsWith(QLatin1String("qt_"))
            && !part->objectName().startsWith(QLatin1String("key-")))
            QVERIFY2(m_window->rect().contains({part->mapTo(m_window.get(), QPoint()), part->size()}),
                     qPrintable(part->objectName()));
    }
}

void TestPanelWindow::docksGetWhatThePanelCannotUse_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("area");
    QTest::newRow("wide") << QSize(1900, 800) << int(Qt::RightDockWidgetArea);
    QTest::newRow("high") << QSize(900, 1000) << int(Qt::BottomDockWidgetArea);
    QTest::newRow("small and wide") << QSize(1366, 600) << int(Qt::RightDockWidgetArea);
    QTest::newRow("no room to spare") << QSize(1280, 800) << int(Qt::BottomDockWidgetArea);
}

// The panel fills its part of the window unless the dock would be too small, and the dock is at the side where it is
// largest.
void TestPanelWindow::docksGetWhatThePanelCannotUse()
{
    QFETCH(QSize, size);
    QFETCH(int, area);
    auto *journal = m_window->findChild<JournalView *>();
    journal->show();
    m_window->resize(size);
    QCoreApplication::processEvents();
    QCOMPARE(m_window->size(), size);
    QCOMPARE(int(m_window->dockWidgetArea(journal)), area);
    const auto *panel = m_window->findChild<FrontPanel *>();
    const QSizeF shown = QSizeF(panel->naturalSize()) * panel->scale();
    const bool isLowest = journal->height() <= 244;
    const bool isNarrowest = journal->width() <= 376;
    QVERIFY2((panel->width() - shown.width() < 12 || isLowest)
                 && (panel->height() - shown.height() < 12 || isNarrowest),
             qPrintable(QStringLiteral("%1x%2 of %3x%4")
                            .arg(shown.width())
                            .arg(shown.height())
                            .arg(panel->width())
                            .arg(panel->height())));
    QVERIFY(journal->width() >= 320 && journal->height() >= 170);
}

void TestPanelWindow::languageIsChosen()
{
    QVERIFY(m_session->languages().size() >= 2);
    const QString other = m_session->languages().first() == QLatin1String("en") ? m_session->languages().at(1)
                                                                                : m_session->languages().first();
    menuAction(QStringLiteral("&Language"), other)->trigger();
    QCOMPARE(m_session->language(), other);
    QVERIFY(menuAction(QStringLiteral("&Language"), other)->isChecked());
    QVERIFY(!menuAction(QStringLiteral("&Language"), QStringLiteral("en"))->isChecked());
}

void TestPanelWindow::faultIsSwitchedOnAndOff()
{
    const QString name = QStringLiteral("duplicate-reports");
    menuAction(QStringLiteral("Fa&ults"), name)->trigger();
    QVERIFY(m_session->faults().isOn(name));
    QVERIFY(menuAction(QStringLiteral("Fa&ults"), name)->isChecked());
    menuAction(QStringLiteral("Fa&ults"), name)->trigger();
    QVERIFY(!m_session->faults().isOn(name));
}

void TestPanelWindow::faultAsksForItsKey()
{
    const QString name = QStringLiteral("key-dead");
    menuAction(QStringLiteral("Fa&ults"), name)->trigger();
    auto *dialog = m_window->findChild<QDialog *>(QStringLiteral("fault-dialog"));
    QVERIFY(dialog && dialog->isVisible());
    QVERIFY(!m_session->faults().isOn(name));
    auto *box = dialog->findChild<QComboBox *>(QStringLiteral("key"));
    QCOMPARE(box->count(), m_session->device().state().keys.size());
    box->setCurrentIndex(box->findData(27));
    dialog->accept();
    QTRY_VERIFY(m_session->faults().isOn(name, QStringLiteral("key"), 27));
    QVERIFY(!m_session->faults().isOn(name, QStringLiteral("key"), 26));
}

void TestPanelWindow::faultOffersItsValues()
{
    menuAction(QStringLiteral("Fa&ults"), QStringLiteral("calibration-fails"))->trigger();
    auto *dialog = m_window->findChild<QDialog *>(QStringLiteral("fault-dialog"));
    QVERIFY(dialog);
    auto *steps = dialog->findChild<QComboBox *>(QStringLiteral("step"));
    QVERIFY(steps);
    QCOMPARE(steps->count(), 7);
    steps->setCurrentIndex(2);
    dialog->accept();
    QTRY_VERIFY(m_session->faults().isOn(QStringLiteral("calibration-fails"), QStringLiteral("step"), 3));
    QCOMPARE(m_session->journal().entries().last().data.value(QStringLiteral("step")), QJsonValue(3));
}

void TestPanelWindow::failedCalibrationIsShown()
{
    const auto *message = m_window->findChild<QLabel *>(QStringLiteral("message"));
    m_session->device().calibrate(1, {});
    m_session->clock().settle();
    m_window->refresh();
    QCOMPARE(message->toolTip(),
             QStringLiteral("step 1 (top) failed: the T-Bar is at 0 %, it must be at the top (95 % to 100 %)"));
    QVERIFY(message->text().startsWith(QStringLiteral("step 1 (top) failed: the T-Bar is at 0 %, it must be")));
    QVERIFY(m_window->findChild<QWidget *>(QStringLiteral("tbar"))
                ->toolTip()
                .contains(QStringLiteral("step 1 (top) failed")));
    m_session->device().calibrate(2, {});
    m_window->refresh();
    QCOMPARE(message->text(), QString());
}

// Until all parts are back. A part that is gone matters more than a failed calibration.
void TestPanelWindow::missingPartsAreShown()
{
    auto *message = m_window->findChild<QLabel *>(QStringLiteral("message"));
    QVERIFY(message);
    const auto report = [this](const char *part, bool present) {
        return m_session->panelOperator().perform(
            {OperatorAction::Kind::Part,
             {{QStringLiteral("name"), QString::fromLatin1(part)}, {QStringLiteral("present"), present}}});
    };
    QVERIFY(report("leds", false));
    QVERIFY(report("keys", false));
    m_window->refresh();
    QCOMPARE(message->toolTip(), QStringLiteral("The board has lost: leds, keys"));
    QVERIFY(report("leds", true));
    m_window->refresh();
    QCOMPARE(message->toolTip(), QStringLiteral("The board has lost: keys"));
    QVERIFY(message->isVisible());
    QVERIFY(report("keys", true));
    m_window->refresh();
    QCOMPARE(message->toolTip(), QString());
}

void TestPanelWindow::speedMovesTime()
{
    const Milliseconds before = m_session->clock().now();
    m_window->findChild<QToolButton *>(QStringLiteral("speed-10"))->click();
    QTRY_VERIFY(m_session->clock().now() > before + 500);
    m_window->findChild<QToolButton *>(QStringLiteral("speed-pause"))->click();
    const Milliseconds paused = m_session->clock().now();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(m_session->clock().now(), paused);
}

void TestPanelWindow::pausedWindowStillActs()
{
    m_session->clock().stop();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    const auto tail = m_session->journal().tail(1);
    QCOMPARE(tail.first().name, QStringLiteral("screen"));
    QCOMPARE(tail.first().data.value(QStringLiteral("menu.row")).toInt(), 1);
}

void TestPanelWindow::recordingLightShowsTheFile()
{
    const auto *light = m_window->findChild<QLabel *>(QStringLiteral("recording"));
    QVERIFY(!light->isVisible());
    m_window->setRecording(QStringLiteral("morning.yaml"));
    QVERIFY(light->isVisible());
    QVERIFY(light->text().contains(QStringLiteral("morning.yaml")));
}

void TestPanelWindow::pendingRunsAreShown()
{
    const auto *label = m_window->findChild<QLabel *>(QStringLiteral("pending-runs"));
    QVERIFY(!label->isVisible());
    m_window->setPendingRuns(1);
    QVERIFY(label->isVisible());
    QCOMPARE(label->text(), QStringLiteral("1 run to send"));
    m_window->setPendingRuns(12);
    QCOMPARE(label->text(), QStringLiteral("12 runs to send"));
    QTRY_VERIFY(label->width() >= label->sizeHint().width());
    m_window->setPendingRuns(0);
    QVERIFY(!label->isVisible());
}

void TestPanelWindow::theReasonWhyRunsWaitGoesWithThem()
{
    const auto reasons = [this] {
        QStringList texts;
        const auto labels = m_window->findChildren<QLabel *>(QStringLiteral("failure"));
        for (const QLabel *reason : labels)
            texts << reason->text();
        return texts;
    };
    const auto *label = m_window->findChild<QLabel *>(QStringLiteral("pending-runs"));
    const QString reason = QStringLiteral("Runs can't be sent: ") + QString(1000, QLatin1Char('x'));
    const QString lasting = QStringLiteral("Journal ended");
    m_window->resize(1280, 800);
    m_window->addFailure(lasting);
    m_window->setPendingRuns(12);
    m_window->setSendingProblem(QStringLiteral("an earlier reason"));
    m_window->setSendingProblem(reason);
    QCOMPARE(reasons(), (QStringList{lasting, reason}));
    QTRY_VERIFY(m_window->findChildren<QLabel *>(QStringLiteral("failure")).last()->width() > 200);
    QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(QString::number(label->width())));
    m_window->setPendingRuns(11);
    QCOMPARE(reasons(), (QStringList{lasting, reason}));
    m_window->setPendingRuns(0);
    QCOMPARE(reasons(), QStringList{lasting});
}

void TestPanelWindow::failuresAreShownAndStay()
{
    m_window->resize(1400, 800);
    QVERIFY(m_window->findChildren<QLabel *>(QStringLiteral("failure")).isEmpty());
    const QStringList texts{QStringLiteral("Recording ended: morning.yaml: No space left on device"),
                            QStringLiteral("Journal ended: j.jsonl: No space left on device")};
    for (const QString &text : texts + texts)
        m_window->addFailure(text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    m_window->refresh();
    QStringList shown;
    const auto labels = m_window->findChildren<QLabel *>(QStringLiteral("failure"));
    for (const QLabel *label : labels) {
        QTRY_VERIFY(label->isVisible() && label->width() >= label->sizeHint().width());
        shown << label->text();
    }
    QCOMPARE(shown, texts);
}

// A limit of the file's size is a full disk that anybody can make.
void TestPanelWindow::fullDiskPutsTheRecordingLightOut()
{
    const QTemporaryDir directory;
    const auto *light = m_window->findChild<QLabel *>(QStringLiteral("recording"));
    const QString recording = directory.filePath(QStringLiteral("morning.yaml"));
    WindowOptions options;
    options.journal = directory.filePath(QStringLiteral("j.jsonl"));
    WindowFiles files;
    QString error;
    QVERIFY2(files.open(m_session->options(), options, recording, &error), qPrintable(error));
    m_session->journal().setSink(files.journalSink());
    QVERIFY2(files.beginRecording(*m_session, &error), qPrintable(error));
    files.showIn(*m_window);
    QVERIFY(light->isVisible());

    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{static_cast<rlim_t>(QFileInfo(recording).size()) + 10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    for (int presses = 0; presses < 3; ++presses)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    setrlimit(RLIMIT_FSIZE, &before);
    QVERIFY(!light->isVisible());
    QTRY_COMPARE(m_window->findChildren<QLabel *>(QStringLiteral("failure")).size(), 2);
    QStringList shown;
    const auto labels = m_window->findChildren<QLabel *>(QStringLiteral("failure"));
    for (const QLabel *label : labels)
        shown << label->text();
    QCOMPARE(shown,
             (QStringList{QStringLiteral("Recording ended: morning.yaml: File too large"),
                          QStringLiteral("Journal ended: j.jsonl: File too large")}));
    files.close(*m_session);
    QVERIFY(files.hasFailed());
}

void TestPanelWindow::journalFollows()
{
    auto *journal = m_window->findChild<JournalView *>();
    journal->show();
    m_window->refresh();
    QCOMPARE(journal->model().total(), m_session->journal().entries().size());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(journal->model().total(), m_session->journal().entries().size());
}

// From the LCD once around the window and back.
void TestPanelWindow::tabReachesEveryControl()
{
    QWidget *lcd = QApplication::focusWidget();
    QVERIFY(isViewOfLcd(*lcd, *m_session->lcd()));
    QSet<const QWidget *> reached;
    for (int presses = 0; presses < 200; ++presses) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
        if (QApplication::focusWidget() == lcd)
            break;
    }
    QCOMPARE(QApplication::focusWidget(), lcd);
    const auto controls = m_window->findChildren<Control *>();
    for (const Control *control : controls)
        QVERIFY2(qobject_cast<const LcdInput *>(control) || reached.contains(control),
                 qPrintable(control->objectName()));
    for (const char *name : {"speed-pause", "speed-max"})
        QVERIFY2(reached.contains(m_window->findChild<QWidget *>(QString::fromLatin1(name))), name);
    QTest::keyClick(lcd, Qt::Key_Backtab);
    QVERIFY(QApplication::focusWidget() != lcd);
    QCOMPARE(actions(), QStringList());
}

void TestPanelWindow::spaceUsesTheControl()
{
    auto *port = m_window->findChild<Control *>(QStringLiteral("usb2"));
    port->setFocus();
    QTest::keyClick(port, Qt::Key_Space);
    QTest::keyClick(port, Qt::Key_Space, Qt::ShiftModifier);
    auto *bar = m_window->findChild<Control *>(QStringLiteral("tbar"));
    bar->setFocus();
    QTest::keyClick(bar, Qt::Key_End);
    QTest::keyClick(bar, Qt::Key_Return);
    QCOMPARE(actions(),
             (QStringList{QStringLiteral("plug"), QStringLiteral("block"), QStringLiteral("tbar"),
                          QStringLiteral("navigate")}));
    auto *pause = m_window->findChild<QToolButton *>(QStringLiteral("speed-10"));
    pause->setFocus();
    QTest::keyClick(pause, Qt::Key_Space);
    QVERIFY(pause->isChecked());
}

void TestPanelWindow::focusIsShown()
{
    auto *key = m_window->findChild<Control *>(QStringLiteral("key-27"));
    const QImage before = key->grab().toImage();
    key->setFocus();
    QVERIFY(key->hasFocus());
    QVERIFY(key->grab().toImage() != before);
}

// The page takes the keyboard while the window is inactive, and has it when the window becomes active.
void TestPanelWindow::activatedWhileATestRuns()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    for (const char *key : {"down", "enter", "enter"})
        m_session->panelOperator().perform(
            {OperatorAction::Kind::Navigate, {{QStringLiteral("key"), QString::fromLatin1(key)}}});
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(isViewOfLcd(*QApplication::focusWidget(), *m_session->lcd()));
    const auto count = actions().size();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QCOMPARE(actions().size(), count + 1);
}

void TestPanelWindow::homeAndEndMoveInTheMenu()
{
    const auto rowAfter = [this](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        return m_session->journal().tail(1).first().data.value(QStringLiteral("menu.row")).toInt(-1);
    };
    const int last = rowAfter(Qt::Key_End);
    QVERIFY2(last >= 3, qPrintable(QString::number(last)));
    QCOMPARE(rowAfter(Qt::Key_Home), 0);
    QCOMPARE(rowAfter(Qt::Key_PageDown), last);
    QCOMPARE(rowAfter(Qt::Key_PageUp), 0);
}

void TestPanelWindow::speedHasShortcuts()
{
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(m_window.get(), key, Qt::ControlModifier);
        return m_window->speed();
    };
    QCOMPARE(press(Qt::Key_2), 10.0);
    QCOMPARE(press(Qt::Key_P), -1.0);
    QVERIFY(m_window->findChild<QToolButton *>(QStringLiteral("speed-pause"))->isChecked());
    QCOMPARE(press(Qt::Key_P), 10.0);
    QCOMPARE(press(Qt::Key_1), 1.0);
    QCOMPARE(press(Qt::Key_P), -1.0);
}

// The aging test changes something in each of its steps.
// However long a session is.
void TestPanelWindow::theClockIsNeverCutOff()
{
    auto *bar = m_window->findChild<SpeedBar *>();
    const auto *clock = m_window->findChild<QLabel *>(QStringLiteral("clock"));
    const QPair<Milliseconds, const char *> times[] = {{3599999999, "999:59:59.999"},
                                                       {3600000000, "1000:00:00"},
                                                       {359999999999, "99999:59:59"},
                                                       {3599999999999, "999999:59:59"}};
    for (const auto &time : times) {
        bar->setNow(time.first);
        QCOMPARE(clock->text(), QString::fromLatin1(time.second));
        QCoreApplication::processEvents();
        QVERIFY2(clock->sizeHint().width() <= clock->width(), time.second);
    }
}

void TestPanelWindow::stepGoesToTheNextLine()
{
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    for (int steps = 0; steps < 3; ++steps) {
        const qint64 lines = m_session->journal().count();
        const Milliseconds before = m_session->clock().now();
        m_window->step();
        QVERIFY(m_session->journal().count() > lines);
        QVERIFY(m_session->clock().now() > before);
        QVERIFY(m_session->clock().now() < before + 60000);
    }
    QCOMPARE(m_window->speed(), -1.0);
}

void TestPanelWindow::savesWhatHappened_data()
{
    QTest::addColumn<QByteArray>("beginning");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("save-journal") << QByteArray("{\"seq\":1,") << QByteArray("\"name\":\"navigate\"");
    QTest::newRow("save-report") << QByteArray("<!DOCTYPE html>") << QByteArray("navigate");
    QTest::newRow("save-window") << QByteArray("\x89PNG") << QByteArray("IDAT");
    QTest::newRow("save-lcd") << QByteArray("\x89PNG") << QByteArray("IDAT");
}

void TestPanelWindow::savesWhatHappened()
{
    QFETCH(QByteArray, beginning);
    QFETCH(QByteArray, content);
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("saved"));
    QTest::keyClick(m_window.get(), Qt::Key_Down);
    m_window->findChild<QAction *>(QString::fromLatin1(QTest::currentDataTag()))->trigger();
    auto *dialog = m_window->findChild<QFileDialog *>(QStringLiteral("save-dialog"));
    QVERIFY(dialog);
    Q_EMIT dialog->fileSelected(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    QVERIFY2(saved.startsWith(beginning), saved.left(40).constData());
    QVERIFY(saved.contains(content));
    QVERIFY(m_window->findChild<QLabel *>(QStringLiteral("message"))->text().contains(path));
}

// Also what was done before the recording was started, so that the file plays the session from its beginning.
void TestPanelWindow::recordsTheWholeSession()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("session.yaml"));
    auto *record = m_window->findChild<QAction *>(QStringLiteral("record"));
    const auto *light = m_window->findChild<QLabel *>(QStringLiteral("recording"));
    QTest::keyClick(m_window.get(), Qt::Key_Down);
    m_session->clock().advance(1500);
    record->trigger();
    Q_EMIT m_window->findChild<QFileDialog *>(QStringLiteral("save-dialog"))->fileSelected(path);
    QVERIFY(light->isVisible());
    QTest::keyClick(m_window.get(), Qt::Key_Up);
    record->trigger();
    QVERIFY(!light->isVisible());
    QTest::keyClick(m_window.get(), Qt::Key_Down);
    QStringList errors;
    const auto scenario = loadScenario(path, {}, &errors);
    QVERIFY2(scenario, qPrintable(errors.join(QLatin1Char('\n'))));
    QStringList steps;
    for (const Step &step : scenario->steps)
        steps << step.text;
    steps.removeFirst();
    QCOMPARE(steps.size(), 3);
    QVERIFY2(steps[0].contains(QStringLiteral("down")) && steps[1].startsWith(QStringLiteral("wait"))
                 && steps[2].contains(QStringLiteral("up")),
             qPrintable(steps.join(QLatin1Char('\n'))));
    m_window->setRecording(QStringLiteral("other.yaml"));
    QVERIFY(!record->isEnabled());
}

void TestPanelWindow::inputFilesAreNotOverwritten()
{
    m_window->findChild<QAction *>(QStringLiteral("save-journal"))->trigger();
    auto *dialog = m_window->findChild<QFileDialog *>(QStringLiteral("save-dialog"));
    const QString input = QStringLiteral(LCD_BUILD_DIR "/share/factorymenu.xml");
    QFile file(input);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    Q_EMIT dialog->fileSelected(input);
    file.seek(0);
    QCOMPARE(file.readAll(), before);
    QVERIFY(
        m_window->findChild<QLabel *>(QStringLiteral("message"))->text().contains(QStringLiteral("factorymenu.xml")));
}

void TestPanelWindow::helpIsShown_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("text");
    QTest::newRow("manual") << QStringLiteral("&Manual") << QStringLiteral("T-Bar calibration");
    QTest::newRow("shortcuts") << QStringLiteral("&Keyboard shortcuts") << QStringLiteral("Ctrl+J");
    QTest::newRow("about") << QStringLiteral("&About panelhost")
                           << QStringLiteral("Qt: ") + QString::fromLatin1(qVersion());
}

void TestPanelWindow::helpIsShown()
{
    QFETCH(QString, entry);
    QFETCH(QString, text);
    menuAction(QStringLiteral("&Help"), entry)->trigger();
    const auto *dialog = m_window->findChild<QDialog *>(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(dialog && dialog->isVisible());
    const QString shown = dialog->findChild<QTextBrowser *>()->toPlainText();
    QVERIFY2(shown.contains(text), qPrintable(shown.left(300)));
}

static QTreeWidgetItem *itemOf(const QTreeWidget &tree, const QString &fault, const QString &value = {})
{
    for (int row = 0; row < tree.topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = tree.topLevelItem(row);
        if (item->data(0, Qt::UserRole).toString() != fault)
            continue;
        for (int child = 0; child < item->childCount() && !value.isEmpty(); ++child)
            if (item->child(child)->data(0, Qt::UserRole + 1).toString() == value)
                return item->child(child);
        return item;
    }
    return nullptr;
}

// In a dock below the panel, what a fault applies to isn't elided.
void TestPanelWindow::aWideFaultsDockShowsAllTexts()
{
    m_window->findChild<JournalView *>()->hide();
    m_window->resize(1280, 800);
    m_window->findChild<FaultView *>()->show();
    auto *tree = m_window->findChild<QTreeWidget *>(QStringLiteral("fault-tree"));
    QTRY_VERIFY(tree->width() > 1200);
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        const QString text = tree->topLevelItem(row)->text(1);
        QVERIFY(!text.isEmpty());
        QVERIFY2(tree->fontMetrics().horizontalAdvance(text) < tree->columnWidth(1) - 8, qPrintable(text));
    }
}

void TestPanelWindow::severalKeysCanBeFaulty()
{
    const QString name = QStringLiteral("key-dead");
    const QString key = QStringLiteral("key");
    m_window->findChild<FaultView *>()->show();
    auto *tree = m_window->findChild<QTreeWidget *>(QStringLiteral("fault-tree"));
    itemOf(*tree, name)->setCheckState(0, Qt::Checked);
    QVERIFY(itemOf(*tree, name)->isExpanded() && !m_session->faults().isOn(name));
    for (const char *halKey : {"26", "27"})
        itemOf(*tree, name, QString::fromLatin1(halKey))->setCheckState(0, Qt::Checked);
    QVERIFY(m_session->faults().isOn(name, key, 26) && m_session->faults().isOn(name, key, 27));
    QVERIFY(!m_session->faults().isOn(name, key, 5));
    QCOMPARE(itemOf(*tree, name)->checkState(0), Qt::Checked);
    const auto faultsOf = [this](const char *control) {
        return m_window->findChild<Control *>(QString::fromLatin1(control))->faults();
    };
    QCOMPARE(faultsOf("key-27"), QStringLiteral("A key gives no event"));
    QCOMPARE(faultsOf("key-5"), QString());
    itemOf(*tree, QStringLiteral("null-payload"))->setCheckState(0, Qt::Checked);
    itemOf(*tree, QStringLiteral("calibration-fails"), QStringLiteral("3"))->setCheckState(0, Qt::Checked);
    QVERIFY(!faultsOf("net1").isEmpty() && !faultsOf("usb4").isEmpty() && !faultsOf("tbar").isEmpty());
    itemOf(*tree, name, QStringLiteral("26"))->setCheckState(0, Qt::Unchecked);
    QVERIFY(!m_session->faults().isOn(name, key, 26) && m_session->faults().isOn(name, key, 27));
    m_window->findChild<QPushButton *>(QStringLiteral("faults-clear"))->click();
    for (const FaultInfo &fault : Faults::all())
        QVERIFY2(!m_session->faults().isOn(fault.name), qPrintable(fault.name));
    QVERIFY(faultsOf("key-27").isEmpty() && faultsOf("net1").isEmpty() && faultsOf("tbar").isEmpty());
    QCOMPARE(itemOf(*tree, name)->checkState(0), Qt::Unchecked);
}

// Each has room for what it is for, such as a few faults.
void TestPanelWindow::docksShareTheirSide()
{
    auto *journal = m_window->findChild<JournalView *>();
    auto *faults = m_window->findChild<FaultView *>();
    m_window->resize(1600, 800);
    journal->show();
    faults->show();
    QCoreApplication::processEvents();
    QVERIFY2(qAbs(journal->height() - faults->height()) < 40,
             qPrintable(QStringLiteral("%1 %2").arg(journal->height()).arg(faults->height())));
    m_window->resize(900, 1000);
    QCoreApplication::processEvents();
    QVERIFY2(qAbs(journal->width() - faults->width()) < 40,
             qPrintable(QStringLiteral("%1 %2").arg(journal->width()).arg(faults->width())));
}

void TestPanelWindow::toolTipsAreShownWhilePaused()
{
    const auto tip = [] {
        const auto windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
            return window->inherits("QTipLabel") && window->isVisible();
        });
        return found == windows.end() ? QString() : static_cast<QLabel *>(*found)->text();
    };
    auto *key = m_window->findChild<Control *>(QStringLiteral("key-27"));
    QTest::mouseMove(key, key->rect().center());
    QTRY_VERIFY(tip().contains(QStringLiteral("hold until the next click")));
    auto *port = m_window->findChild<Control *>(QStringLiteral("usb2"));
    QTest::mouseMove(port, port->rect().center());
    QTRY_VERIFY(tip().contains(QStringLiteral("block or unblock")));
    QCOMPARE(m_session->clock().now(), Milliseconds(0));
}

void TestPanelWindow::ctrlFFindsInTheJournal()
{
    auto *journal = m_window->findChild<JournalView *>();
    journal->hide();
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(journal->isVisible());
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("journal-text"));
    m_window->refresh();
    const int all = journal->model().rowCount();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("factorymenu"));
    QVERIFY(journal->model().rowCount() > 0 && journal->model().rowCount() < all);
    QCOMPARE(actions(), QStringList());
}

// In the clock, in the lines of the journal and in their details.
void TestPanelWindow::oneTimeFormat()
{
    auto *journal = m_window->findChild<JournalView *>();
    journal->show();
    m_session->clock().advance(65250);
    QTest::keyClick(m_session->lcd(), Qt::Key_Down);
    m_session->panelOperator().perform(
        {OperatorAction::Kind::Navigate, {{QStringLiteral("key"), QStringLiteral("down")}}});
    m_window->refresh();
    const QString time = QStringLiteral("1:05.250");
    QCOMPARE(m_window->findChild<QLabel *>(QStringLiteral("clock"))->text(), time);
    const QModelIndex last = journal->model().index(journal->model().rowCount() - 1);
    QVERIFY2(last.data().toString().trimmed().startsWith(time + QLatin1Char(' ')), qPrintable(last.data().toString()));
    m_window->findChild<QAbstractItemView *>(QStringLiteral("journal-lines"))->setCurrentIndex(last);
    const auto *detail = m_window->findChild<QTreeWidget *>(QStringLiteral("journal-detail"));
    QCOMPARE(detail->topLevelItem(1)->text(1), time);
}

// The window and what belongs to it, but not the front panel, which is a picture of a device.
void TestPanelWindow::themeIsChosen()
{
    const auto colorsOf = [this] {
        const auto *dock = m_window->findChild<JournalView *>();
        return QList<QColor>{m_window->menuBar()->palette().color(QPalette::Window),
                             dock->palette().color(QPalette::Text), QToolTip::palette().color(QPalette::ToolTipBase)};
    };
    m_window->findChild<JournalView *>()->show();
    const QList<QColor> dark = colorsOf();
    const auto *panel = m_window->findChild<FrontPanel *>();
    const QImage device = m_window->findChild<QWidget *>(QStringLiteral("key-27"))->grab().toImage();
    auto *menu = m_window->findChild<QMenu *>(QStringLiteral("theme"));
    QCOMPARE(menu->actions().size(), 3);
    menu->actions().at(2)->trigger();
    const QList<QColor> light = colorsOf();
    QVERIFY(dark[0].lightness() < 60 && light[0].lightness() > 200);
    QVERIFY(dark[1].lightness() > 200 && light[1].lightness() < 60);
    QVERIFY(dark[2].lightness() < 60 && light[2].lightness() > 200);
    QCOMPARE(m_window->findChild<QWidget *>(QStringLiteral("key-27"))->grab().toImage(), device);
    QVERIFY(panel->isVisible());
    Q_EMIT menu->aboutToShow();
    QVERIFY(menu->actions().at(2)->isChecked());
    WindowSettings().save(*m_window, {});
    QCOMPARE(WindowSettings().theme(), QStringLiteral("light"));
    menu->actions().at(1)->trigger();
    QCOMPARE(colorsOf(), dark);
    setThemeChoice(QStringLiteral("pink"));
    QCOMPARE(themeChoice(), QStringLiteral("dark"));
    setSystemDark(false);
    menu->actions().at(0)->trigger();
    QCOMPARE(colorsOf(), light);
    setSystemDark(true);
    menu->actions().at(0)->trigger();
    QCOMPARE(colorsOf(), dark);
}

// Returns how much the most visible pixel inside the frame of @p field differs from its ground.
static int contrastIn(QLineEdit &field)
{
    const QImage picture = field.grab(field.rect().adjusted(4, 4, -4, -4)).toImage();
    const int ground = qGray(picture.pixel(0, 0));
    int contrast = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            contrast = qMax(contrast, qAbs(qGray(picture.pixel(x, y)) - ground));
    return contrast;
}

// In both themes: seen, but not mistaken for a text that was entered.
void TestPanelWindow::placeholdersAreDimmed()
{
    m_window->askForUnits({}, QString());
    m_window->findChild<JournalView *>()->show();
    for (const char *theme : {"as it is at first", "light", "dark"}) {
        setThemeChoice(QString::fromLatin1(theme));
        for (const char *name : {"unit-input", "journal-text"}) {
            auto *field = m_window->findChild<QLineEdit *>(QString::fromLatin1(name));
            QVERIFY2(field && !field->placeholderText().isEmpty(), name);
            field->clearFocus();
            const int placeholder = contrastIn(*field);
            field->setText(field->placeholderText());
            const int text = contrastIn(*field);
            field->clear();
            QVERIFY2(text > 150 && placeholder > 60 && placeholder * 4 < text * 3,
                     qPrintable(QStringLiteral("%1 %2: %3 of %4")
                                    .arg(QLatin1String(theme), QLatin1String(name))
                                    .arg(placeholder)
                                    .arg(text)));
        }
    }
}

void TestPanelWindow::dialogsHaveTheTheme()
{
    setThemeChoice(QStringLiteral("light"));
    m_window->findChild<QAction *>(QStringLiteral("save-journal"))->trigger();
    menuAction(QStringLiteral("&Help"), QStringLiteral("&Manual"))->trigger();
    const auto dialogs = m_window->findChildren<QDialog *>();
    QCOMPARE(dialogs.size(), 2);
    for (const QDialog *dialog : dialogs)
        QVERIFY(dialog->palette().color(QPalette::Window).lightness() > 200);
    // The icons of Qt are dark.
    const auto buttons = dialogs.at(0)->findChildren<QPushButton *>() + dialogs.at(1)->findChildren<QPushButton *>();
    QVERIFY(buttons.size() >= 3);
    for (const QPushButton *button : buttons)
        QVERIFY2(button->icon().isNull(), qPrintable(button->text()));
    setThemeChoice(QStringLiteral("dark"));
    for (const QDialog *dialog : dialogs)
        QVERIFY(dialog->palette().color(QPalette::Window).lightness() < 60);
}

void TestPanelWindow::dialogsFitTheWindow()
{
    m_window->resize(640, 400);
    m_window->findChild<QAction *>(QStringLiteral("save-journal"))->trigger();
    menuAction(QStringLiteral("&Help"), QStringLiteral("&Manual"))->trigger();
    showProblem(m_window.get(), QStringLiteral("Problem"), QString(500, QLatin1Char('x')),
                QString(5000, QLatin1Char('y')));
    const auto dialogs = m_window->findChildren<QDialog *>();
    QCOMPARE(dialogs.size(), 3);
    for (const QDialog *dialog : dialogs)
        QVERIFY2(dialog->width() <= 640 && dialog->height() <= 400, qPrintable(dialog->objectName()));
}

void TestPanelWindow::settingsAreRemembered()
{
    const QTemporaryDir directory;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    m_window->resize(700, 500);
    m_window->setSpeed(10);
    m_window->findChild<JournalView *>()->hide();
    m_window->findChild<FaultView *>()->show();
    m_window->setArrangesDocks(false);
    WindowSettings().save(*m_window, QStringLiteral("de"));
    m_window = std::make_unique<PanelWindow>(*m_session);
    const WindowSettings settings;
    settings.restore(*m_window);
    QCOMPARE(m_window->size(), QSize(700, 500));
    QVERIFY(m_window->findChild<JournalView *>()->isHidden() && !m_window->findChild<FaultView *>()->isHidden());
    QVERIFY(!m_window->arrangesDocks());
    QCOMPARE(settings.speed().value_or(0), 10.0);
    QCOMPARE(settings.language({QStringLiteral("en"), QStringLiteral("de")}), QStringLiteral("de"));
    QCOMPARE(settings.language({QStringLiteral("en")}), QString());
}

void TestPanelWindow::damagedSettingsAreIgnored()
{
    const QTemporaryDir directory;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("panelhost")));
    QFile file(directory.filePath(QStringLiteral("panelhost/panelhost.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("speed=fast\nlanguage=\x00\xff\n[window\ngeometry=@ByteArray(\x01garbage)\n]]]]");
    file.close();
    const QSize before = m_window->size();
    const WindowSettings settings;
    settings.restore(*m_window);
    QCOMPARE(m_window->size(), before);
    QVERIFY(!settings.speed());
    QCOMPARE(settings.language({QStringLiteral("en")}), QString());
}

void TestPanelWindow::closesWithADialogOpen()
{
    menuAction(QStringLiteral("Fa&ults"), QStringLiteral("key-dead"))->trigger();
    QVERIFY(m_window->findChild<QDialog *>(QStringLiteral("fault-dialog")));
    m_window->close();
    m_window.reset();
    QVERIFY(!m_session->faults().isOn(QStringLiteral("key-dead")));
}

void TestPanelWindow::lcdOutlivesTheWindow()
{
    QWidget *lcd = m_session->lcd();
    m_window.reset();
    QVERIFY(!lcd->graphicsProxyWidget());
    QVERIFY(m_session->panelOperator().perform(
        {OperatorAction::Kind::Navigate, {{QStringLiteral("key"), QStringLiteral("down")}}}));
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    QApplication::setQuitOnLastWindowClosed(false);
    TestPanelWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_panelwindow.moc"
