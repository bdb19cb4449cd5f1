#include "postgresserver.h"
#include "records/statistics.h"
#include "runfactory.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

using namespace panelhost;

/// What the owner of the server does, and what the manual says about it: prune, backup, queries; and that no query
/// reads all runs.
class PostgresRecordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void queriesDoNotReadAllRuns();
    void textsThatTheServerCanNotStore();
    void theExamplesOfTheManual();
    void onlyTheOwnerPrunes();
    void pruneThatFailsAtItsCommit();

private:
    bool shell(const QString &command);
    qint64 rowsReadOneByOne(RecordStore &store);

    std::unique_ptr<PostgresServer> m_server;
    QTemporaryDir m_directory;
    QByteArray m_output;
};

namespace {

constexpr int RunCount = 1500;

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

QByteArray manual()
{
    QFile file(q(LCD_SOURCE_DIR "/docs/records.md"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString someUnit()
{
    return RunFactory(RunCount).run(0).session.unit;
}

/// The code blocks of the language @p language.
QStringList blocks(const char *language)
{
    const QRegularExpression block(q("^```%1\n(.*?)^```").arg(q(language)),
                                   QRegularExpression::MultilineOption
                                       | QRegularExpression::DotMatchesEverythingOption);
    QStringList list;
    auto match = block.globalMatch(QString::fromUtf8(manual()));
    while (match.hasNext())
        list << match.next().captured(1);
    return list;
}

/// The command that begins with @p start, in an indented line or between back quotes.
QString command(const char *start)
{
    const QRegularExpression line(q("(?:^    |`)(%1[^`\n]*)").arg(QRegularExpression::escape(q(start))),
                                  QRegularExpression::MultilineOption);
    return line.match(QString::fromUtf8(manual())).captured(1);
}

}

void PostgresRecordsTest::initTestCase()
{
    if (!PostgresServer::isInstalled())
        QSKIP("The packages postgresql and libqt5sql5-psql are not installed.");
    m_server = std::make_unique<PostgresServer>();
    QVERIFY2(m_server->create(), qPrintable(m_server->errorString()));
    QString error;
    RunFactory factory(RunCount);
    QVector<StoredRun> runs;
    for (int index = 0; index < RunCount; ++index)
        runs.append({factory.run(index), qCompress("{}\n")});
    const auto file = RecordStore::open(m_directory.filePath(q("runs.sqlite")), &error);
    QVERIFY2(file && file->saveAll(runs, RecordStore::Forwarding::None, &error), qPrintable(error));
    const auto server = RecordStore::openServer(m_server->parsedAddress(), &error);
    QVERIFY2(server && server->saveAll(runs, RecordStore::Forwarding::None, &error), qPrintable(error));
    QVERIFY2(m_server->execute(q("ANALYZE")), qPrintable(m_server->errorString()));
}

// In the directory with the file runs.sqlite.
bool PostgresRecordsTest::shell(const QString &command)
{
    QProcess process;
    process.setWorkingDirectory(m_directory.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(q("bash"), {q("-euo"), q("pipefail"), q("-c"), command});
    const bool isDone = process.waitForFinished(120000) && process.exitCode() == 0;
    m_output = process.readAll();
    if (!isDone)
        qWarning("%s\n%s", qPrintable(command), m_output.constData());
    return isDone;
}

qint64 PostgresRecordsTest::rowsReadOneByOne(RecordStore &store)
{
    store.connection().executeOnce(q("SELECT pg_stat_force_next_flush()"));
    store.connection().executeOnce(q("SELECT 1"));
    return m_server
        ->values(q("SELECT sum(seq_tup_read) FROM pg_stat_user_tables WHERE relname IN ('run', 'phase', 'failure', "
                   "'keypress', 'port', 'journal')"))
        .value(0)
        .toLongLong();
}

void PostgresRecordsTest::queriesDoNotReadAllRuns()
{
    QString error;
    const auto store = RecordStore::openServer(m_server->parsedAddress(), &error);
    QVERIFY2(store, qPrintable(error));
    const qint64 before = rowsReadOneByOne(*store);
    RunFilter unit;
    unit.unit = someUnit();
    QUuid id;
    QVERIFY(store->read(
        unit, [&id](const Run &run) { id = run.id; }, &error));
    QVERIFY(store->run(id, &error));
    QCOMPARE(store->journal(id, &error), QByteArray("{}\n"));
    for (const auto groups : {StatisticsQuery::Groups::None, StatisticsQuery::Groups::Station,
                              StatisticsQuery::Groups::Day, StatisticsQuery::Groups::Month}) {
        StatisticsQuery query;
        query.groups = groups;
        QVERIFY2(readStatistics(*store, query, &error), qPrintable(error));
        query.since = QDate(2024, 3, 1);
        QVERIFY2(readStatistics(*store, query, &error), qPrintable(error));
    }
    Run run = RunFactory(1, 99).run(0);
    QVERIFY2(store->save(run, "{}", &error), qPrintable(error));
    QVERIFY(store->latestSessionBegin().isValid());
    QVERIFY2(rowsReadOneByOne(*store) - before < RunCount / 10,
             qPrintable(QString::number(rowsReadOneByOne(*store) - before)));
    // The measure works: this query does.
    store->connection().executeOnce(q("SELECT count(*) FROM run WHERE language = 'en'"));
    QVERIFY(rowsReadOneByOne(*store) - before >= RunCount);
}

// A null character would be refused, and the run would wait for ever.
void PostgresRecordsTest::textsThatTheServerCanNotStore()
{
    QString error;
    const auto server = RecordStore::openServer(m_server->parsedAddress(), &error);
    const auto file = RecordStore::open(m_directory.filePath(q("texts.sqlite")), &error);
    QVERIFY2(server && file, qPrintable(error));
    for (RecordStore *store : {server.get(), file.get()}) {
        Run run = RunFactory(1, 98).run(0);
        run.session.unit = QString(QChar(0)) + q("A\t\n'\"\x1b ü 検") + QChar(0xd800);
        run.session.station = QString(3, QChar(0));
        QVERIFY2(store->save(run, {}, &error), qPrintable(error));
        const auto found = store->run(run.id, &error);
        QVERIFY2(found, qPrintable(error));
        QVERIFY(found->session.unit.startsWith(QString(QChar(0xfffd)) + q("A\t\n'\"\x1b ü 検")));
        QCOMPARE(found->session.station, QString(3, QChar(0xfffd)));
    }
}

void PostgresRecordsTest::theExamplesOfTheManual()
{
    const QString directory = m_server->parsedAddress().host;
    const QStringList scripts = blocks("python");
    QCOMPARE(scripts.size(), 2);
    const auto python = [&](QString script) {
        QFile file(m_directory.filePath(q("example.py")));
        return file.open(QIODevice::WriteOnly)
            && file.write(script.replace(q("host=server"), q("host=") + directory).toUtf8()) > 0 && file.flush()
            && shell(q("/usr/bin/python3 example.py"));
    };
    QVERIFY(python(scripts.first() + q("print(lines)\n")));
    QVERIFY2(m_output.contains("('SN0000") && m_output.contains("'passed')") && m_output.contains("{}"),
             m_output.constData());
    QVERIFY2(m_server->execute(q("CREATE ROLE reader LOGIN; ") + command("GRANT SELECT ON ALL TABLES")),
             qPrintable(m_server->errorString()));
    QVERIFY(python(scripts.last()));
    QVERIFY2(m_output.contains("('S1', 'failed', ") && m_output.contains("('brightness', Decimal("),
             m_output.constData());

    QVERIFY(shell(command("sqlite3 runs.sqlite \".backup")));
    QVERIFY(shell(command("sqlite3 runs.sqlite VACUUM")));
    QString error;
    const auto copy = RecordStore::openExisting(m_directory.filePath(q("copy.sqlite")), &error);
    QVERIFY2(copy, qPrintable(error));
    QCOMPARE(copy->count({}, &error), RunCount);

    // A second database on the same server, with the tables, and one with the backup.
    const QString host = q("export PGHOST='%1'; ").arg(directory);
    QString create = command("sudo -u postgres psql");
    QVERIFY(create.contains(q("\\password station")));
    create.replace(q("sudo -u postgres psql"), q("psql -U owner postgres"))
        .replace(q(" -c \"\\password station\""), QString())
        .replace(q("ROLE station"), q("ROLE station2"))
        .replace(q("DATABASE line"), q("DATABASE line2"));
    QVERIFY(shell(host + create));
    QString schema = command("panelhost schema --role station |");
    schema.replace(q("panelhost"), q(PANELHOST))
        .replace(q("-h server"), QString())
        .replace(q("--role station"), q("--role station2"))
        .replace(q(" line"), q(" line2"));
    QVERIFY(shell(host + schema));
    QVERIFY(shell(host + q("psql -U station2 -Atc 'SELECT version FROM schema_version' line2")));
    QCOMPARE(m_output.trimmed(), QByteArray::number(RecordStore::SchemaVersion));
    QVERIFY(shell(host + command("pg_dump")));
    QVERIFY(shell(host + command("createdb")));
    QVERIFY(shell(host + command("pg_restore")));
    QVERIFY(
        shell(host + q("psql -U owner -Atc 'SELECT count(*) = (SELECT sum(runs) FROM run_count) FROM run' restored")));
    QCOMPARE(m_output.trimmed(), QByteArray("t"));
}

void PostgresRecordsTest::onlyTheOwnerPrunes()
{
    const QString archive = m_directory.filePath(q("old.sqlite"));
    const auto prune = [&](const char *role) {
        return q("%1 prune --older-than 1d --yes --unit %4 --archive '%2' --records '%3'")
            .arg(q(PANELHOST), archive, m_server->address(q(role)), someUnit());
    };
    const QStringList before = m_server->values(q("SELECT id FROM run ORDER BY 1"));
    const QStringList old = m_server->values(q("SELECT id FROM run WHERE unit = '%1' ORDER BY 1").arg(someUnit()));
    QVERIFY(!old.isEmpty());
    QVERIFY(!shell(prune("station")));
    QVERIFY2(m_output.contains("permission denied"), m_output.constData());
    QCOMPARE(m_server->values(q("SELECT id FROM run ORDER BY 1")), before);
    // Copies of runs that are still there would be in the way of the next attempt.
    QCOMPARE(QDir(m_directory.path()).entryList({q("*old*")}, QDir::Files | QDir::Hidden), QStringList());

    QVERIFY(shell(prune("owner")));
    QVERIFY2(m_output.startsWith("Deleted "), m_output.constData());
    QCOMPARE(m_server->values(q("SELECT count(*) FROM run")), QStringList{QString::number(before.size() - old.size())});
    QCOMPARE(m_server->values(q("SELECT sum(runs) FROM run_count")),
             QStringList{QString::number(before.size() - old.size())});
    QCOMPARE(m_server->values(q("SELECT count(*) FROM unit_result WHERE unit = '%1'").arg(someUnit())),
             QStringList{q("0")});
    QString error;
    const auto copies = RecordStore::openExisting(archive, &error);
    QVERIFY2(copies, qPrintable(error));
    QStringList found;
    QVERIFY(copies->read(
        {}, [&found](const Run &run) { found << idText(run.id); }, &error));
    found.sort();
    QCOMPARE(found, old);
}

// The server accepts each statement and refuses the transaction in the end.
void PostgresRecordsTest::pruneThatFailsAtItsCommit()
{
    const char *const tables[] = {"SELECT id FROM run ORDER BY 1", "SELECT * FROM run_count ORDER BY 1, 2, 3, 4, 5",
                                  "SELECT * FROM unit_result ORDER BY 1, 2", "SELECT count(*) FROM journal"};
    const auto content = [&] {
        QStringList values;
        for (const char *table : tables)
            values << m_server->values(q(table));
        return values;
    };
    QVERIFY2(m_server->execute(q("CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
                                 "$$BEGIN RAISE EXCEPTION 'runs are kept until the audit'; END$$")),
             qPrintable(m_server->errorString()));
    QVERIFY2(m_server->execute(q("CREATE CONSTRAINT TRIGGER refuse AFTER DELETE ON run DEFERRABLE INITIALLY DEFERRED "
                                 "FOR EACH ROW EXECUTE FUNCTION refuse()")),
             qPrintable(m_server->errorString()));
    const QStringList before = content();
    const QString unit = m_server->values(q("SELECT max(unit) FROM run WHERE unit LIKE 'SN%'")).value(0);
    const auto prune = [&](const char *archive) {
        return q("%1 prune --older-than 1d --yes --unit %4 --archive '%2' --records '%3'")
            .arg(q(PANELHOST), m_directory.filePath(q(archive)), m_server->address(q("owner")), unit);
    };
    QVERIFY(!shell(prune("refused.sqlite")));
    QVERIFY2(m_output.contains("runs are kept until the audit"), m_output.constData());
    QVERIFY2(m_output.contains(" No run was deleted. Copies of the runs are in "), m_output.constData());
    QCOMPARE(content(), before);
    QVERIFY2(m_server->execute(q("DROP FUNCTION refuse() CASCADE")), qPrintable(m_server->errorString()));
    QVERIFY(shell(prune("accepted.sqlite")));
    QCOMPARE(m_server->values(q("SELECT count(*) FROM run WHERE unit = '%1'").arg(unit)), QStringList{q("0")});
}

QTEST_GUILESS_MAIN(PostgresRecordsTest)

#include "tst_postgresrecords.moc"
