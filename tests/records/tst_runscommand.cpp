#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

/// The command runs as a shell sees it.
class RunsCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTable();
    void jsonHasOneObjectALine();
    void csvHasALineOfNames();
    void aJournalWithoutRuns();
    void whatCanNotBeRead();

private:
    struct Result
    {
        int status = -1;
        QStringList out;
        QString err;
    };
    static Result run(const QStringList &arguments);
    static QString journal(const char *name)
    {
        return QStringLiteral(LCD_SOURCE_DIR "/tests/e2e/journals/%1.jsonl").arg(QLatin1String(name));
    }
};

RunsCommandTest::Result RunsCommandTest::run(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(PANELHOST), QStringList{QStringLiteral("runs")} + arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    const QString out = QString::fromUtf8(process.readAllStandardOutput());
    return {process.exitCode(), out.split(QLatin1Char('\n'), Qt::SkipEmptyParts),
            QString::fromUtf8(process.readAllStandardError())};
}

void RunsCommandTest::aTable()
{
    const Result result = run({QStringLiteral("--from"), journal("machine-retest")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out.size(), 4);
    QVERIFY(result.out.at(0).startsWith(QStringLiteral("BEGIN (UTC)")));
    QVERIFY2(result.out.at(1).contains(QStringLiteral("machine  failed       0:20.0  brightness ")),
             qPrintable(result.out.at(1)));
    QVERIFY2(result.out.at(2).contains(QStringLiteral("machine  passed       1:10.6  -")),
             qPrintable(result.out.at(2)));
}

void RunsCommandTest::jsonHasOneObjectALine()
{
    const Result result = run({QStringLiteral("--json"), QStringLiteral("--from"), journal("machine-retest")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.size(), 3);
    const QJsonObject object = QJsonDocument::fromJson(result.out.at(1).toUtf8()).object();
    for (const char *key :
         {"id", "unit", "station", "operator", "kind", "outcome", "begin", "end", "phases", "deviceBegin"})
        QVERIFY2(object.contains(QLatin1String(key)), key);
    QCOMPARE(object.value(QStringLiteral("outcome")).toString(), QStringLiteral("passed"));
    QCOMPARE(object.value(QStringLiteral("deviceEnd")).toInt(), 90670);
}

void RunsCommandTest::csvHasALineOfNames()
{
    const Result result = run({QStringLiteral("--csv"), QStringLiteral("--from"), journal("aging")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.size(), 2);
    const QStringList names = result.out.at(0).split(QLatin1Char(','));
    const QStringList values = result.out.at(1).split(QLatin1Char(','));
    QCOMPARE(values.size(), names.size());
    QCOMPARE(values.at(names.indexOf(QStringLiteral("kind"))), QStringLiteral("aging"));
    QCOMPARE(values.at(names.indexOf(QStringLiteral("rounds"))), QStringLiteral("2"));
}

void RunsCommandTest::aJournalWithoutRuns()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("empty.jsonl")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QCOMPARE(run({QStringLiteral("--from"), file.fileName()}).out, QStringList{QStringLiteral("No runs.")});
    const Result csv = run({QStringLiteral("--csv"), QStringLiteral("--from"), file.fileName()});
    QCOMPARE(csv.out.size(), 1);
    QCOMPARE(csv.status, 0);
}

// What was derived before the error is printed all the same.
void RunsCommandTest::whatCanNotBeRead()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("cut.jsonl"));
    QVERIFY(QFile::copy(journal("machine-fail-0"), path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::Append));
    file.write("{\"seq\":145,");
    file.close();
    const Result cut = run({QStringLiteral("--from"), path});
    QCOMPARE(cut.status, 2);
    QCOMPARE(cut.out.size(), 2);
    QVERIFY2(cut.err.startsWith(QStringLiteral("panelhost: %1:145: expected a JSON object").arg(path)),
             qPrintable(cut.err));
    QCOMPARE(run({QStringLiteral("--from"), directory.path()}).err,
             QStringLiteral("panelhost: %1: not a file\n").arg(directory.path()));
    QCOMPARE(run({QStringLiteral("--json"), QStringLiteral("--csv")}).status, 2);
    QCOMPARE(run({}).status, 2);
}

QTEST_GUILESS_MAIN(RunsCommandTest)

#include "tst_runscommand.moc"
