#include "prooflength.h"
#include "records/journalreader.h"
#include "records/runsaver.h"
#include "records/sessionruns.h"
#include "records/storefile.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtSql/QSqlQuery>
#include <QtTest/QtTest>

#include <cstdio>

using namespace panelhost;

/// Runs in SQLite files: what is saved, what is refused, and what becomes of them when disk or process end.
class RecordStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void whatIsSavedIsRead_data();
    void whatIsSavedIsRead();
    void attemptsAreCountedPerUnitAndKind();
    void aRunIsSavedOnce();
    void aLongRunKeepsItsNewestLines();
    void filters();
    void theFileIsSafe();
    void whatIsNoStoreIsRefused_data();
    void whatIsNoStoreIsRefused();
    void theSaverGoesOnNextToAnUnusableFile();
    void aPlaceThatCanNotBeWritten();
    void aReadOnlyDirectory();
    void aClockThatGoesBackIsReported();
    void savingTakesLittleTime();
    void aFullDiskCostsOnlyTime();
    void whatIsReportedAsSavedOutlivesTheProcess();

private:
    QString path(const char *name = "runs.sqlite") const { return m_directory->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &name, const QByteArray &content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

SessionInfo session(const char *unit)
{
    SessionInfo info;
    info.id = QUuid::createUuid();
    info.begin = QDateTime({2026, 3, 1}, {8, 0}, Qt::UTC);
    info.unit = q(unit);
    info.station = q("S3");
    info.operatorName = q("Kim");
    info.language = q("en");
    info.configuration = q("ab12");
    return info;
}

QVector<Run> goldenRuns(const char *name, const SessionInfo &info)
{
    QByteArray lines =
        info.toJsonLine() + '\n' + contentOf(q(LCD_SOURCE_DIR "/tests/e2e/journals/%1.jsonl").arg(q(name)));
    QBuffer buffer(&lines);
    buffer.open(QIODevice::ReadOnly);
    QVector<Run> runs;
    RunExtractor extractor([&runs](const Run &run) { runs << run; });
    QString error;
    readJournal(buffer, q(name), extractor, &error);
    extractor.endSession();
    return runs;
}

Run someRun(const char *unit, RunOutcome outcome = RunOutcome::Passed)
{
    Run run;
    run.session = session(unit);
    run.id = QUuid::createUuid();
    run.position = 1;
    run.outcome = outcome;
    run.end = 1000;
    run.phases.append({q("brightness"), outcome, 0, 1000, VerdictSource::Operator});
    return run;
}

QVector<Run> allRuns(const QString &name, const RunFilter &filter = {})
{
    QString error;
    QVector<Run> runs;
    const auto store = RecordStore::openExisting(name, &error);
    if (store)
        store->read(
            filter, [&runs](const Run &run) { runs << run; }, &error);
    if (!error.isEmpty())
        qWarning("%s", qPrintable(error));
    return runs;
}

/// Saves runs until it is killed, and writes the id of each that was saved.
int saveUntilKilled(const QString &name)
{
    RunSaver saver(name, [](const QString &sentence) { std::fprintf(stderr, "%s\n", qPrintable(sentence)); });
    const QByteArray journal(20000, 'x');
    for (;;) {
        const Run run = someRun("K1");
        saver.save(run, journal);
        if (saver.finish() > 0)
            return 1;
        std::printf("%s\n", qPrintable(run.id.toString(QUuid::WithoutBraces)));
        std::fflush(stdout);
    }
}

}

void RecordStoreTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void RecordStoreTest::whatIsSavedIsRead_data()
{
    QTest::addColumn<QByteArray>("journal");
    for (const char *name : {"machine-retest", "machine-wrong-keys", "aging", "tour"})
        QTest::newRow(name) << QByteArray(name);
}

