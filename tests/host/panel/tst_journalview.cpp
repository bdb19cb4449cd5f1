#include "window/journalmodel.h"
#include "window/journalview.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

#include <ctime>

using namespace panelhost;

class TestJournalView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsLinesInOrder();
    void takesInABoundedNumber();
    void forgetsTheOldest();
    void skipsWhatTheJournalForgot();
    void counterTellsOfForgottenLines();
    void journalRemembersTheNewest();
    void sinkGetsEveryLine();
    void filtersByText();
    void filtersByKind();
    void newLinesPassTheFilter();
    void followsTheEnd();
    void staysWhereTheReaderIs();
    void hiddenViewDoesNotWork();
    void selectedLinesAreCopied();
    void detailShowsTheData();
    void filterKeepsThePosition();
    void clearHidesLinesUntilNow();
    void theMessageGetsTheWidth();
    void longLinesAreElided();
    void theFilterHasTheFontOfItsNeighbors();
    void aWideDockHasOneRowAboveTheLines();
    void shownLinesAreExported();
    void staysFastWithManyLines();
};

static void fill(Journal &journal, int lines, Journal::Kind kind = Journal::Kind::Call)
{
    for (int i = 0; i < lines; ++i)
        journal.add(kind, QStringLiteral("service.call%1").arg(i));
}

static QString textAt(const JournalModel &model, int row)
{
    return model.index(row).data().toString();
}

static QString fullTextAt(const JournalModel &model, int row)
{
    return model.index(row).data(JournalModel::TextRole).toString();
}

static void pollAll(JournalModel &model, const Journal &journal)
{
    for (int before = -1; before != model.total() && model.total() < journal.entries().size();) {
        before = model.total();
        model.poll();
    }
}

void TestJournalView::showsLinesInOrder()
{
    Journal journal;
    JournalModel model(journal);
    model.poll();
    QCOMPARE(model.rowCount(), 0);
    fill(journal, 2);
    model.poll();
    journal.add(Journal::Kind::Log, QStringLiteral("third"));
    model.poll();
    QCOMPARE(model.rowCount(), 3);
    QVERIFY(textAt(model, 0).contains(QStringLiteral("service.call0")));
    QVERIFY(textAt(model, 1).contains(QStringLiteral("service.call1")));
    QVERIFY(textAt(model, 2).contains(QStringLiteral("third")));
    QCOMPARE(model.index(2).data(JournalModel::KindRole).toInt(), int(Journal::Kind::Log));
}

void TestJournalView::takesInABoundedNumber()
{
    Journal journal;
    JournalModel model(journal);
    fill(journal, 2 * JournalModel::PollBudget + 1);
    model.poll();
    QCOMPARE(model.total(), JournalModel::PollBudget);
    QVERIFY(textAt(model, 0).contains(QStringLiteral("call0")));
    pollAll(model, journal);
    QCOMPARE(model.total(), 2 * JournalModel::PollBudget + 1);
}

void TestJournalView::forgetsTheOldest()
{
    Journal journal;
    JournalModel model(journal);
    model.setText(QStringLiteral("call7"));
    fill(journal, JournalModel::LineLimit);
    pollAll(model, journal);
    QCOMPARE(model.total(), 100000);
    QCOMPARE(model.forgotten(), 0);
    fill(journal, JournalModel::PollBudget);
    model.poll();
    QCOMPARE(model.total(), 100000);
    QCOMPARE(model.forgotten(), JournalModel::PollBudget);
    QCOMPARE(model.everSeen(), 100000 + JournalModel::PollBudget);
    QVERIFY(textAt(model, 0).contains(QStringLiteral("call7000")));
    QVERIFY(textAt(model, model.rowCount() - 1).contains(QStringLiteral("call799")));
    model.setText({});
    QCOMPARE(model.rowCount(), 100000);
    QVERIFY(textAt(model, 0).contains(QStringLiteral("call4000")));
}

// The thread, and what is the same for all log lines, is only in the details and in what is copied and filtered.
void TestJournalView::theMessageGetsTheWidth()
{
    Journal journal;
    JournalModel model(journal);
    journal.add(
        Journal::Kind::Log, QStringLiteral("default"),
        {{QStringLiteral("level"), QStringLiteral("debug")}, {QStringLiteral("text"), QStringLiteral("hello")}});
    journal.add(Journal::Kind::Call, QStringLiteral("service.call"), {{QStringLiteral("on"), true}});
    model.poll();
    QCOMPARE(textAt(model, 0).simplified(), QStringLiteral("0:00.000 log hello"));
    QCOMPARE(textAt(model, 1).simplified(), QStringLiteral("0:00.000 call service.call on=true"));
    QCOMPARE(model.index(0).data(JournalModel::TextRole).toString(), journal.entries().first().toText());
    QVERIFY(journal.entries().first().toText().contains(QStringLiteral("other")));
    model.setText(QStringLiteral("level=debug"));
    QCOMPARE(model.rowCount(), 1);
}

