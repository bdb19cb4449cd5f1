#include "../shippedscenarios.h"
#include "application/processsetup.h"
#include "history/historyrecorder.h"
#include "journal/entrytext.h"
#include "panel/theme.h"
#include "panel/windowtheme.h"
#include "scenario/scenarioloader.h"
#include "view/historypane.h"
#include "view/historywindow.h"
#include "view/timelinebar.h"
#include "window/windowlanguage.h"

#include <QtGui/QScreen>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QToolBar>

#include <map>

using namespace panelhost;

using Direction = SessionHistory::Direction;

/// The window that shows moments of a session, with keyboard and mouse.
class HistoryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void beginsAtTheBeginning();
    void fitsTheScreen();
    void everythingIsSeenInASmallWindow_data();
    void everythingIsSeenInASmallWindow();
    void theListIsAsHighAsTheUserWants();
    void stepsGoToLinesScreensAndEvents();
    void stepsStopAtTheEnds();
    void aClickOnTheTimelineSelectsATime();
    void draggingOnTheTimelineSelectsTimes();
    void aLineOfTheJournalIsSelected();
    void longLinesAreElided();
    void thePanelLooksAsItDid();
    void twoSessionsAreInStep();
    void twoEqualSessionsDoNotDiffer();
    void theFirstDifferenceIsShown();
    void theDifferenceIsSeenAtItsTime();
    void theSessionIsTakenOver();
    void theFailedStepIsShown();

private:
    void open(const QStringList &scenarios);
    void trigger(const char *name);
    TimelineBar *timeline(int index) const { return m_window->findChildren<TimelineBar *>().at(index); }
    const SessionHistory &history(int index) const { return *m_histories->at(static_cast<std::size_t>(index)); }

    std::map<QStringList, HistoryWindow::Histories> m_recorded; ///< by the scenarios; each is played once
    const HistoryWindow::Histories *m_histories = nullptr;      ///< what the window shows
    std::unique_ptr<HistoryWindow> m_window;
};

