#include "postgresserver.h"
#include "records/statistics.h"
#include "records/statisticstext.h"
#include "runfactory.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QtTest>

using namespace panelhost;

/// Statistics from a real PostgreSQL server: the same as from a file with the same runs.
class StatisticsPostgresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void postgresHasTheFiguresOfTheFile_data();
    void postgresHasTheFiguresOfTheFile();
    void postgresFindsTheSameWhenItRecounts();
    void tablesOfAnEarlierVersionAreUpgraded_data();
    void tablesOfAnEarlierVersionAreUpgraded();
    void aStationCanNotChangeWhatIsCounted();
    void anUpgradeTakesTheRightToChangeCounts();

private:
    static QString figures(RecordStore &store, const StatisticsQuery &query);
    QStringList counts(const QString &schema = QStringLiteral("public"));

    std::unique_ptr<PostgresServer> m_server;
    QTemporaryDir m_directory;
    std::unique_ptr<RecordStore> m_file;
    std::unique_ptr<RecordStore> m_station;
};

namespace {

constexpr int RunCount = 1500;

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

}

// The runs come to the server in another order than to the file.
void StatisticsPostgresTest::initTestCase()
{
    if (!PostgresServer::isInstalled())
        QSKIP("The packages postgresql and libqt5sql5-psql are not installed.");
    m_server = std::make_unique<PostgresServer>();
    QVERIFY2(m_server->create(), qPrintable(m_server->errorString()));
    QString error;
    RunFactory factory(RunCount);
    QVector<StoredRun> runs;
    for (int index = 0; index < RunCount; ++index)
        runs.append({factory.run(index), qCompress(QByteArray())});
    m_file = RecordStore::open(m_directory.filePath(q("runs.sqlite")), &error);
    QVERIFY2(m_file && m_file->saveAll(runs, RecordStore::Forwarding::None, &error), qPrintable(error));
    std::reverse(runs.begin(), runs.end());
    m_station = RecordStore::openServer(m_server->parsedAddress(), &error);
    QVERIFY2(m_station && m_station->saveAll(runs, RecordStore::Forwarding::None, &error), qPrintable(error));
}

QString StatisticsPostgresTest::figures(RecordStore &store, const StatisticsQuery &query)
{
    QString error;
    const auto statistics = readStatistics(store, query, &error);
    return statistics ? QString::fromUtf8(QJsonDocument(statisticsJson(*statistics)).toJson()) : error;
}

QStringList StatisticsPostgresTest::counts(const QString &schema)
{
    QStringList list;
    for (const QString &table : storeCountTables()) {
        // A unit may have been counted at a later run before its first one came.
        const QString condition = table == q("unit_count") ? q(" WHERE units > 0") : QString();
        list += m_server->values(q("SELECT %1::text FROM %3.%1%2 ORDER BY 1").arg(table, condition, schema));
    }
    return list;
}

void StatisticsPostgresTest::postgresHasTheFiguresOfTheFile_data()
{
    using Groups = StatisticsQuery::Groups;
    QTest::addColumn<StatisticsQuery>("query");
    const auto row = [](const char *name, RunKind kind, const char *station, const QDate &since, const QDate &until,
                        Groups groups) {
        QTest::newRow(name) << StatisticsQuery{kind, q(station), since, until, groups};
    };
    row("all", RunKind::Machine, "", {}, {}, Groups::None);
    row("stations", RunKind::Machine, "", {2023, 5, 17}, {2024, 8, 3}, Groups::Station);
    row("days", RunKind::Aging, "", {2024, 2, 1}, {2024, 3, 10}, Groups::Day);
    row("weeks", RunKind::Repair, "", {}, {}, Groups::Week);
    row("months of a station", RunKind::Machine, "S7", {2023, 5, 17}, {}, Groups::Month);
}

void StatisticsPostgresTest::postgresHasTheFiguresOfTheFile()
{
    QFETCH(StatisticsQuery, query);
    const QString expected = figures(*m_file, query);
    QVERIFY2(expected.startsWith(QLatin1Char('{')), qPrintable(expected));
    QCOMPARE(figures(*m_station, query), expected);
}

void StatisticsPostgresTest::postgresFindsTheSameWhenItRecounts()
{
    const QStringList counted = counts();
    QVERIFY(counted.size() > RunCount);
    const QString statements = storeRecount(StoreKind::Server).join(q(";\n"));
    QVERIFY2(m_server->execute(q("BEGIN;\n%1;\nCOMMIT").arg(statements)), qPrintable(m_server->errorString()));
    QCOMPARE(counts(), counted);
}

void StatisticsPostgresTest::tablesOfAnEarlierVersionAreUpgraded_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("without a trigger") << 3;
    QTest::newRow("with a trigger") << 4;
}