// As after a long time with the dock closed.
void TestJournalView::skipsWhatTheJournalForgot()
{
    Journal journal({}, 50);
    JournalModel model(journal);
    fill(journal, 30);
    model.poll();
    fill(journal, 100);
    model.poll();
    QCOMPARE(model.total(), 50);
    QCOMPARE(model.everSeen(), 130);
    QCOMPARE(model.forgotten(), 80);
    QCOMPARE(model.rowCount(), 50);
    QVERIFY(textAt(model, 0).contains(QStringLiteral("call50")));
    QVERIFY(textAt(model, 49).contains(QStringLiteral("call99")));
}

void TestJournalView::counterTellsOfForgottenLines()
{
    Journal journal({}, 50);
    JournalView view(journal, nullptr);
    view.show();
    fill(journal, 40);
    view.poll();
    const auto *count = view.findChild<QLabel *>(QStringLiteral("journal-count"));
    const auto *forgotten = view.findChild<QLabel *>(QStringLiteral("journal-forgotten"));
    QCOMPARE(count->text(), QStringLiteral("40 of 40"));
    QVERIFY(!forgotten->isVisible());
    fill(journal, 100);
    view.poll();
    QCOMPARE(count->text(), QStringLiteral("50 of 140"));
    QVERIFY(forgotten->isVisible());
    QCOMPARE(forgotten->text(),
             QStringLiteral("The oldest 90 lines were discarded; use --journal FILE to keep all lines."));
    view.setFile(QStringLiteral("j.jsonl"));
    view.poll();
    QCOMPARE(forgotten->text(), QStringLiteral("The oldest 90 lines are only in j.jsonl."));
}

void TestJournalView::journalRemembersTheNewest()
{
    Journal journal;
    fill(journal, 100010);
    QCOMPARE(journal.count(), 100010);
    QCOMPARE(journal.entries().size(), 100000);
    QCOMPARE(journal.entries().first().sequence, 11);
    QCOMPARE(journal.tail(2).first().sequence, 100009);
    QCOMPARE(journal.entriesFrom(1, 3).first().sequence, 11);
    QCOMPARE(journal.entriesFrom(100009, 3).size(), 2);
    QCOMPARE(journal.entriesFrom(100011, 3).size(), 0);
}

void TestJournalView::sinkGetsEveryLine()
{
    QVector<qint64> sequences;
    Journal journal([&sequences](const Journal::Entry &entry) { sequences << entry.sequence; }, 2);
    fill(journal, 4);
    QCOMPARE(sequences, (QVector<qint64>{1, 2, 3, 4}));
    journal.setSink({});
    fill(journal, 1);
    QCOMPARE(sequences.size(), 4);
}

void TestJournalView::filtersByText()
{
    Journal journal;
    JournalModel model(journal);
    fill(journal, 100);
    model.poll();
    model.setText(QStringLiteral("CALL9"));
    QCOMPARE(model.rowCount(), 11);
    QVERIFY(textAt(model, 0).contains(QStringLiteral("call9")));
    QVERIFY(textAt(model, 1).contains(QStringLiteral("call90")));
    model.setText({});
    QCOMPARE(model.rowCount(), 100);
}

void TestJournalView::filtersByKind()
{
    Journal journal;
    fill(journal, 3, Journal::Kind::Call);
    fill(journal, 5, Journal::Kind::Log);
    JournalView view(journal, nullptr);
    view.show();
    view.poll();
    QCOMPARE(view.model().rowCount(), 8);
    view.findChild<QToolButton *>(QStringLiteral("journal-log"))->click();
    QCOMPARE(view.model().rowCount(), 3);
    view.findChild<QToolButton *>(QStringLiteral("journal-call"))->click();
    QCOMPARE(view.model().rowCount(), 0);
    view.findChild<QToolButton *>(QStringLiteral("journal-log"))->click();
    QCOMPARE(view.model().rowCount(), 5);
}