void RecordStoreTest::whatIsSavedIsRead()
{
    QFETCH(QByteArray, journal);
    const QVector<Run> runs = goldenRuns(journal.constData(), session("A1"));
    QVERIFY(!runs.isEmpty());
    QString error;
    auto store = RecordStore::open(path(), &error);
    QVERIFY2(store, qPrintable(error));
    const QByteArray lines = QByteArray("{\"a\":\"\303\244\"}\n").repeated(1000);
    for (const Run &run : runs)
        QVERIFY2(store->save(run, lines, &error), qPrintable(error));
    store.reset();
    store = RecordStore::openExisting(path(), &error);
    QVERIFY2(store, qPrintable(error));
    int attempt = 0;
    for (Run run : runs) {
        const auto found = store->run(run.id, &error);
        QVERIFY2(found, qPrintable(error));
        run.attempt = ++attempt;
        QCOMPARE(found->toJson(), run.toJson());
        QCOMPARE(store->journal(run.id, &error), lines);
    }
    QVERIFY(!store->run(QUuid::createUuid(), &error));
    QCOMPARE(error, QString());
}

void RecordStoreTest::attemptsAreCountedPerUnitAndKind()
{
    QString error;
    const auto store = RecordStore::open(path(), &error);
    QVERIFY2(store, qPrintable(error));
    QVector<int> attempts;
    for (const char *unit : {"A1", "B2", "A1", "", ""}) {
        Run run = someRun(unit);
        run.begin = attempts.size(); // runs are counted in the order in which they began
        QVERIFY(store->save(run, {}, &error));
        attempts << store->run(run.id, &error)->attempt;
    }
    Run aging = someRun("A1");
    aging.kind = RunKind::Aging;
    QVERIFY(store->save(aging, {}, &error));
    attempts << store->run(aging.id, &error)->attempt;
    QCOMPARE(attempts, (QVector<int>{1, 1, 2, 0, 0, 1}));
}

void RecordStoreTest::aRunIsSavedOnce()
{
    QString error;
    const auto store = RecordStore::open(path(), &error);
    Run run = someRun("A1");
    QVERIFY(store->save(run, "first", &error));
    run.outcome = RunOutcome::Failed;
    QVERIFY2(store->save(run, "second", &error), qPrintable(error));
    QCOMPARE(allRuns(path()).size(), 1);
    QCOMPARE(store->run(run.id, &error)->outcome, RunOutcome::Passed);
    QCOMPARE(store->journal(run.id, &error), QByteArray("first"));
}

void RecordStoreTest::aLongRunKeepsItsNewestLines()
{
    constexpr int Limit = 100000; // as documented
    constexpr int Surplus = 10;
    RunSaver saver(path(), {});
    SessionRuns runs(&saver);
    const SessionInfo info = session("A1");
    runs.begin(info);
    Journal::Entry entry{
        1, 0, q("gui"), Journal::Kind::Screen, q("screen"), {{q("page"), q("aging")}, {q("left"), q("Stop")}}};
    runs.add(entry);
    entry.kind = Journal::Kind::Log;
    entry.name = q("default");
    entry.data = {{q("text"), q("x")}};
    while (entry.sequence < Limit + Surplus) {
        ++entry.sequence;
        runs.add(entry);
    }
    runs.end();
    QCOMPARE(saver.finish(), 0);

    const QVector<Run> saved = allRuns(path());
    QCOMPARE(saved.size(), 1);
    QString error;
    const auto store = RecordStore::openExisting(path(), &error);
    const QByteArray lines = store->journal(saved.first().id, &error);
    QCOMPARE(lines.count('\n'), 1 + Limit);
    QVERIFY(lines.startsWith(info.toJsonLine() + q("\n{\"seq\":%1,").arg(Surplus + 1).toUtf8()));
    QVERIFY(lines.endsWith(entry.toJsonLine() + '\n'));
}

