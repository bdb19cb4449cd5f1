#include "prooflength.h"
#include "records/recordstore.h"
#include "runfactory.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <deque>

using namespace panelhost;

/// panelhost as a process that saves or prunes runs: it is killed at any moment, and gets names that can't be saved.
class RecordsProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }
    void whatPlayReportsAsSavedOutlivesIt();
    void pruneThatIsKilledLosesNothing();
    void pruneLeavesRunsThatWaitForTheServer();
    void namesThatCanNotBeSaved_data();
    void namesThatCanNotBeSaved();

private:
    QString path(const char *name) const { return m_directory->filePath(QString::fromLatin1(name)); }
    QProcess::ExitStatus run(const QStringList &arguments, int milliseconds);

    std::unique_ptr<QTemporaryDir> m_directory;
    QProcess m_process;
};

namespace {

constexpr int Long = 120000; // ms

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

QStringList texts(const QString &file, const char *query)
{
    QString error;
    const auto store = RecordStore::openExisting(file, &error);
    QStringList list;
    if (!store)
        return {error};
    StoreRows rows = store->connection().execute(q(query));
    while (rows && rows.next())
        list << rows.value(0).toString();
    return list;
}

// Each run came with its journal and its phases, and was counted.
void verifyRunsAreWhole(const QString &file)
{
    const QStringList whole{q("ok")};
    QCOMPARE(texts(file, "PRAGMA integrity_check"), whole);
    const QStringList none{q("0")};
    QCOMPARE(
        texts(file, "SELECT count(*) FROM run LEFT JOIN journal ON journal.run = run.id WHERE journal.run IS NULL"),
        none);
    QCOMPARE(
        texts(file,
              "SELECT count(*) FROM run WHERE kind <> 'aging' AND NOT EXISTS (SELECT * FROM phase WHERE run = id)"),
        none);
    QCOMPARE(texts(file, "SELECT (SELECT count(*) FROM run) - (SELECT coalesce(sum(runs), 0) FROM run_count)"), none);
}

std::unique_ptr<RecordStore> oldRuns(const QString &file, int count, RecordStore::Forwarding forwarding)
{
    QString error;
    auto store = RecordStore::open(file, &error);
    RunFactory factory(count);
    QVector<StoredRun> runs;
    for (int index = 0; index < count; ++index)
        runs.append({factory.run(index), qCompress(QByteArray(2000, 'x'))});
    if (!store || !store->saveAll(runs, forwarding, &error))
        qFatal("%s", qPrintable(error));
    return store;
}

QStringList pruneArguments(const QString &file, const QString &archive)
{
    return {q("prune"),     q("--older-than"),   q("1d"),        q("--yes"),
            q("--records"), q("sqlite:") + file, q("--archive"), archive};
}

}

// Kills the process after @p milliseconds if it hasn't ended.
QProcess::ExitStatus RecordsProcessTest::run(const QStringList &arguments, int milliseconds)
{
    m_process.start(q(PANELHOST), arguments);
    if (!m_process.waitForFinished(milliseconds)) {
        m_process.kill();
        m_process.waitForFinished();
    }
    return m_process.exitStatus();
}

void RecordsProcessTest::whatPlayReportsAsSavedOutlivesIt()
{
    const QString file = path("runs.sqlite");
    QStringList arguments{q("play")};
    for (int scenario = 0; scenario < 40; ++scenario)
        arguments << q(LCD_SOURCE_DIR "/scenarios/machine-fail-0.yaml");
    arguments << QStringList{q("--records"), q("sqlite:") + file, q("--unit"), q("K1")};
    const QRegularExpression saved(q("^Saved the run ([0-9a-f-]{36})\\.$"), QRegularExpression::MultilineOption);
    // Each is killed while others save to the same file.
    const int rounds = proofLength(10, 100, 500);
    constexpr int Together = 4;
    std::deque<std::unique_ptr<QProcess>> processes;
    const auto start = [&] {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(q(PANELHOST), arguments);
    };
    QSet<QString> reported;
    int killed = 0;
    for (int round = 0; round < Together; ++round)
        start();
    for (int round = 0; round < rounds; ++round) {
        const std::unique_ptr<QProcess> process = std::move(processes.front());
        processes.pop_front();
        QVERIFY(process->bytesAvailable() > 0 || process->waitForReadyRead(Long));
        process->waitForFinished((round * 37) % 150);
        process->kill();
        QVERIFY(process->waitForFinished() || process->state() == QProcess::NotRunning);
        killed += process->exitStatus() == QProcess::CrashExit ? 1 : 0;
        QCOMPARE(process->readAllStandardError(), QByteArray());
        auto match = saved.globalMatch(QString::fromUtf8(process->readAllStandardOutput()));
        while (match.hasNext())
            reported << match.next().captured(1);
        if (round + Together < rounds)
            start();
    }
    QVERIFY2(killed > rounds / 2, qPrintable(QString::number(killed)));
    QVERIFY2(reported.size() > rounds / 5, qPrintable(QString::number(reported.size())));
    const QStringList list = texts(file, "SELECT id FROM run");
    const QSet<QString> found(list.begin(), list.end());
    QVERIFY((reported - found).isEmpty());
    verifyRunsAreWhole(file);
    QCOMPARE(texts(file, "SELECT DISTINCT kind || ' ' || outcome || ' ' || unit FROM run"),
             QStringList{q("machine failed K1")});
    qInfo("%d runs were reported as saved, %d are there", int(reported.size()), int(found.size()));
}

