#include "panelprocess.h"
#include "prooflength.h"
#include "records/recordstore.h"

#include <QtTest/QtTest>

using namespace panelhost;

/// The window's process, killed while it saves runs.
class KilledWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_xServer.start("1400x1000x24")); }
    void savedRunsOutliveTheWindow();

private:
    QStringList texts(const char *query) const;
    QSet<QString> savedIds() const;
    void verifyRunsAreWhole() const;

    XServer m_xServer;
    QTemporaryDir m_directory;
    const QString m_file = m_directory.filePath(text("runs.sqlite"));
};

QStringList KilledWindowTest::texts(const char *query) const
{
    QString error;
    QStringList list;
    const auto store = RecordStore::openExisting(m_file, &error);
    if (!store)
        return {error};
    StoreRows rows = store->connection().execute(text(query));
    while (rows && rows.next())
        list << rows.value(0).toString();
    return list;
}

QSet<QString> KilledWindowTest::savedIds() const
{
    const QStringList list = QFile::exists(m_file) ? texts("SELECT id FROM run") : QStringList();
    return {list.begin(), list.end()};
}

// Each run came with its journal, and was counted.
void KilledWindowTest::verifyRunsAreWhole() const
{
    QCOMPARE(texts("PRAGMA integrity_check"), QStringList{text("ok")});
    QCOMPARE(texts("SELECT count(*) FROM run LEFT JOIN journal ON journal.run = run.id WHERE journal.run IS NULL"),
             QStringList{text("0")});
    QCOMPARE(texts("SELECT (SELECT count(*) FROM run) - (SELECT sum(runs) FROM run_count)"), QStringList{text("0")});
    QCOMPARE(texts("SELECT DISTINCT kind || ' ' || unit FROM run"), QStringList{text("aging K1")});
}

// Enter starts the aging test, and each further one ends a run and begins the next. What another process has seen in
// the file counts as reported.
void KilledWindowTest::savedRunsOutliveTheWindow()
{
    const int rounds = proofLength(3, 8, 50);
    QSet<QString> reported;
    for (int round = 0; round < rounds; ++round) {
        PanelProcess panel(m_xServer);
        QVERIFY(panel.start(
            {text("--records"), text("sqlite:") + m_file, text("--unit"), text("K1"), text("--speed"), text("max")}));
        m_xServer.type(text("Return"));
        QTRY_COMPARE_WITH_TIMEOUT((panel.poll(), panel.page()), text("aging"), 30000);
        QProcess keyboard;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("DISPLAY"), m_xServer.display());
        keyboard.setProcessEnvironment(environment);
        keyboard.start(text("xdotool"),
                       {text("key"), text("--delay"), text("20"), text("--repeat"), text("100000"), text("Return"),
                        text("Return"), text("Escape"), text("Return")});
        QSet<QString> seen;
        QTRY_VERIFY_WITH_TIMEOUT((seen = savedIds() - reported).size() > round % 4, 60000);
        panel.process().waitForFinished((round * 7) % 40);
        panel.process().kill();
        QVERIFY(panel.process().waitForFinished());
        QCOMPARE(panel.process().exitStatus(), QProcess::CrashExit);
        keyboard.kill();
        QVERIFY(keyboard.waitForFinished());
        m_xServer.xdotool({text("keyup"), text("Return"), text("Escape")}); // one of them may still be down
        reported += seen;
        const QSet<QString> found = savedIds();
        QVERIFY((reported - found).isEmpty());
        reported = found;
        verifyRunsAreWhole();
    }
    QVERIFY(reported.size() >= rounds);
    qInfo("%d runs", int(reported.size()));
}

int main(int argc, char **argv)
{
    KilledWindowTest test;
    return runOnXServer(test, argc, argv);
}

#include "tst_killedwindow.moc"