// In a schema of their own.
void StatisticsPostgresTest::tablesOfAnEarlierVersionAreUpgraded()
{
    QFETCH(int, version);
    const QString schema = q("earlier%1").arg(version);
    QFile file(q(LCD_SOURCE_DIR "/tests/records/data/schema-4.sql"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString version4 = QString::fromUtf8(file.readAll());
    QString withoutTrigger;
    QString count;
    if (version == 3) {
        withoutTrigger = q("DROP TRIGGER count_run ON journal; DROP FUNCTION count_run(); "
                           "UPDATE schema_version SET version = 3;\n");
        for (const QString &statement : storeMigration(StoreKind::Server, 2)) {
            if (statement.contains(QRegularExpression(q("^INSERT INTO (run_count|unit_result|duration_count) "))))
                count += statement + q(";\n");
        }
        QCOMPARE(count.count(q("INSERT INTO")), 3);
    }
    QString copy;
    for (const char *table : {"run", "phase", "failure", "keypress", "port", "journal"})
        copy += q("INSERT INTO %1 SELECT * FROM public.%1;\n").arg(q(table));
    QVERIFY2(m_server->execute(q("CREATE SCHEMA %1; SET search_path = %1;\n").arg(schema) + version4 + withoutTrigger
                               + copy + count + storeServerScript(version, q("station"))),
             qPrintable(m_server->errorString()));
    QCOMPARE(counts(schema), counts());
    const QStringList tables =
        m_server->values(q("SELECT tablename FROM pg_tables WHERE schemaname = '%1' ORDER BY 1").arg(schema));
    QVERIFY(tables.contains(q("schema_version")));
    QCOMPARE(m_server->values(q("SELECT tablename FROM pg_tables WHERE schemaname = 'public' ORDER BY 1")), tables);
    QCOMPARE(m_server->values(q("SELECT version FROM %1.schema_version").arg(schema)),
             QStringList{QString::number(RecordStore::SchemaVersion)});
    QVERIFY2(m_server->execute(q("DROP SCHEMA %1 CASCADE").arg(schema)), qPrintable(m_server->errorString()));
}

// The server counts with the rights of the owner. Tables of the same names that a station makes aren't mistaken for its
// own.
void StatisticsPostgresTest::aStationCanNotChangeWhatIsCounted()
{
    const QString station = q("station");
    const QStringList before = counts();
    for (const QString &table : storeCountTables()) {
        QVERIFY(!m_server->execute(q("UPDATE %1 SET kind = kind").arg(table), station));
        QVERIFY(!m_server->execute(q("DELETE FROM %1").arg(table), station));
        QVERIFY(!m_server->execute(q("INSERT INTO %1 SELECT * FROM %1 LIMIT 0").arg(table), station));
    }
    QCOMPARE(counts(), before);
    const auto add = [&](const char *id, const char *tables) {
        return m_server->execute(q("%1; INSERT INTO run (id, session, position, unit, kind, outcome, session_begin, "
                                   "begin, \"end\", device_begin, device_end, rounds, failure_count, wrong_key_count) "
                                   "VALUES ('%2', 's', 1, 'X1', 'repair', 'failed', '2031-01-01', '2031-01-01', "
                                   "'2031-01-01', 0, 0, 0, 0, 0); INSERT INTO phase VALUES ('%2', 1, 'tbar', 'failed', "
                                   "0, 100, NULL), ('%2', 2, 'tbar', 'passed', 0, 101, NULL); "
                                   "INSERT INTO journal VALUES ('%2', '')")
                                     .arg(q(tables), q(id)),
                                 station);
    };
    QVERIFY2(add("1",
                 "SET search_path = pg_temp, public; CREATE TABLE pg_temp.run_count (LIKE public.run_count); "
                 "CREATE TABLE pg_temp.unit_result (LIKE public.unit_result); "
                 "CREATE TABLE pg_temp.station_month_duration (LIKE public.station_month_duration)"),
             qPrintable(m_server->errorString()));
    QVERIFY2(add("2", "SELECT 1"), qPrintable(m_server->errorString()));
    QCOMPARE(m_server->values(q("SELECT run_count::text FROM run_count WHERE day = '2031-01-01'")),
             QStringList{q("(repair,2031-01-01,\"\",failed,tbar,2)")});
    QCOMPARE(m_server->values(q("SELECT day_duration::text FROM day_duration WHERE day = '2031-01-01'")),
             QStringList{q("(repair,2031-01-01,tbar,100,4)")});
    QCOMPARE(
        m_server->values(q("SELECT station_month_duration::text FROM station_month_duration WHERE month = '2031-01'")),
        QStringList{q("(repair,\"\",2031-01,tbar,100,4)")});
    QCOMPARE(m_server->values(q("SELECT count(*) FROM unit_result WHERE unit = 'X1'")), QStringList{q("1")});
}

// Stations had to count by themselves in version 3.
void StatisticsPostgresTest::anUpgradeTakesTheRightToChangeCounts()
{
    QFile file(q(LCD_SOURCE_DIR "/tests/records/data/schema-4.sql"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString version3 = q("DROP SCHEMA public CASCADE; CREATE SCHEMA public; GRANT USAGE ON SCHEMA public TO "
                               "station;\n%1;\nDROP TRIGGER count_run ON journal; DROP FUNCTION count_run(); "
                               "GRANT INSERT, UPDATE ON run_count, unit_result, duration_count TO station; "
                               "UPDATE schema_version SET version = 3")
                                 .arg(QString::fromUtf8(file.readAll()));
    QVERIFY2(m_server->execute(version3), qPrintable(m_server->errorString()));
    QVERIFY(m_server->execute(q("UPDATE run_count SET runs = runs"), q("station")));
    QVERIFY2(m_server->execute(storeServerScript(3, q("station"))), qPrintable(m_server->errorString()));
    for (const QString &table : storeCountTables())
        QVERIFY(!m_server->execute(q("UPDATE %1 SET kind = kind").arg(table), q("station")));
    QCOMPARE(counts(), QStringList());
    QString error;
    m_station = RecordStore::openServer(m_server->parsedAddress(), &error);
    QVERIFY2(m_station, qPrintable(error));
    QVERIFY2(m_station->save(RunFactory(1, 77).run(0), {}, &error), qPrintable(error));
    QVERIFY(!counts().isEmpty());
}

QTEST_GUILESS_MAIN(StatisticsPostgresTest)

#include "tst_statisticspostgres.moc"
