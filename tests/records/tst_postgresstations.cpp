#include "postgresserver.h"
#include "prooflength.h"
#include "records/runsaver.h"
#include "runfactory.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <poll.h>
#include <unistd.h>

#include <cstdio>

using namespace panelhost;
using namespace std::chrono_literals;

/// Many stations, each a process of its own, with one server; processes and servers that are killed.
class PostgresStationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void manyStationsWithOneServer();
    void aServerThatIsKilledLosesNothing_data();
    void aServerThatIsKilledLosesNothing();
    void aStationThatIsKilledLosesNothing();

private:
    using Process = std::unique_ptr<QProcess>;

    Process startStation(const char *mode, int number, int count) const;
    QString file(int number) const { return m_directory->filePath(QStringLiteral("station-%1.sqlite").arg(number)); }
    void verifyServerHas(const QStringList &ids);
    void verifyRunsAreComplete();

    std::unique_ptr<PostgresServer> m_server;
    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

constexpr RunForwarder::Pace Quick{20ms, 100ms, 15000ms};

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

void report(const Run &run)
{
    std::printf("%s\n", qPrintable(idText(run.id)));
    std::fflush(stdout);
}

/// Returns whether the input is closed, after 20 ms if it isn't.
bool isInputClosed()
{
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return ::poll(&input, 1, 20) > 0;
}

/// A station: saves @p count runs (or until its input is closed), writes the id of each that was saved, and waits until
/// all were sent.
int runStation(const QString &mode, int number, int count, const QString &file, const QString &address)
{
    QString error;
    const auto server = readServerAddress(address, &error);
    if (!server)
        return 2;
    RunSaver saver(
        {file, false, server}, [](const QString &) {}, {}, Quick);
    RunFactory factory(count, static_cast<quint32>(number));
    const QByteArray journal(20000, 'x');
    for (int index = 0; index < count; ++index) {
        const Run run = factory.run(index);
        saver.save(run, journal);
        if (mode == q("all"))
            continue;
        if (saver.finish() > 0)
            return 1;
        report(run);
        // A station makes a run in minutes. These make the next one after 20 ms, when most of the earlier ones were
        // sent.
        bool isClosed = mode == q("until-closed") && isInputClosed();
        while (mode == q("until-closed") && !isClosed && saver.pending() > 20)
            isClosed = isInputClosed();
        if (isClosed)
            break;
    }
    if (saver.finish() > 0)
        return 1;
    while (!saver.sendPending(10s)) {}
    return 0;
}

QStringList factoryIds(int number, int count)
{
    RunFactory factory(count, static_cast<quint32>(number));
    QStringList list;
    for (int index = 0; index < count; ++index)
        list << idText(factory.run(index).id);
    return list;
}

QStringList wholeLines(const QByteArray &output)
{
    QStringList lines = QString::fromLatin1(output).split(QLatin1Char('\n'));
    lines.removeLast();
    return lines;
}

}

void PostgresStationsTest::initTestCase()
{
    if (!PostgresServer::isInstalled())
        QSKIP("The packages postgresql and libqt5sql5-psql are not installed.");
    m_server = std::make_unique<PostgresServer>();
    QVERIFY2(m_server->create(), qPrintable(m_server->errorString()));
}

void PostgresStationsTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY2(m_server->execute(
                 q("TRUNCATE run, phase, failure, keypress, port, journal, %1").arg(storeCountTables().join(q(", ")))),
             qPrintable(m_server->errorString()));
}

PostgresStationsTest::Process PostgresStationsTest::startStation(const char *mode, int number, int count) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(
        QCoreApplication::applicationFilePath(),
        {q("--station"), q(mode), QString::number(number), QString::number(count), file(number), m_server->address()});
    return process;
}

void PostgresStationsTest::verifyServerHas(const QStringList &ids)
{
    const QStringList found = m_server->values(q("SELECT id FROM run"));
    const QSet<QString> foundSet(found.begin(), found.end());
    const QSet<QString> expected(ids.begin(), ids.end());
    QCOMPARE(found.size(), foundSet.size());
    QCOMPARE((expected - foundSet).size(), 0);
    QCOMPARE(found.size(), expected.size());
    verifyRunsAreComplete();
}

