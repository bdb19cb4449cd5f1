#include "prooflength.h"
#include "records/recordstore.h"
#include "records/statistics.h"
#include "records/statisticstext.h"
#include "records/storefile.h"
#include "runfactory.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace panelhost;

/// The versions of the schema: how files of earlier versions are upgraded, and that queries use the indices.
class StoreSchemaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEarlierFileIsUpgraded_data();
    void anEarlierFileIsUpgraded();
    void anUpgradedFileHasTheTablesOfANewOne();
    void anUpgradeThatFailsChangesNothing();
    void aProcessOfVersion3SavesNothingAfterTheUpgrade();
    void aNewerVersionInTheLogIsRefused();
    void aFileWithItsEndInTheLogIsWhole();
    void leftoversOfAKilledProcessAreRemoved();
    void queriesUseAnIndex_data();
    void queriesUseAnIndex();
    void readingOneUnitDoesNotGrowWithTheRuns();
    void statisticsReadOnlyTheCounts();
    void attemptsAreCountedByBegin();
    void manyRunsAreReadInPages();
    void theCountsAreThoseOfTheRunsThatRemain();
    void theServersTablesAreTheSame();
};

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

QString copyOfVersion(int version, const QTemporaryDir &directory)
{
    const QString path = directory.filePath(q("runs.sqlite"));
    QFile::copy(q(LCD_SOURCE_DIR "/tests/records/data/schema-%1.sqlite").arg(version), path);
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

QStringList texts(StoreConnection &connection, const QString &query)
{
    QStringList list;
    StoreRows rows = connection.execute(query);
    while (rows && rows.next())
        list << rows.value(0).toString();
    return list;
}

QStringList counts(RecordStore &store)
{
    QStringList list;
    for (const QString &table : storeCountTables()) {
        StoreRows rows = store.connection().execute(q("SELECT * FROM ") + table);
        while (rows && rows.next()) {
            list << table;
            for (int column = 0; rows.value(column).isValid(); ++column)
                list.last() += QLatin1Char('|') + rows.value(column).toString();
        }
    }
    list.sort();
    return list;
}

QStringList countsAfterRecount(RecordStore &store)
{
    for (const QString &statement : storeRecount(StoreKind::File)) {
        if (!store.connection().executeOnce(statement))
            return {store.connection().errorText()};
    }
    return counts(store);
}

QVector<StoredRun> storedRuns(int count)
{
    RunFactory factory(count);
    QVector<StoredRun> runs;
    for (int index = 0; index < count; ++index)
        runs.append({factory.run(index), qCompress("{}\n")});
    return runs;
}

/// What this process has read from files until now.
qint64 bytesRead()
{
    QFile file(q("/proc/self/io"));
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return text.mid(text.indexOf("rchar: ") + 7).split('\n').first().toLongLong();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}

void StoreSchemaTest::anEarlierFileIsUpgraded_data()
{
    QTest::addColumn<int>("version");
    for (int version = 1; version < RecordStore::SchemaVersion; ++version)
        QTest::addRow("version %d", version) << version;
}

void StoreSchemaTest::anEarlierFileIsUpgraded()
{
    QFETCH(int, version);
    const QTemporaryDir directory;
    QString error;
    const QString path = copyOfVersion(version, directory);
    const auto store = RecordStore::openExisting(path, &error);
    QVERIFY2(store, qPrintable(error));
    QCOMPARE(texts(store->connection(), q("PRAGMA user_version")),
             QStringList{QString::number(RecordStore::SchemaVersion)});
    QStringList found;
    QVERIFY(store->read(
        {},
        [&found](const Run &run) {
            found << q("%1 %2 %3 %4 %5")
                         .arg(run.session.unit, toText(run.kind), toText(run.outcome))
                         .arg(run.attempt)
                         .arg(run.phases.size());
        },
        &error));
    found.sort();
    QCOMPARE(found,
             (QStringList{q(" machine failed 0 4"), q("A1 aging failed 1 0"), q("A1 machine aborted 4 1"),
                          q("A1 machine failed 1 1"), q("A1 machine failed 2 1"), q("A1 machine passed 3 10"),
                          q("A1 repair failed 1 1")}));
    QCOMPARE(countsAfterRecount(*store), counts(*store));

    RunFilter filter;
    filter.outcome = RunOutcome::Passed;
    QByteArray journal;
    QUuid passed;
    QVERIFY(store->read(
        filter, [&passed](const Run &run) { passed = run.kind == RunKind::Machine ? run.id : passed; }, &error));
    journal = store->journal(passed, &error);
    QVERIFY(journal.startsWith("{\"session\":"));
    QVERIFY(journal.contains("USB port pass"));
}

void StoreSchemaTest::anUpgradedFileHasTheTablesOfANewOne()
{
    const QTemporaryDir directory;
    QString error;
    const auto upgraded = RecordStore::openExisting(copyOfVersion(1, directory), &error);
    const auto created = RecordStore::open(directory.filePath(q("new.sqlite")), &error);
    QVERIFY2(upgraded && created, qPrintable(error));
    const QString query = q("SELECT type || ' ' || name || ' ' || coalesce(sql, '') FROM sqlite_schema ORDER BY 1");
    const QStringList tables = texts(created->connection(), query);
    QVERIFY(tables.size() >= 10);
    QCOMPARE(texts(upgraded->connection(), query), tables);
}

// The name of a table of the new version is in use: the upgrade stops in its last statements.
void StoreSchemaTest::anUpgradeThatFailsChangesNothing()
{
    const QTemporaryDir directory;
    QString error;
    const QString path = copyOfVersion(1, directory);
    {
        const auto connection = StoreConnection::openFile(path, &error);
        QVERIFY(connection && connection->executeOnce(q("CREATE TABLE pending (number INTEGER)")));
    }
    auto problem = RecordStore::Problem::None;
    QVERIFY(!RecordStore::openExisting(path, &error, &problem));
    QVERIFY2(error.contains(q("table pending already exists")), qPrintable(error));
    QCOMPARE(problem, RecordStore::Problem::Temporary);
    const auto connection = StoreConnection::openFile(path, &error);
    QCOMPARE(texts(*connection, q("PRAGMA user_version")), QStringList{q("1")});
    QCOMPARE(texts(*connection, q("SELECT max(attempt) FROM run")), QStringList{q("4")});
}

// It counted its runs by itself. Now the file counts them, and they must not be counted twice.
void StoreSchemaTest::aProcessOfVersion3SavesNothingAfterTheUpgrade()
{
    const QTemporaryDir directory;
    QString error;
    const QString path = copyOfVersion(3, directory);
    const auto earlier = StoreConnection::openFile(path, &error);
    QVERIFY2(earlier, qPrintable(error));
    const auto save = [&earlier](const char *id) {
        bool isSaved = earlier->begin()
            && earlier->execute(
                q("INSERT INTO run SELECT ?, session, position, unit, station, operator, kind, outcome, "
                  "session_begin, begin, \"end\", device_begin, device_end, language, panelhost, "
                  "component, configuration, rounds, failure_count, wrong_key_count FROM run LIMIT 1"),
                {q(id)})
            && earlier->execute(q("INSERT INTO phase SELECT ?, 1, 'tbar', 'passed', 0, 100, NULL"), {q(id)})
            && earlier->execute(q("INSERT INTO journal VALUES (?, '')"), {q(id)})
            && earlier->execute(q("INSERT INTO run_count SELECT kind, substr(begin, 1, 10), coalesce(station, ''), "
                                  "outcome, '', 1 FROM run WHERE id = ? ON CONFLICT (kind, day, station, outcome, "
                                  "failed_phase) DO UPDATE SET runs = run_count.runs + 1"),
                                {q(id)})
            && earlier->execute(q("INSERT INTO duration_count SELECT run.kind, 'tbar', 100, substr(run.begin, 1, 7), "
                                  "coalesce(run.station, ''), 1 FROM run WHERE id = ? ON CONFLICT (kind, phase, "
                                  "duration, month, station) DO UPDATE SET runs = duration_count.runs + 1"),
                                {q(id)})
            && earlier->commit();
        if (!isSaved)
            earlier->rollback();
        return isSaved;
    };
    QVERIFY2(save("before"), qPrintable(earlier->errorText()));
    const auto store = RecordStore::openExisting(path, &error);
    QVERIFY2(store, qPrintable(error));
    const QStringList before = counts(*store);
    QVERIFY(!save("after"));
    QVERIFY2(earlier->errorText().contains(q("no such table")), qPrintable(earlier->errorText()));
    QCOMPARE(counts(*store), before);
    QCOMPARE(texts(store->connection(), q("SELECT count(*) - (SELECT sum(runs) FROM run_count) FROM run")),
             QStringList{q("0")});
}

// As long as another process has the file open, its new version may be in the log and not yet in the header.
void StoreSchemaTest::aNewerVersionInTheLogIsRefused()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(q("runs.sqlite"));
    QString error;
    QVERIFY(createStoreFile(path, &error));
    const QByteArray before = contentOf(path);
    const auto newer = StoreConnection::openFile(path, &error);
    QVERIFY(newer->executeOnce(q("PRAGMA user_version=%1").arg(RecordStore::SchemaVersion + 1)));
    QCOMPARE(contentOf(path), before);
    auto problem = RecordStore::Problem::None;
    QVERIFY(!RecordStore::openExisting(path, &error, &problem));
    QCOMPARE(error, q("%1 is of version 6; this panelhost knows versions up to 5.").arg(path));
    QCOMPARE(problem, RecordStore::Problem::Unusable);
    QCOMPARE(texts(*newer, q("PRAGMA user_version")), QStringList{q("6")});
}