void TestJournalView::newLinesPassTheFilter()
{
    Journal journal;
    JournalView view(journal, nullptr);
    view.show();
    QTest::keyClicks(view.findChild<QLineEdit *>(), QStringLiteral("wanted"));
    journal.add(Journal::Kind::Log, QStringLiteral("other"));
    journal.add(Journal::Kind::Log, QStringLiteral("wanted"));
    view.poll();
    QCOMPARE(view.model().rowCount(), 1);
    QCOMPARE(view.model().total(), 2);
}

void TestJournalView::followsTheEnd()
{
    Journal journal;
    JournalView view(journal, nullptr);
    view.resize(500, 300);
    view.show();
    const auto *bar = view.findChild<QListView *>()->verticalScrollBar();
    for (int i = 0; i < 5; ++i) {
        fill(journal, 200);
        view.poll();
        QTRY_VERIFY(bar->maximum() > 200 * i);
        QTRY_COMPARE(bar->value(), bar->maximum());
    }
}

void TestJournalView::staysWhereTheReaderIs()
{
    Journal journal;
    JournalView view(journal, nullptr);
    view.resize(500, 300);
    view.show();
    auto *bar = view.findChild<QListView *>()->verticalScrollBar();
    fill(journal, 200);
    view.poll();
    QTRY_COMPARE(bar->value(), bar->maximum());
    bar->setValue(50);
    const int before = bar->maximum();
    fill(journal, 200);
    view.poll();
    QTRY_VERIFY(bar->maximum() > before);
    QCOMPARE(bar->value(), 50);
}

void TestJournalView::hiddenViewDoesNotWork()
{
    Journal journal;
    JournalView view(journal, nullptr);
    fill(journal, 10);
    view.poll();
    QCOMPARE(view.model().total(), 0);
    view.show();
    view.poll();
    QCOMPARE(view.model().total(), 10);
}

// A refresh has 33 ms. With 100,000 lines in the list, taking in new ones must leave most of that to the rest.
static void select(const QListView &list, int first, int last)
{
    list.selectionModel()->select({list.model()->index(first, 0), list.model()->index(last, 0)},
                                  QItemSelectionModel::ClearAndSelect);
}

void TestJournalView::selectedLinesAreCopied()
{
    Journal journal;
    fill(journal, 20);
    JournalView view(journal, nullptr);
    view.show();
    view.poll();
    const auto *list = view.findChild<QListView *>(QStringLiteral("journal-lines"));
    select(*list, 3, 5);
    view.findChild<QAction *>(QStringLiteral("journal-copy"))->trigger();
    const QStringList copied = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(copied,
             (QStringList{fullTextAt(view.model(), 3), fullTextAt(view.model(), 4), fullTextAt(view.model(), 5)}));
}

void TestJournalView::detailShowsTheData()
{
    Journal journal;
    journal.add(Journal::Kind::Call, QStringLiteral("setKeyLed"),
                {{QStringLiteral("halKey"), 27}, {QStringLiteral("list"), QJsonArray{1, QStringLiteral("two")}}});
    JournalView view(journal, nullptr);
    view.show();
    view.poll();
    const auto *tree = view.findChild<QTreeWidget *>(QStringLiteral("journal-detail"));
    QVERIFY(!tree->isVisible());
    auto *list = view.findChild<QListView *>(QStringLiteral("journal-lines"));
    list->setCurrentIndex(list->model()->index(0, 0));
    QVERIFY(tree->isVisible());
    const auto found = tree->findItems(QStringLiteral("setKeyLed"), Qt::MatchExactly);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first()->child(0)->text(0), QStringLiteral("halKey"));
    QCOMPARE(found.first()->child(0)->text(1), QStringLiteral("27"));
    QCOMPARE(found.first()->child(1)->child(1)->text(1), QStringLiteral("two"));
}

// The line at the top is still there when others are hidden, and when they are shown again.
void TestJournalView::filterKeepsThePosition()
{
    Journal journal;
    for (int pair = 0; pair < 500; ++pair) {
        fill(journal, 1, Journal::Kind::Call);
        fill(journal, 1, Journal::Kind::Log);
    }
    JournalView view(journal, nullptr);
    view.resize(500, 400);
    view.show();
    view.poll();
    auto *list = view.findChild<QListView *>(QStringLiteral("journal-lines"));
    list->scrollTo(list->model()->index(600, 0), QAbstractItemView::PositionAtTop);
    const auto top = [list] { return list->indexAt({1, 1}).data(JournalModel::SequenceRole).toLongLong(); };
    QCOMPARE(top(), qint64(601));
    auto *log = view.findChild<QToolButton *>(QStringLiteral("journal-log"));
    log->click();
    QCOMPARE(view.model().rowCount(), 500);
    QCOMPARE(top(), qint64(601));
    log->click();
    QCOMPARE(top(), qint64(601));
}

