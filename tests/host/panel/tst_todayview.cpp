#include "panelfixture.h"
#include "records/recordstore.h"
#include "window/todayview.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>

using namespace panelhost;

static QString q(const char *text)
{
    return QString::fromUtf8(text);
}

/// The dock with today's figures, on a file of runs.
class TodayViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void figuresOfToday();
    void aSavedRunIsShown();
    void aHiddenDockReadsNothing();
    void withoutAFileNothingIsShown();

private:
    void save(const char *unit, RunOutcome outcome, int daysAgo = 0);
    QString label(const QString &name) const { return m_dock->findChild<QLabel *>(name)->text(); }
    QStringList lastRuns() const;
    QString path() const { return m_directory->filePath(q("runs.sqlite")); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<StoreReader> m_reader;
    std::unique_ptr<QMainWindow> m_window;
    TodayView *m_dock = nullptr;
    int m_saved = 0;
};

void TodayViewTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_reader = std::make_unique<StoreReader>(RecordsLocation{path(), false, {}});
    m_window = std::make_unique<QMainWindow>();
    m_dock = new TodayView(
        *m_reader, [this] { return m_saved; }, m_window.get());
    m_window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
    m_saved = 0;
}

void TodayViewTest::cleanup()
{
    m_window.reset();
    m_reader.reset();
}

// Machine tests that begin now, one after the other.
void TodayViewTest::save(const char *unit, RunOutcome outcome, int daysAgo)
{
    static int position = 0;
    Run run;
    run.id = QUuid::createUuid();
    run.session.id = QUuid::createUuid();
    run.session.begin = QDateTime::currentDateTimeUtc().addDays(-daysAgo);
    run.session.unit = q(unit);
    run.outcome = outcome;
    run.position = ++position;
    run.phases.append({q("tbar"), outcome, 0, 1000, VerdictSource::Test});
    QString error;
    const auto store = RecordStore::open(path(), &error);
    QVERIFY2(store && store->save(run, {}, &error), qPrintable(error));
    ++m_saved;
}

QStringList TodayViewTest::lastRuns() const
{
    QStringList texts;
    for (int index = 0; index < TodayView::LastRuns; ++index) {
        const auto *run = m_dock->findChild<QLabel *>(q("today-run-%1").arg(index));
        if (run->isVisible())
            texts << run->text().mid(7); // after the time
    }
    return texts;
}

void TodayViewTest::figuresOfToday()
{
    save("Z9", RunOutcome::Failed, 1);
    save("A1", RunOutcome::Failed);
    save("A1", RunOutcome::Passed);
    save("B2", RunOutcome::Passed);
    save("", RunOutcome::Aborted);
    m_window->show();
    m_dock->poll();
    QTRY_COMPARE(label(q("today-runs")), q("4  (2 passed, 1 failed, 1 aborted)"));
    QCOMPARE(label(q("today-first-pass")), q("50.0 %  (1 of 2 units)"));
    QCOMPARE(label(q("today-final")), q("100.0 %  (2 of 2 units)"));
    QCOMPARE(label(q("today-failing")), q("tbar  (1 of 1 failed)"));
    QCOMPARE(lastRuns(),
             (QStringList{q("machine aborted  -"), q("machine passed  B2"), q("machine passed  A1"),
                          q("machine failed  A1")}));
}

void TodayViewTest::aSavedRunIsShown()
{
    m_window->show();
    for (int run = 0; run < TodayView::LastRuns + 1; ++run)
        save(qPrintable(q("U%1").arg(run)), RunOutcome::Passed);
    m_dock->poll();
    QTRY_COMPARE(lastRuns().value(0), q("machine passed  U8"));
    QCOMPARE(lastRuns().size(), int(TodayView::LastRuns));
    save("NEXT", RunOutcome::Failed);
    m_dock->poll();
    QTRY_COMPARE(lastRuns().value(0), q("machine failed  NEXT"));
    QCOMPARE(label(q("today-first-pass")), q("90.0 %  (9 of 10 units)"));
}

void TodayViewTest::aHiddenDockReadsNothing()
{
    int reads = 0;
    connect(m_reader.get(), &StoreReader::todayRead, this, [&reads] { ++reads; });
    save("A1", RunOutcome::Passed);
    m_window->show();
    m_dock->hide();
    m_dock->poll();
    m_dock->show();
    m_dock->poll();
    m_dock->poll();
    QTRY_COMPARE(label(q("today-first-pass")), q("100.0 %  (1 of 1 unit)"));
    QCOMPARE(reads, 1);
}

void TodayViewTest::withoutAFileNothingIsShown()
{
    m_window->show();
    m_dock->poll();
    m_reader.reset(); // waits for what is read
    QCOMPARE(label(q("today-first-pass")), q("-"));
    QVERIFY(!QFile::exists(path()));
}

QTEST_MAIN(TodayViewTest)

#include "tst_todayview.moc"