// What a process leaves that is killed while it copies pages from the log to the file: the first page tells a size that
// the file doesn't have yet.
void StoreSchemaTest::aFileWithItsEndInTheLogIsWhole()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(q("runs.sqlite"));
    const QString killed = directory.filePath(q("killed.sqlite"));
    QString error;
    {
        const auto store = RecordStore::open(path, &error);
        QByteArray journal;
        while (journal.size() < 200000)
            journal += QUuid::createUuid().toRfc4122();
        QVERIFY2(store->save(RunFactory(1).run(0), journal, &error), qPrintable(error));
        QVERIFY(QFile::copy(path, killed) && QFile::copy(path + q("-wal"), killed + q("-wal")));
    }
    const QByteArray whole = contentOf(path);
    QFile file(killed);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.size() < whole.size());
    QCOMPARE(file.write(whole.left(4096)), 4096);
    file.close();
    const auto store = RecordStore::openExisting(killed, &error);
    QVERIFY2(store, qPrintable(error));
    QCOMPARE(store->count({}, &error), 1);
}

void StoreSchemaTest::leftoversOfAKilledProcessAreRemoved()
{
    const QTemporaryDir directory;
    const QStringList leftovers{q("runs.sqlite.new-1"), q("runs.sqlite.new-1-journal"), q("runs.sqlite.new-2-wal")};
    const QStringList others{q("other.sqlite.new-1"), q("runs-2.sqlite")};
    for (const QString &name : leftovers + others) {
        QFile file(directory.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QString error;
    QVERIFY2(createStoreFile(directory.filePath(q("runs.sqlite")), &error), qPrintable(error));
    QStringList left = QDir(directory.path()).entryList(QDir::Files);
    left.sort();
    QCOMPARE(left, (QStringList{q("other.sqlite.new-1"), q("runs-2.sqlite"), q("runs.sqlite")}));
}

void StoreSchemaTest::queriesUseAnIndex_data()
{
    QTest::addColumn<QString>("condition");
    QTest::addColumn<QString>("index");
    QTest::newRow("unit") << q("WHERE unit = 'A1' ORDER BY begin, position, id LIMIT 100") << q("run_unit");
    QTest::newRow("all") << q("ORDER BY begin, position, id LIMIT 100") << q("run_begin");
    QTest::newRow("next page") << q(
        "WHERE (begin, position, id) > ('2026', 1, 'a') ORDER BY begin, position, id LIMIT 100")
                               << q("run_begin");
    QTest::newRow("since") << q("WHERE begin >= '2026' ORDER BY begin, position, id LIMIT 100") << q("run_begin");
    QTest::newRow("outcome") << q("WHERE outcome = 'failed' ORDER BY begin, position, id LIMIT 100")
                             << q("run_outcome");
}

void StoreSchemaTest::queriesUseAnIndex()
{
    QFETCH(QString, condition);
    QFETCH(QString, index);
    const QTemporaryDir directory;
    QString error;
    const auto store = RecordStore::open(directory.filePath(q("runs.sqlite")), &error);
    QVERIFY2(store, qPrintable(error));
    QStringList plan;
    StoreRows rows =
        store->connection().execute(q("EXPLAIN QUERY PLAN ") + selectRuns() + QLatin1Char(' ') + condition);
    while (rows.next())
        plan << rows.value(3).toString();
    const QString text = plan.join(QLatin1Char('\n'));
    QVERIFY2(plan.first().contains(q("USING INDEX ") + index), qPrintable(text));
    // The attempts of a row: only the runs of its unit.
    QVERIFY2(text.contains(q("SEARCH earlier USING COVERING INDEX run_unit"))
                 || text.contains(q("SEARCH earlier USING INDEX run_unit")),
             qPrintable(text));
}

// With many times as many runs, the trees of the tables and indices have a level more at most.
void StoreSchemaTest::readingOneUnitDoesNotGrowWithTheRuns()
{
    const QTemporaryDir directory;
    const auto bytesFor = [&directory](int count) {
        QString error;
        const QString path = directory.filePath(q("runs-%1.sqlite").arg(count));
        const QVector<StoredRun> runs = storedRuns(count);
        {
            const auto store = RecordStore::open(path, &error);
            if (!store || !store->saveAll(runs, RecordStore::Forwarding::None, &error))
                return QVector<qint64>{};
        }
        RunFilter filter;
        filter.unit = runs.last().run.session.unit;
        const auto store = RecordStore::openExisting(path, &error);
        QVector<qint64> bytes{bytesRead()};
        int found = 0;
        store->read(
            filter, [&found](const Run &) { ++found; }, &error);
        bytes << bytesRead();
        const bool isRead = found > 0 && store->run(runs.first().run.id, &error)
            && !store->journal(runs.first().run.id, &error).isEmpty() && store->latestSessionBegin().isValid();
        bytes << bytesRead();
        const bool isSaved = store->save(RunFactory(1, 7).run(0), {}, &error);
        bytes << bytesRead();
        return isRead && isSaved ? QVector<qint64>{bytes[1] - bytes[0], bytes[2] - bytes[1], bytes[3] - bytes[2]}
                                 : QVector<qint64>{};
    };
    const int count = proofLength(1500, 8000, 32000);
    const QVector<qint64> few = bytesFor(250);
    const QVector<qint64> many = bytesFor(count);
    QCOMPARE(few.size(), 3);
    QCOMPARE(many.size(), 3);
    for (int step = 0; step < few.size(); ++step) {
        qInfo("250 runs: %lld bytes, %d runs: %lld bytes", few.at(step), count, many.at(step));
        QVERIFY(few.at(step) > 0);
        QVERIFY(many.at(step) < 4 * few.at(step));
    }
}

// The tables of the runs are hidden from the queries.
void StoreSchemaTest::statisticsReadOnlyTheCounts()
{
    const QTemporaryDir directory;
    QString error;
    const auto store = RecordStore::open(directory.filePath(q("runs.sqlite")), &error);
    QVERIFY2(store && store->saveAll(storedRuns(300), RecordStore::Forwarding::None, &error), qPrintable(error));
    const auto figures = [&] {
        QStringList texts;
        for (const auto groups :
             {StatisticsQuery::Groups::None, StatisticsQuery::Groups::Station, StatisticsQuery::Groups::Day,
              StatisticsQuery::Groups::Week, StatisticsQuery::Groups::Month}) {
            StatisticsQuery query;
            query.groups = groups;
            for (const QDate &since : {QDate(), QDate(2024, 3, 1), QDate(2024, 3, 10)}) {
                // The durations of stations are counted by month.
                if (groups == StatisticsQuery::Groups::Station && since.day() == 10)
                    continue;
                query.since = since;
                const auto statistics = readStatistics(*store, query, &error);
                texts << (statistics ? QString::fromUtf8(QJsonDocument(statisticsJson(*statistics)).toJson()) : error);
            }
        }
        return texts;
    };
    const QStringList before = figures();
    QVERIFY(before.first().contains(q("\"firstPassYield\"")));
    for (const char *statement : {"DROP VIEW numbered_run", "DROP TRIGGER count_run",
                                  "ALTER TABLE run RENAME TO hidden", "ALTER TABLE phase RENAME TO hidden_phase"})
        QVERIFY2(store->connection().executeOnce(q(statement)), qPrintable(store->connection().errorText()));
    QCOMPARE(figures(), before);
}

// A run that arrives late, from a station that could not send it, has its place among the others.
void StoreSchemaTest::attemptsAreCountedByBegin()
{
    const QTemporaryDir directory;
    QString error;
    const auto store = RecordStore::open(directory.filePath(q("runs.sqlite")), &error);
    Run late;
    late.id = QUuid::createUuid();
    late.session.id = QUuid::createUuid();
    late.session.unit = q("A1");
    late.session.begin = QDateTime({2026, 3, 2}, {8, 0}, Qt::UTC);
    late.position = 1;
    Run early = late;
    early.id = QUuid::createUuid();
    early.session.begin = late.session.begin.addDays(-1);
    QVERIFY(store->save(late, {}, &error));
    QCOMPARE(store->run(late.id, &error)->attempt, 1);
    QVERIFY(store->save(early, {}, &error));
    QCOMPARE(store->run(early.id, &error)->attempt, 1);
    QCOMPARE(store->run(late.id, &error)->attempt, 2);
}

void StoreSchemaTest::manyRunsAreReadInPages()
{
    constexpr int Count = 250;
    const QTemporaryDir directory;
    QString error;
    const auto store = RecordStore::open(directory.filePath(q("runs.sqlite")), &error);
    RunFactory factory(Count);
    QVector<StoredRun> runs;
    QHash<QUuid, QJsonObject> expected;
    for (int index = 0; index < Count; ++index) {
        Run run = factory.run(index);
        // All in three milliseconds: the pages end between runs of the same begin.
        run.session.begin = QDateTime({2026, 3, 1}, {8, 0}, Qt::UTC).addMSecs(index % 3);
        run.session.unit.clear();
        run.wrongKeys = {1, index};
        run.failures.append({5, {q("net1"), q("usb2")}});
        runs.append({run, qCompress("x")});
        expected.insert(run.id, run.toJson());
    }
    QVERIFY2(store->saveAll(runs, RecordStore::Forwarding::None, &error), qPrintable(error));
    QVector<QDateTime> begins;
    QVERIFY(store->read(
        {},
        [&](const Run &run) {
            QCOMPARE(run.toJson(), expected.take(run.id));
            begins << run.beginUtc();
        },
        &error));
    QCOMPARE(begins.size(), Count);
    QVERIFY(expected.isEmpty());
    QVERIFY(std::is_sorted(begins.begin(), begins.end()));
    QCOMPARE(store->count({}, &error), Count);
}

void StoreSchemaTest::theCountsAreThoseOfTheRunsThatRemain()
{
    constexpr int Count = 60;
    const QTemporaryDir directory;
    QString error;
    const auto some = RecordStore::open(directory.filePath(q("some.sqlite")), &error);
    const auto all = RecordStore::open(directory.filePath(q("all.sqlite")), &error);
    RunFactory factory(Count);
    QVector<QUuid> removed;
    for (int index = 0; index < Count; ++index) {
        const Run run = factory.run(index);
        QVERIFY(all->save(run, {}, &error));
        if (index % 3 == 0)
            removed << run.id;
        else
            QVERIFY(some->save(run, {}, &error));
    }
    const auto refuse = [](QString *reason) {
        *reason = q("No.");
        return false;
    };
    QVERIFY(!all->remove(removed, refuse, &error));
    QCOMPARE(error, q("No."));
    QCOMPARE(all->count({}, &error), Count);
    const auto accept = [](QString *) { return true; };
    QVERIFY2(all->remove(removed, accept, &error), qPrintable(error));
    for (const char *query :
         {"SELECT kind || day || station || outcome || failed_phase || runs FROM run_count ORDER BY 1",
          "SELECT unit || kind || first_begin || first_passed || last_begin || last_passed FROM unit_result ORDER BY 1",
          "SELECT kind || day || station || units || first_passed || finally_passed FROM unit_count WHERE units > 0 "
          "ORDER BY 1",
          "SELECT kind || day || phase || duration || runs FROM day_duration ORDER BY 1",
          "SELECT kind || month || phase || duration || runs FROM month_duration ORDER BY 1",
          "SELECT kind || station || phase || duration || runs FROM station_duration ORDER BY 1",
          "SELECT kind || station || phase || duration || month || runs FROM station_month_duration ORDER BY 1",
          "SELECT run FROM phase ORDER BY 1", "SELECT run FROM journal ORDER BY 1"}) {
        const QStringList expected = texts(some->connection(), q(query));
        QVERIFY(expected.size() > 10);
        QCOMPARE(texts(all->connection(), q(query)), expected);
    }
}

// Only the types differ, and what files alone have. How a run is counted: the trigger of a file has the same statements
// as the function of a server.
void StoreSchemaTest::theServersTablesAreTheSame()
{
    QStringList server;
    QStringList file;
    for (QString statement : storeMigration(StoreKind::File, 0)) {
        if (!statement.contains(q("pending")) && !statement.contains(q("duration_count_month"))
            && !statement.contains(q("count_run")))
            file << statement.remove(q(" WITHOUT ROWID"));
    }
    for (QString statement : storeMigration(StoreKind::Server, 0)) {
        if (!statement.contains(q("count_run")) && !statement.contains(q("search_path"))
            && !statement.startsWith(q("LOCK TABLE ")))
            server << statement.remove(q(" COLLATE \"C\""))
                          .replace(q("BIGINT"), q("INTEGER"))
                          .replace(q("BYTEA"), q("BLOB"));
    }
    QCOMPARE(server, file);
    const auto counting = [](StoreKind kind, const char *statement) {
        const QString text = storeMigration(kind, 4).filter(q(statement)).value(0);
        return text.mid(text.indexOf(q("INSERT INTO run_count"))).section(q("; "), 0, 9);
    };
    const QString inFile = counting(StoreKind::File, "CREATE TRIGGER count_run");
    QCOMPARE(inFile.count(q("ON CONFLICT")), 7);
    QCOMPARE(counting(StoreKind::Server, "FUNCTION count_run() RETURNS"), inFile);
    const QString script = storeServerScript(0, q("st\"1"));
    QVERIFY(script.contains(q("GRANT SELECT, INSERT ON run TO \"st\"\"1\";\n")));
    QVERIFY(!script.contains(q("DELETE ON")) && !script.contains(q("GRANT ALL")));
    QVERIFY(!storeServerScript(1, q("station")).contains(q("CREATE TABLE run ")));
}

QTEST_GUILESS_MAIN(StoreSchemaTest)

#include "tst_storeschema.moc"