void TestJournalView::clearHidesLinesUntilNow()
{
    Journal journal;
    fill(journal, 20);
    JournalView view(journal, nullptr);
    view.show();
    view.poll();
    view.findChild<QAction *>(QStringLiteral("journal-clear"))->trigger();
    QCOMPARE(view.model().rowCount(), 0);
    fill(journal, 3);
    view.poll();
    QCOMPARE(view.model().rowCount(), 3);
    view.findChild<QLineEdit *>(QStringLiteral("journal-text"))->setText(QStringLiteral("call"));
    QCOMPARE(view.model().rowCount(), 3);
    QCOMPARE(journal.count(), qint64(23));
}

// Without a scroll bar; the whole line is in the tool tip.
void TestJournalView::longLinesAreElided()
{
    Journal journal;
    const QString text = QString(QStringLiteral("many words & <signs> ")).repeated(50);
    journal.add(Journal::Kind::Screen, QStringLiteral("screen"), {{QStringLiteral("title"), text}});
    JournalView view(journal, nullptr);
    view.resize(400, 300);
    view.show();
    view.poll();
    const auto *list = view.findChild<QListView *>(QStringLiteral("journal-lines"));
    const QModelIndex line = list->model()->index(0, 0);
    QVERIFY(list->fontMetrics().horizontalAdvance(line.data().toString()) > list->viewport()->width());
    QCOMPARE(list->visualRect(line).width(), list->viewport()->width());
    QVERIFY(!list->horizontalScrollBar()->isVisible());
    const QString tip = line.data(Qt::ToolTipRole).toString();
    QVERIFY(tip.contains(text.toHtmlEscaped()));
    QVERIFY(Qt::mightBeRichText(tip));
}

void TestJournalView::theFilterHasTheFontOfItsNeighbors()
{
    const Journal journal;
    JournalView view(journal, nullptr);
    view.show();
    const auto *text = view.findChild<QLineEdit *>(QStringLiteral("journal-text"));
    const auto *count = view.findChild<QLabel *>(QStringLiteral("journal-count"));
    QCOMPARE(text->font().pixelSize(), count->font().pixelSize());
}

void TestJournalView::aWideDockHasOneRowAboveTheLines()
{
    const Journal journal;
    JournalView view(journal, nullptr);
    view.show();
    const auto top = [&view](const char *name) {
        return view.findChild<QWidget *>(QLatin1String(name))->mapTo(&view, QPoint()).y();
    };
    view.resize(1280, 250);
    QTRY_VERIFY(top("journal-text") < top("journal-kinds") + 30);
    QVERIFY(top("journal-actions") < top("journal-kinds") + 30);
    QVERIFY(view.findChild<QWidget *>(QStringLiteral("journal-lines"))->height() > 120);
    view.resize(400, 600);
    QTRY_VERIFY(top("journal-text") > top("journal-kinds") + 30);
    QVERIFY(top("journal-actions") > top("journal-text") + 20);
    QVERIFY(top("journal-lines") > top("journal-actions") + 20);
}

void TestJournalView::shownLinesAreExported()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("journal.txt"));
    Journal journal;
    fill(journal, 20);
    JournalView view(journal, nullptr);
    view.show();
    view.poll();
    view.findChild<QLineEdit *>(QStringLiteral("journal-text"))->setText(QStringLiteral("call1"));
    view.findChild<QAction *>(QStringLiteral("journal-export"))->trigger();
    Q_EMIT view.window()->findChild<QFileDialog *>(QStringLiteral("export-dialog"))->fileSelected(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count('\n'), 11);
}

void TestJournalView::staysFastWithManyLines()
{
    Journal journal;
    JournalView view(journal, nullptr);
    view.resize(500, 300);
    view.show();
    fill(journal, JournalModel::LineLimit);
    while (view.model().total() < JournalModel::LineLimit)
        view.poll();
    QCoreApplication::processEvents();
    const std::clock_t begin = std::clock();
    constexpr int Refreshes = 50;
    for (int i = 0; i < Refreshes; ++i) {
        fill(journal, 10);
        view.poll();
        QCoreApplication::processEvents();
    }
    // Time of the processor: how busy the machine is besides has no part in it.
    const qint64 each = (std::clock() - begin) * 1000 / CLOCKS_PER_SEC / Refreshes;
    QVERIFY2(each < 33, qPrintable(QStringLiteral("%1 ms for each refresh").arg(each)));
}

QTEST_MAIN(TestJournalView)
#include "tst_journalview.moc"