void RecordsProcessTest::pruneThatIsKilledLosesNothing()
{
    const int rounds = proofLength(4, 20, 50);
    const QString original = path("original.sqlite");
    const QString file = path("runs.sqlite");
    const QString archive = path("old.sqlite");
    QStringList all;
    {
        oldRuns(original, 300, RecordStore::Forwarding::None);
        all = texts(original, "SELECT id FROM run ORDER BY id");
    }
    const auto restore = [&] {
        for (const QString &name : QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden)) {
            if (name != q("original.sqlite"))
                QFile::remove(m_directory->filePath(name));
        }
        return QFile::copy(original, file);
    };
    QVERIFY(restore());
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(run(pruneArguments(file, archive), Long), QProcess::NormalExit);
    const auto whole = static_cast<int>(timer.elapsed());
    int killed = 0;
    for (int round = 1; round <= rounds; ++round) {
        QVERIFY(restore());
        killed += run(pruneArguments(file, archive), whole * round / rounds) == QProcess::CrashExit ? 1 : 0;
        verifyRunsAreWhole(file);
        const bool isCopied = QFile::exists(archive);
        const QStringList left = texts(file, "SELECT id FROM run ORDER BY id");
        QVERIFY(left == all || (left.isEmpty() && isCopied));
        if (isCopied) {
            verifyRunsAreWhole(archive);
            QCOMPARE(texts(archive, "SELECT id FROM run ORDER BY id"), all);
        }
        // The next attempt removes what this one has left.
        if (!isCopied) {
            QCOMPARE(run(pruneArguments(file, archive), Long), QProcess::NormalExit);
            QCOMPARE(m_process.exitCode(), 0);
            QCOMPARE(QDir(m_directory->path()).entryList({q("*old*")}, QDir::Files | QDir::Hidden),
                     QStringList{q("old.sqlite")});
        }
    }
    QVERIFY2(killed >= rounds / 4, qPrintable(QString::number(killed)));
}

void RecordsProcessTest::pruneLeavesRunsThatWaitForTheServer()
{
    const QString file = path("runs.sqlite");
    QStringList waiting;
    {
        QString error;
        const auto store = oldRuns(file, 10, RecordStore::Forwarding::Pending);
        auto runs = store->pending(4, &error);
        QVERIFY(runs && store->removePending(*runs, &error));
    }
    waiting = texts(file, "SELECT run FROM pending ORDER BY run");
    QCOMPARE(waiting.size(), 6);
    QCOMPARE(run(pruneArguments(file, path("old.sqlite")), Long), QProcess::NormalExit);
    QCOMPARE(m_process.readAllStandardError(), QByteArray());
    QCOMPARE(m_process.readAllStandardOutput(),
             q("Deleted 4 runs; copies are in %1.\n").arg(path("old.sqlite")).toUtf8());
    QCOMPARE(texts(file, "SELECT id FROM run ORDER BY id"), waiting);
    QCOMPARE(texts(file, "SELECT run FROM pending ORDER BY run"), waiting);
    QCOMPARE(texts(path("old.sqlite"), "SELECT count(*) FROM run"), QStringList{q("4")});
    verifyRunsAreWhole(file);
}

void RecordsProcessTest::namesThatCanNotBeSaved_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("problem");
    for (const char *option : {"unit", "station", "operator"}) {
        for (const char *value : {"A\nB", "A\tB", "\x1b[2J", "\x7f", "A\xc2\x85"})
            QTest::addRow("%s %s", option, QByteArray(value).toHex().constData())
                << q(option) << q(value) << q("contains control characters");
        QTest::addRow("%s, long", option)
            << q(option) << QString(101, QLatin1Char('x')) << q("has 101 characters; at most 100 are allowed");
        QTest::addRow("%s, other alphabets", option) << q(option) << q("Prüfplatz 3 'ü' \"検査\"; --") << QString();
    }
}

void RecordsProcessTest::namesThatCanNotBeSaved()
{
    QFETCH(QString, option);
    QFETCH(QString, value);
    QFETCH(QString, problem);
    const QString file = path("runs.sqlite");
    QCOMPARE(run({q("play"), q(LCD_SOURCE_DIR "/scenarios/machine-fail-0.yaml"), q("--records"), q("sqlite:") + file,
                  q("--") + option, value},
                 Long),
             QProcess::NormalExit);
    const QString error = QString::fromUtf8(m_process.readAllStandardError());
    QCOMPARE(error, problem.isEmpty() ? QString() : q("panelhost: --%1 %2.\n").arg(option, problem));
    QCOMPARE(m_process.exitCode(), problem.isEmpty() ? 0 : 2);
    QCOMPARE(QFile::exists(file), problem.isEmpty());
    if (problem.isEmpty())
        QCOMPARE(texts(file, q("SELECT %1 FROM run").arg(option).toUtf8().constData()), QStringList{value});
}

QTEST_GUILESS_MAIN(RecordsProcessTest)

#include "tst_recordsprocess.moc"