void RecordStoreTest::filters()
{
    QString error;
    const auto store = RecordStore::open(path(), &error);
    Run late = someRun("A1", RunOutcome::Failed);
    late.session.begin = late.session.begin.addDays(1);
    QVERIFY(store->save(late, {}, &error) && store->save(someRun("A1"), {}, &error)
            && store->save(someRun("B2"), {}, &error));
    QCOMPARE(allRuns(path()).size(), 3);
    QCOMPARE(allRuns(path()).last().id, late.id); // by begin
    QCOMPARE(allRuns(path(), {q("A1"), {}, {}}).size(), 2);
    QCOMPARE(allRuns(path(), {q("A1' OR '1'='1"), {}, {}}).size(), 0);
    QCOMPARE(allRuns(path(), {{}, QDateTime({2026, 3, 2}, {8, 0}, Qt::UTC), {}}).size(), 1);
    QCOMPARE(allRuns(path(), {{}, {}, RunOutcome::Passed}).size(), 2);
    QCOMPARE(allRuns(path(), {q("B2"), {}, RunOutcome::Failed}).size(), 0);
}

void RecordStoreTest::theFileIsSafe()
{
    QString error;
    const auto store = RecordStore::open(path("new/directory/runs.sqlite"), &error);
    QVERIFY2(store, qPrintable(error));
    {
        QSqlDatabase database = QSqlDatabase::database(QSqlDatabase::connectionNames().constFirst());
        const auto pragma = [&database](const char *name) {
            QSqlQuery query(database);
            query.exec(q("PRAGMA ") + q(name));
            query.next();
            return query.value(0).toString();
        };
        QCOMPARE(pragma("journal_mode"), q("wal"));
        QCOMPARE(pragma("synchronous"), q("2"));
        QCOMPARE(pragma("foreign_keys"), q("1"));
        QCOMPARE(pragma("user_version"), QString::number(RecordStore::SchemaVersion));
        QSqlQuery query(database);
        QVERIFY(!query.exec(q("INSERT INTO port VALUES ('nobody', 'net1', 'plugged')")));
    }
    const QStringList left = QDir(path("new/directory")).entryList(QDir::Files);
    QVERIFY2(left.filter(q(".new-")).isEmpty(), qPrintable(left.join(QLatin1Char(' '))));
}

void RecordStoreTest::whatIsNoStoreIsRefused_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("text") << q("text") << q(" is damaged, or no file of run records.");
    QTest::newRow("empty") << q("empty") << q(" is damaged, or no file of run records.");
    QTest::newRow("newer") << q("newer") << q(" is of version 6; this panelhost knows versions up to 5.");
    QTest::newRow("other") << q("other") << q(" is a database, but not one of run records.");
    QTest::newRow("short") << q("short") << q(" is damaged: the file is truncated.");
    QTest::newRow("scrambled") << q("scrambled") << q(": database disk image is malformed.");
}

void RecordStoreTest::whatIsNoStoreIsRefused()
{
    QFETCH(QString, damage);
    QFETCH(QString, sentence);
    QString error;
    QVERIFY2(createStoreFile(path(), &error), qPrintable(error));
    QByteArray content = contentOf(path());
    if (damage == q("text"))
        content = "hello";
    else if (damage == q("empty"))
        content.clear();
    else if (damage == q("newer"))
        content[63] = RecordStore::SchemaVersion + 1;
    else if (damage == q("other"))
        content[70] = 0;
    else if (damage == q("short"))
        content.chop(4096);
    else
        content.replace(100, 4096 - 100, QByteArray(4096 - 100, '\xff'));
    write(path(), content);
    auto problem = RecordStore::Problem::None;
    QVERIFY(!RecordStore::open(path(), &error, &problem));
    QCOMPARE(error, path() + sentence);
    QCOMPARE(problem, RecordStore::Problem::Unusable);
    QCOMPARE(contentOf(path()), content);
}

void RecordStoreTest::theSaverGoesOnNextToAnUnusableFile()
{
    write(path(), "hello");
    write(path("runs-2.sqlite"), "too");
    QStringList sentences;
    {
        RunSaver saver(path(), [&sentences](const QString &sentence) { sentences << sentence; });
        saver.save(someRun("A1"), "one");
        saver.save(someRun("A1"), "two");
        QCOMPARE(saver.finish(), 0);
        QCOMPARE(saver.saved(), 2);
    }
    QCOMPARE(sentences,
             (QStringList{q("%1 is damaged, or no file of run records. It is left as it is; runs are saved to %2.")
                              .arg(path(), path("runs-2.sqlite")),
                          q("%1 is damaged, or no file of run records. It is left as it is; runs are saved to %2.")
                              .arg(path("runs-2.sqlite"), path("runs-3.sqlite"))}));
    QCOMPARE(allRuns(path("runs-3.sqlite")).size(), 2);
    QCOMPARE(contentOf(path()), QByteArray("hello"));
}