// Each run came with its journal and its phases, which have the numbers from 1 on.
void PostgresStationsTest::verifyRunsAreComplete()
{
    QCOMPARE(m_server->values(q("SELECT count(*) FROM run LEFT JOIN journal ON journal.run = run.id "
                                "WHERE journal.run IS NULL")),
             QStringList{q("0")});
    QCOMPARE(m_server->values(q("SELECT count(*) FROM run WHERE kind <> 'aging' AND device_end <> "
                                "(SELECT coalesce(sum(duration), 0) FROM phase WHERE phase.run = run.id)")),
             QStringList{q("0")});
}

void PostgresStationsTest::manyStationsWithOneServer()
{
    const int count = proofLength(25, 50, 50);
    const int runs = proofLength(10, 200, 1000);
    std::vector<Process> stations;
    QStringList ids;
    for (int number = 1; number <= count; ++number) {
        stations.push_back(startStation("all", number, runs));
        ids += factoryIds(number, runs);
    }
    for (const Process &station : stations) {
        QVERIFY(station->waitForFinished(600000));
        QCOMPARE(station->exitCode(), 0);
    }
    QCOMPARE(ids.size(), count * runs);
    verifyServerHas(ids);
    QString error;
    for (int number = 1; number <= count; ++number) {
        const auto store = RecordStore::openExisting(file(number), &error);
        QVERIFY2(store, qPrintable(error));
        QCOMPARE(store->count({}, &error), runs);
        QCOMPARE(store->pendingCount(&error), 0);
    }
}

void PostgresStationsTest::aServerThatIsKilledLosesNothing_data()
{
    QTest::addColumn<bool>("isKilled");
    QTest::newRow("kill -9") << true;
    QTest::newRow("immediate stop") << false;
}

void PostgresStationsTest::aServerThatIsKilledLosesNothing()
{
    QFETCH(bool, isKilled);
    constexpr int Stations = 4;
    const int rounds = proofLength(2, 10, 50);
    std::vector<Process> stations;
    for (int number = 1; number <= Stations; ++number)
        stations.push_back(startStation("until-closed", number, 1000000));
    int count = 0;
    for (int round = 0; round < rounds; ++round) {
        // Runs are under way.
        QTRY_VERIFY_WITH_TIMEOUT(m_server->values(q("SELECT count(*) FROM run")).value(0).toInt() > count, 60000);
        QVERIFY(isKilled ? m_server->kill() : m_server->crash());
        QTRY_VERIFY2_WITH_TIMEOUT(m_server->start(), qPrintable(m_server->errorString()), 60000);
        count = m_server->values(q("SELECT count(*) FROM run")).value(0).toInt();
    }
    QStringList reported;
    for (const Process &station : stations) {
        station->closeWriteChannel();
        QVERIFY(station->waitForFinished(120000));
        QCOMPARE(station->exitCode(), 0);
        reported += wholeLines(station->readAllStandardOutput());
    }
    QVERIFY(reported.size() >= rounds);
    verifyServerHas(reported);
}

void PostgresStationsTest::aStationThatIsKilledLosesNothing()
{
    const int kills = proofLength(8, 100, 500);
    QStringList reported;
    for (int round = 0; round < kills; ++round) {
        const Process station = startStation("until-closed", 1000 + round, 1000000);
        QVERIFY(station->waitForReadyRead(30000));
        station->waitForReadyRead((round * 7) % 60);
        station->kill();
        QVERIFY(station->waitForFinished());
        reported += wholeLines(station->readAllStandardOutput());
        // The next one has the file of this one, and so sends what this one has left.
        QVERIFY(QFile::rename(file(1000 + round), file(1001 + round)) || round == kills - 1);
        for (const char *suffix : {"-wal", "-shm"})
            QFile::rename(file(1000 + round) + q(suffix), file(1001 + round) + q(suffix));
    }
    {
        const Process last = startStation("all", 1000 + kills, 1);
        QVERIFY(last->waitForFinished(120000));
        QCOMPARE(last->exitCode(), 0);
    }
    QString error;
    const auto store = RecordStore::openExisting(file(1000 + kills), &error);
    QVERIFY2(store, qPrintable(error));
    QCOMPARE(store->pendingCount(&error), 0);
    QStringList saved;
    QVERIFY(store->read(
        {}, [&saved](const Run &run) { saved << idText(run.id); }, &error));
    QVERIFY(reported.size() >= kills);
    for (const QString &id : qAsConst(reported))
        QVERIFY2(saved.contains(id), qPrintable(id));
    verifyServerHas(saved);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 7 && arguments.at(1) == q("--station"))
        return runStation(arguments.at(2), arguments.at(3).toInt(), arguments.at(4).toInt(), arguments.at(5),
                          arguments.at(6));
    PostgresStationsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_postgresstations.moc"