namespace {

const QString pass = shippedScenario("machine-pass.yaml");
const QString fail = shippedScenario("machine-fail-6.yaml");
const QString aging = shippedScenario("aging.yaml");

std::unique_ptr<SessionHistory> historyOf(const QString &path)
{
    QStringList errors;
    const auto scenario = loadScenario(path, shippedOptions(), &errors);
    if (!scenario)
        qFatal("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    QString error;
    auto history = HistoryRecorder(*scenario).record([] { return false; }, &error);
    if (!history)
        qFatal("%s", qPrintable(error));
    return history;
}

}

void HistoryWindowTest::initTestCase()
{
    VirtualClock::instance().run(1);
}

void HistoryWindowTest::init()
{
    open({pass});
}

void HistoryWindowTest::cleanup()
{
    m_window.reset();
}

void HistoryWindowTest::open(const QStringList &scenarios)
{
    cleanup();
    HistoryWindow::Histories &histories = m_recorded[scenarios];
    if (histories.empty()) {
        for (const QString &path : scenarios)
            histories.push_back(historyOf(path));
    }
    m_histories = &histories;
    VirtualClock::instance().run(1);
    m_window = std::make_unique<HistoryWindow>(histories);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void HistoryWindowTest::trigger(const char *name)
{
    auto *action = m_window->findChild<QAction *>(QString::fromLatin1(name));
    QVERIFY2(action && action->isEnabled(), name);
    action->trigger();
}

void HistoryWindowTest::beginsAtTheBeginning()
{
    QCOMPARE(m_window->line(0), history(0).lineAt(0));
    QVERIFY(m_window->windowTitle().startsWith(history(0).title()));
    QVERIFY(!m_window->findChild<QAction *>(QStringLiteral("first-difference")));
}

void HistoryWindowTest::fitsTheScreen()
{
    const QSize free = m_window->screen()->availableSize();
    QVERIFY2(m_window->width() <= free.width() && m_window->height() < free.height(),
             qPrintable(QStringLiteral("%1x%2").arg(m_window->width()).arg(m_window->height())));
}

void HistoryWindowTest::everythingIsSeenInASmallWindow_data()
{
    QTest::addColumn<QString>("language");
    const QStringList languages = windowLanguages();
    for (const QString &language : languages)
        QTest::newRow(qPrintable(language)) << language;
}

// On a screen with twice the resolution, for example: all buttons, and more of the panel than of the journal.
void HistoryWindowTest::everythingIsSeenInASmallWindow()
{
    QFETCH(QString, language);
    setWindowLanguage(language);
    const auto restore = qScopeGuard([] { setWindowLanguage(QStringLiteral("en")); });
    open({pass, fail});
    m_window->resize(960, 500);
    QCoreApplication::processEvents();
    QCOMPARE(m_window->width(), 960);
    const auto actions = m_window->findChildren<QAction *>();
    for (const QAction *action : actions) {
        const auto *bar = qobject_cast<QToolBar *>(action->parentWidget());
        const QWidget *button = bar ? bar->widgetForAction(const_cast<QAction *>(action)) : nullptr;
        if (button && !action->objectName().isEmpty())
            QVERIFY2(button->isVisible(), qPrintable(action->objectName()));
    }
    const auto *pane = m_window->findChild<HistoryPane *>();
    const auto *lines = m_window->findChild<QListView *>(QStringLiteral("history-lines"));
    QVERIFY2(pane->height() > 2 * lines->height() && lines->height() >= 3 * lines->sizeHintForRow(0),
             qPrintable(QStringLiteral("%1 and %2").arg(pane->height()).arg(lines->height())));
    m_window->resize(1900, 800);
    QCoreApplication::processEvents();
    const auto *takeOver = m_window->findChild<QToolBar *>(QStringLiteral("history-take-over"));
    QCOMPARE(takeOver->y(), m_window->findChild<QToolBar *>(QStringLiteral("history-steps"))->y());
}

void HistoryWindowTest::theListIsAsHighAsTheUserWants()
{
    auto *parts = m_window->findChild<QSplitter *>(QStringLiteral("history-parts"));
    const auto *lines = m_window->findChild<QListView *>(QStringLiteral("history-lines"));
    const int before = lines->height();
    auto *border = parts->handle(1);
    QTest::mousePress(border, Qt::LeftButton, {}, border->rect().center());
    const QPointF up = border->rect().center() - QPoint(0, 100);
    QMouseEvent move(QEvent::MouseMove, up, border->mapToGlobal(up.toPoint()), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(border, &move);
    QTest::mouseRelease(border, Qt::LeftButton);
    QCoreApplication::processEvents();
    QVERIFY2(lines->height() > before + 50, qPrintable(QString::number(lines->height())));
    const int chosen = lines->height();
    m_window->resize(m_window->size() + QSize(0, 10));
    QCoreApplication::processEvents();
    QVERIFY(qAbs(lines->height() - chosen) <= 10);
}

void HistoryWindowTest::stepsGoToLinesScreensAndEvents()
{
    m_window->showLine(0, 100);
    trigger("next-line");
    QCOMPARE(m_window->line(0), 101);
    trigger("previous-line");
    QCOMPARE(m_window->line(0), 100);
    trigger("next-screen");
    QCOMPARE(m_window->line(0), history(0).findLine(Journal::Kind::Screen, 100, Direction::Forward));
    QVERIFY(m_window->line(0) > 100);
    m_window->showLine(0, 100);
    trigger("previous-screen");
    QCOMPARE(m_window->line(0), history(0).findLine(Journal::Kind::Screen, 100, Direction::Back));
    m_window->showLine(0, 100);
    trigger("next-event");
    QCOMPARE(m_window->line(0), history(0).findMarker(100, Direction::Forward)->line);
    const qint64 event = m_window->line(0);
    trigger("next-event");
    trigger("previous-event");
    QCOMPARE(m_window->line(0), event);
    QVERIFY(m_window->findChild<QLabel *>(QStringLiteral("history-time"))
                ->text()
                .contains(QStringLiteral("line %1 of %2").arg(event).arg(history(0).lineCount())));
}

void HistoryWindowTest::stepsStopAtTheEnds()
{
    m_window->showLine(0, 1);
    for (const char *name : {"previous-line", "previous-screen", "previous-event"}) {
        trigger(name);
        QCOMPARE(m_window->line(0), 1);
    }
    const qint64 last = history(0).lineCount();
    m_window->showLine(0, last);
    for (const char *name : {"next-line", "next-screen", "next-event"}) {
        trigger(name);
        QCOMPARE(m_window->line(0), last);
    }
}

void HistoryWindowTest::aClickOnTheTimelineSelectsATime()
{
    TimelineBar *bar = timeline(0);
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() / 2, 5));
    const Milliseconds middle = history(0).timeOf(m_window->line(0));
    QVERIFY2(qAbs(middle - history(0).duration() / 2) < history(0).duration() / 20,
             qPrintable(QString::number(middle)));
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() - 1, 5));
    QCOMPARE(m_window->line(0), history(0).lineCount());
    QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(0, 5));
    QCOMPARE(m_window->line(0), history(0).lineAt(0));
}

void HistoryWindowTest::draggingOnTheTimelineSelectsTimes()
{
    TimelineBar *bar = timeline(0);
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(0, 5));
    Milliseconds before = history(0).timeOf(m_window->line(0));
    for (int part = 1; part < 4; ++part) {
        const QPointF place(bar->width() * part / 4, 5);
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(bar, &move);
        const Milliseconds at = history(0).timeOf(m_window->line(0));
        QVERIFY2(at > before, qPrintable(QStringLiteral("%1 after %2").arg(at).arg(before)));
        before = at;
    }
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(bar->width(), 5));
    QCOMPARE(history(0).timeOf(m_window->line(0)), before);
}