void RecordStoreTest::aPlaceThatCanNotBeWritten()
{
    write(path("file"), {});
    QStringList sentences;
    RunSaver saver(path("file/runs.sqlite"), [&sentences](const QString &sentence) { sentences << sentence; });
    saver.save(someRun("A1"), {});
    QCOMPARE(saver.finish(), 1);
    QCOMPARE(saver.finish(), 1);
    QCOMPARE(
        sentences,
        QStringList{
            q("Runs can't be saved and are kept until they can: The directory %1 can't be made.").arg(path("file"))});
    // The place comes into being: the run is still there.
    QVERIFY(QFile::remove(path("file")));
    QCOMPARE(saver.finish(), 0);
    QCOMPARE(allRuns(path("file/runs.sqlite")).size(), 1);
}

// The file can be created again when the directory is writable.
void RecordStoreTest::aReadOnlyDirectory()
{
    const QString directory = path("directory");
    QVERIFY(QDir().mkpath(directory));
    if (QProcess::execute(q("mount"), {q("-t"), q("tmpfs"), q("-o"), q("ro"), q("tmpfs"), directory}) != 0)
        QSKIP("A read-only file system can't be mounted.");
    const auto unmount = qScopeGuard([&directory] { QProcess::execute(q("umount"), {directory}); });
    const QString file = directory + q("/runs.sqlite");
    QStringList sentences;
    RunSaver saver(file, [&sentences](const QString &sentence) { sentences << sentence; });
    saver.save(someRun("A1"), {});
    QCOMPARE(saver.finish(), 1);
    QCOMPARE(saver.saved(), 0);
    QCOMPARE(sentences.size(), 1);
    QVERIFY2(sentences.first().startsWith(
                 q("Runs can't be saved and are kept until they can: %1 can't be made: ").arg(file)),
             qPrintable(sentences.first()));
    QCOMPARE(QProcess::execute(q("mount"), {q("-o"), q("remount,rw"), directory}), 0);
    QCOMPARE(saver.finish(), 0);
    QCOMPARE(allRuns(file).size(), 1);
}

void RecordStoreTest::aClockThatGoesBackIsReported()
{
    QStringList sentences;
    RunSaver saver(path(), [&sentences](const QString &sentence) { sentences << sentence; });
    Run before = someRun("A1");
    Run after = someRun("A1", RunOutcome::Failed);
    after.session.begin = before.session.begin.addDays(-30);
    for (const Run &run : {before, after, before}) {
        saver.beginSession(run.session.begin);
        saver.save(run, {});
    }
    // Another process has begun its session a little later and saved a run already.
    saver.beginSession(before.session.begin.addSecs(-60));
    QCOMPARE(saver.finish(), 0);
    QCOMPARE(sentences,
             QStringList{q("The clock has gone back: it is 2026-01-30T08:00:00.000Z, but a session in %1 began at "
                           "2026-03-01T08:00:00.000Z. Check the date; runs are saved with these times.")
                             .arg(path())});
    QCOMPARE(allRuns(path()).size(), 2);
    QCOMPARE(saver.saved(), 3);
}

// The caller only hands the run over. The journal is that of a complete machine test.
void RecordStoreTest::savingTakesLittleTime()
{
    constexpr int Count = 100;
    std::deque<QByteArray> lines;
    QFile journal(q(LCD_SOURCE_DIR "/tests/e2e/journals/machine-pass.jsonl"));
    QVERIFY(journal.open(QIODevice::ReadOnly));
    while (!journal.atEnd())
        lines.push_back(journal.readLine());
    QVERIFY(lines.size() > 400);
    const QVector<Run> runs = goldenRuns("machine-pass", session("A1"));
    RunSaver saver(path(), [](const QString &sentence) { qWarning("%s", qPrintable(sentence)); });
    QVector<qint64> callTimes;
    QVector<qint64> saveTimes;
    for (int index = 0; index < Count; ++index) {
        Run run = runs.first();
        run.id = QUuid::createUuid();
        std::deque<QByteArray> copy = lines;
        QElapsedTimer timer;
        timer.start();
        saver.saveLines(run, std::move(copy));
        callTimes << timer.nsecsElapsed() / 1000;
        QCOMPARE(saver.finish(), 0);
        saveTimes << timer.nsecsElapsed() / 1000;
    }
    std::sort(callTimes.begin(), callTimes.end());
    std::sort(saveTimes.begin(), saveTimes.end());
    constexpr int High = Count * 99 / 100;
    qInfo("a run: median %lld us, 99 %% within %lld us for the caller; %lld us and %lld us until it is on the disk",
          callTimes.at(Count / 2), callTimes.at(High), saveTimes.at(Count / 2), saveTimes.at(High));
    QVERIFY(callTimes.at(Count / 2) < 1000);
    QVERIFY(saveTimes.at(Count / 2) < 50000); // a slow and busy disk; a usual one needs less than 5 ms
}

void RecordStoreTest::aFullDiskCostsOnlyTime()
{
    const QString disk = path("disk");
    QVERIFY(QDir().mkpath(disk));
    if (QProcess::execute(q("mount"), {q("-t"), q("tmpfs"), q("-o"), q("size=400k"), q("tmpfs"), disk}) != 0)
        QSKIP("A small file system can't be mounted.");
    const auto unmount = qScopeGuard([&disk] { QProcess::execute(q("umount"), {disk}); });
    const QString file = disk + q("/runs.sqlite");
    {
        QStringList sentences;
        RunSaver saver(file, [&sentences](const QString &sentence) { sentences << sentence; });
        saver.save(someRun("A1"), {});
        QCOMPARE(saver.finish(), 0);
        write(disk + q("/ballast"), QByteArray(100000, 'x'));
        int count = 1;
        for (int waiting = 0; waiting == 0 && count < 1000; ++count) {
            saver.save(someRun("A1"), {});
            waiting = saver.finish();
        }
        QVERIFY(count < 1000);
        // Closing the file may make room for a run or two.
        QVERIFY(!sentences.isEmpty());
        sentences.removeDuplicates();
        QCOMPARE(sentences.size(), 1);
        QVERIFY2(sentences.first().contains(q("full")), qPrintable(sentences.first()));
        QCOMPARE(allRuns(file).size(), saver.saved());
        QVERIFY(QFile::remove(disk + q("/ballast")));
        QCOMPARE(saver.finish(), 0);
        QCOMPARE(saver.saved(), count);
        QCOMPARE(allRuns(file).size(), count);
    }
}

void RecordStoreTest::whatIsReportedAsSavedOutlivesTheProcess()
{
    const int kills = proofLength(20, 100, 500);
    QSet<QString> reported;
    for (int round = 0; round < kills; ++round) {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {q("--save-until-killed"), path()});
        QVERIFY(process.waitForReadyRead());
        process.waitForReadyRead((round * 7) % 40);
        process.kill();
        QVERIFY(process.waitForFinished());
        const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
        for (const QString &line : lines.mid(0, lines.size() - 1))
            reported << line;
        QCOMPARE(process.readAllStandardError(), QByteArray());
    }
    QSet<QString> found;
    const QVector<Run> runs = allRuns(path());
    for (const Run &run : runs) {
        QCOMPARE(run.phases.size(), 1);
        found << run.id.toString(QUuid::WithoutBraces);
    }
    QVERIFY(reported.size() >= kills);
    QVERIFY((reported - found).isEmpty());
    QString error;
    const auto store = RecordStore::openExisting(path(), &error);
    QCOMPARE(store->journal(runs.last().id, &error).size(), 20000);
    // Of each process at most the run that it was saving is there without having been reported.
    QVERIFY(found.size() - reported.size() <= kills);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == q("--save-until-killed"))
        return saveUntilKilled(arguments.at(2));
    RecordStoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_recordstore.moc"