// Without a scroll bar; the whole line is in the tool tip.
void HistoryWindowTest::longLinesAreElided()
{
    const auto *list = m_window->findChild<QListView *>(QStringLiteral("history-lines"));
    const qint64 screen = history(0).findLine(Journal::Kind::Screen, 1, Direction::Forward);
    const QModelIndex line = list->model()->index(static_cast<int>(screen) - 1, 0);
    QVERIFY(list->fontMetrics().horizontalAdvance(line.data().toString()) > list->viewport()->width());
    QCOMPARE(list->visualRect(line).width(), list->viewport()->width());
    QVERIFY(!list->horizontalScrollBar()->isVisible());
    QVERIFY(Qt::mightBeRichText(line.data(Qt::ToolTipRole).toString()));
}

void HistoryWindowTest::aLineOfTheJournalIsSelected()
{
    auto *list = m_window->findChild<QListView *>(QStringLiteral("history-lines"));
    QVERIFY(list);
    list->setCurrentIndex(list->model()->index(122, 0));
    QCOMPARE(m_window->line(0), 123);
    m_window->showLine(0, 40);
    QCOMPARE(list->currentIndex().row(), 39);
    QCOMPARE(list->currentIndex().data().toString(), lineText(*history(0).entry(40)));
}

void HistoryWindowTest::thePanelLooksAsItDid()
{
    auto *pane = m_window->findChild<HistoryPane *>();
    m_window->showLine(0, 60);
    const QImage there = pane->grab().toImage();
    m_window->showLine(0, history(0).lineCount());
    QVERIFY(pane->grab().toImage() != there);
    m_window->showLine(0, 60);
    QCOMPARE(pane->grab().toImage(), there);
}

void HistoryWindowTest::twoSessionsAreInStep()
{
    open({pass, fail});
    QTest::mouseClick(timeline(1), Qt::LeftButton, {}, QPoint(timeline(1)->width() / 3, 5));
    const Milliseconds at = history(1).timeOf(m_window->line(1));
    QVERIFY(at > 0);
    QVERIFY(history(0).timeOf(m_window->line(0)) <= at + history(1).duration() / 50);
    trigger("next-line");
    QCOMPARE(m_window->line(0), history(0).lineAt(history(1).timeOf(m_window->line(1))));
}

void HistoryWindowTest::twoEqualSessionsDoNotDiffer()
{
    open({aging, aging});
    QVERIFY(!m_window->findChild<QAction *>(QStringLiteral("first-difference"))->isEnabled());
}

void HistoryWindowTest::theFirstDifferenceIsShown()
{
    open({pass, fail});
    const qint64 line = firstDifference(history(0), history(1));
    QVERIFY(line > 1);
    trigger("first-difference");
    QCOMPARE(m_window->line(0), line);
    QCOMPARE(m_window->line(1), line);
    const auto lists = m_window->findChildren<QListView *>(QStringLiteral("history-lines"));
    QCOMPARE(lists.size(), 2);
    for (const QListView *list : lists) {
        const QModelIndex index = list->model()->index(static_cast<int>(line) - 1, 0);
        QCOMPARE(index.data(Qt::ForegroundRole).value<QColor>(), QColor(theme::Red));
        QVERIFY(!index.siblingAtRow(0).data(Qt::ForegroundRole).isValid());
        QVERIFY(index.data(Qt::FontRole).value<QFont>().bold()); // the selected line isn't red
        QVERIFY(!index.siblingAtRow(0).data(Qt::FontRole).isValid());
    }
}

// The line at the current time doesn't cover the one at the difference.
void HistoryWindowTest::theDifferenceIsSeenAtItsTime()
{
    open({pass, fail});
    const auto redPixels = [this](int index) {
        const QImage picture = timeline(index)->grab().toImage();
        int count = 0;
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, 1) == QColor(theme::colors().red);
        return count;
    };
    trigger("first-difference");
    QVERIFY(redPixels(0) > 0);
    QVERIFY(redPixels(1) > 0);
}

void HistoryWindowTest::theSessionIsTakenOver()
{
    QSignalSpy spy(m_window.get(), &HistoryWindow::takeOverRequested);
    m_window->showLine(0, 77);
    trigger("take-over");
    trigger("take-over-recorded");
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy.at(0), (QVariantList{77, false}));
    QCOMPARE(spy.at(1), (QVariantList{77, true}));
}

void HistoryWindowTest::theFailedStepIsShown()
{
    auto *message = m_window->findChild<QLabel *>(QStringLiteral("history-message"));
    QVERIFY(message->isHidden());
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("failing.yaml")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("steps:\n  - expect: {page: aging}\n");
    file.close();
    open({file.fileName()});
    message = m_window->findChild<QLabel *>(QStringLiteral("history-message"));
    QVERIFY(!message->isHidden());
    QVERIFY(message->text().contains(QStringLiteral("failing.yaml:2")));
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    HistoryWindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_historywindow.moc"
