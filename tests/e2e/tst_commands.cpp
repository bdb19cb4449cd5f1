#include "prooflength.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtTest/QtTest>

#include <cmath>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

/// The commands play and check as a shell sees them: exit status, what they write, and where.
class CommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void playTellsEachStep();
    void playReadsTheStandardInput();
    void colorsInATerminal();
    void playRefusesBadFilesBeforeAnythingRuns();
    void playGoesOnWithTheNextFile();
    void playWritesWhatItIsAskedFor();
    void screenshotsOfTwoScenariosStayApart();
    void playRefusesPlacesThatCanNotBeWritten();
    void playWritesIntoAPipeAndReplacesItNot();
    void playTellsOfAFullDisk();
    void playLeavesWholeLinesOnAFullDisk();
    void playNeverWritesOverAnInput_data();
    void playNeverWritesOverAnInput();
    void playWritesOverARecordingOnlyWhenForced();
    void journalThatIsBeingWrittenIsRefused();
    void recordNeverWritesOverAnInput();
    void recordWritesOverAFileOnlyWhenForced();
    void interruptedPlayLeavesWhatWasPlayed_data();
    void interruptedPlayLeavesWhatWasPlayed();
    void ignoredSignalStaysIgnored();
    void killedPlayLeavesWholeFiles();
    void whatAKilledPlayLeavesIsRemoved();
    void memoryDoesNotGrowWithTime();
    void memoryOfManyAgingRounds();
    void reportFoldsRepeatedRounds();
    void reportBeginsWithFailures();
    void reportIsReadableInBothThemes();
    void reportLinksStepsScreensAndJournal();
    void reportLeadsToTheMomentsOfSteps();
    void reportOfManyAgingRoundsIsSmall();
    void playThatCanNotBeginIsNoFailedExpectation_data();
    void playThatCanNotBeginIsNoFailedExpectation();
    void shareWithErrorsIsRefused_data();
    void shareWithErrorsIsRefused();
    void shareUncheckedIsLeftToTheComponent();
    void menuWithoutMenuBarIsReplacedByTheDefaultOne();
    void lostOutputIsAnError_data();
    void lostOutputIsAnError();
    void aClosedOutputIsNoFilesDescriptor();
    void theDisplayCanNotBeReached_data();
    void theDisplayCanNotBeReached();
    void checkExitStatus_data();
    void checkExitStatus();
    void checkTellsFileLineAndColumn();
    void viewShowsAMoment();
    void viewRefusesBadInput_data();
    void viewRefusesBadInput();
    void viewTakesOver();

private:
    struct Run
    {
        int status = -1;
        QString out;
        QString err;
    };
    Run run(const QStringList &arguments);
    Run runInShell(const QString &redirected);
    QString write(const QString &name, const QByteArray &text);
    QByteArray read(const QString &name);
    /// Makes the directory "s" with the two files; an empty file is left out.
    void writeShare(const QByteArray &menu, const QByteArray &keys);
    bool startAging(QProcess &process, const QStringList &options);
    void checkJournalLines(const QByteArray &journal);
    void checkWellFormed(const QByteArray &xml);
    long mostMemory(const QByteArray &scenario, const QList<QByteArray> &options);

    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

const QByteArray Passing = "steps:\n  - expect: {page: menu}\n  - screenshot: menu\n  - wait: 1s\n";
const QByteArray Failing = "steps:\n  - expect: {page: aging}\n  - wait: 1s\n";
/// An aging test with no end in sight.
const QByteArray Aging = "device:\n  plugged: [net1, net2, net3, net4, usb1, usb2, usb3, usb4]\nsteps:\n"
                         "  - open: Aging test\n  - screenshot: prepared\n  - soft: right\n"
                         "  - repeat: {times: 100000, steps: [{wait: 24h}]}\n";
const QByteArray GoodMenu = "<LCD><MenuBar><MenuItem Key=\"a.Net\"/></MenuBar></LCD>";
const QByteArray GoodKeys = "<LCD><LcdKeys><LcdKey Value=\"1\" Name=\"CUT\"/></LcdKeys></LCD>";

}

void CommandsTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

CommandsTest::Run CommandsTest::run(const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_directory->path());
    process.start(QStringLiteral(PANELHOST), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// In a shell whose "$0" is panelhost.
CommandsTest::Run CommandsTest::runInShell(const QString &redirected)
{
    QProcess process;
    process.setWorkingDirectory(m_directory->path());
    process.start(QStringLiteral("bash"), {QStringLiteral("-c"), redirected, QStringLiteral(PANELHOST)});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString CommandsTest::write(const QString &name, const QByteArray &text)
{
    QFile file(m_directory->filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
    return name;
}

QByteArray CommandsTest::read(const QString &name)
{
    QFile file(m_directory->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void CommandsTest::writeShare(const QByteArray &menu, const QByteArray &keys)
{
    QDir(m_directory->path()).mkdir(QStringLiteral("s"));
    if (!menu.isEmpty())
        write(QStringLiteral("s/factorymenu.xml"), menu);
    if (!keys.isEmpty())
        write(QStringLiteral("s/factorykeychecklist.xml"), keys);
}

void CommandsTest::viewShowsAMoment()
{
    const QString file = write(QStringLiteral("a.yaml"), Passing);
    const auto view = [&](const char *at, const char *picture) {
        return run({QStringLiteral("view"), file, file, QStringLiteral("--at"), QString::fromLatin1(at),
                    QStringLiteral("--screenshot"), QString::fromLatin1(picture)});
    };
    QCOMPARE(view("1s", "a.png").status, 0);
    QVERIFY(QImage::fromData(read(QStringLiteral("a.png"))).width() >= 800);
    const auto viewLine = [&](const char *line, const char *picture) {
        return run({QStringLiteral("view"), file, QStringLiteral("--line"), QString::fromLatin1(line),
                    QStringLiteral("--screenshot"), QString::fromLatin1(picture)});
    };
    QCOMPARE(viewLine("1", "first.png").status, 0);
    QCOMPARE(viewLine("999999", "last.png").status, 0);
    QVERIFY(QImage::fromData(read(QStringLiteral("first.png"))) != QImage::fromData(read(QStringLiteral("last.png"))));
    const auto refused = view("1s", "none/a.png");
    QCOMPARE(refused.status, 2);
    QVERIFY2(refused.err.contains(QStringLiteral("none/a.png: the picture can't be written.")),
             qPrintable(refused.err));
}

void CommandsTest::viewRefusesBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const QString a = QStringLiteral("a.yaml");
    QTest::newRow("time") << QStringList{a, QStringLiteral("--at"), QStringLiteral("soon")}
                          << QStringLiteral("--at is \"soon\", expected a time such as 65s");
    QTest::newRow("line") << QStringList{a, QStringLiteral("--line"), QStringLiteral("0")}
                          << QStringLiteral("--line is \"0\", expected the number of a line of the journal");
    QTest::newRow("time and line") << QStringList{a, QStringLiteral("--line"), QStringLiteral("1"),
                                                  QStringLiteral("--at"), QStringLiteral("1s")}
                                   << QStringLiteral("--at and --line can't be used together.");
    QTest::newRow("no file") << QStringList{QStringLiteral("none.yaml")}
                             << QStringLiteral("none.yaml:1:1: error: No such file or directory");
    QTest::newRow("standard input twice") << QStringList{QStringLiteral("-"), QStringLiteral("-")}
                                          << QStringLiteral("-:1:1: error: the standard input can be read only once");
    QTest::newRow("three") << QStringList{a, a, a} << QStringLiteral("Usage: panelhost view FILE [OTHER]");
    QTest::newRow("recording over the scenario")
        << QStringList{a, QStringLiteral("--take-over"), QStringLiteral("--recording"), a} << QStringLiteral("a.yaml");
}

void CommandsTest::viewRefusesBadInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    write(QStringLiteral("a.yaml"), Passing);
    const auto viewed = run(QStringList{QStringLiteral("view")} + arguments);
    QCOMPARE(viewed.status, 2);
    QVERIFY2(viewed.err.contains(error), qPrintable(viewed.err));
    QCOMPARE(read(QStringLiteral("a.yaml")), Passing);
}

// The session goes on until panelhost is asked to end. The recording has what was done before and after.
void CommandsTest::viewTakesOver()
{
    const QString file =
        write(QStringLiteral("a.yaml"), "steps:\n  - navigate: down\n  - wait: 1h\n  - navigate: up\n");
    const QString recorded = QStringLiteral("recorded.yaml");
    QProcess process;
    process.setWorkingDirectory(m_directory->path());
    process.start(QStringLiteral(PANELHOST),
                  {QStringLiteral("view"), file, QStringLiteral("--at"), QStringLiteral("30min"),
                   QStringLiteral("--take-over"), QStringLiteral("--recording"), recorded});
    QTRY_VERIFY_WITH_TIMEOUT(read(recorded).contains("navigate: down"), 60000);
    process.terminate();
    QVERIFY(process.waitForFinished());
    const QByteArray steps = read(recorded);
    QVERIFY2(!steps.contains("navigate: up"), steps.constData());
    QCOMPARE(run({QStringLiteral("play"), recorded}).status, 0);
}

void CommandsTest::playTellsEachStep()
{
    const auto played = run({QStringLiteral("play"), write(QStringLiteral("a.yaml"), Passing)});
    QCOMPARE(played.status, 0);
    const auto lines = played.out.split(QLatin1Char('\n'));
    QCOMPARE(lines.at(0), QStringLiteral("a.yaml:2 0:00.000 ok     expect: {page: menu}"));
    QCOMPARE(lines.at(2), QStringLiteral("a.yaml:4 0:01.000 ok     wait: 1s"));
    QVERIFY(lines.at(3).startsWith(QStringLiteral("ok     a.yaml: 3 steps, 0:01.000 of the device's time in ")));
}

void CommandsTest::playReadsTheStandardInput()
{
    write(QStringLiteral("a.yaml"), Passing);
    const auto played = runInShell(QStringLiteral("cat a.yaml | \"$0\" play - --report out"));
    QCOMPARE(played.status, 0);
    QVERIFY2(played.out.startsWith(QStringLiteral("-:2 0:00.000 ok     expect: {page: menu}\n")),
             qPrintable(played.out));
    QVERIFY(read(QStringLiteral("out/report.html")).contains("1 of 1 passed"));

    const auto wrong = runInShell(QStringLiteral("printf 'steps:\\n- soft: up\\n' | \"$0\" play -"));
    QCOMPARE(wrong.status, 2);
    QVERIFY2(wrong.err.startsWith(QStringLiteral("-:2:9: error: found \"up\"")), qPrintable(wrong.err));
    const auto twice = runInShell(QStringLiteral("cat a.yaml | \"$0\" play - -"));
    QCOMPARE(twice.status, 2);
    QVERIFY2(twice.err.contains(QStringLiteral("the standard input can be read only once")), qPrintable(twice.err));
    // The file "-" is another one.
    QCOMPARE(runInShell(QStringLiteral("cat a.yaml | \"$0\" play - --journal ./-")).status, 0);
}

void CommandsTest::colorsInATerminal()
{
    write(QStringLiteral("passing.yaml"), Passing);
    write(QStringLiteral("bad.yaml"), "steps:\n  - soft: up\n");
    const QString terminal = QStringLiteral("%1 script -qec \"'$0' play %2\" /dev/null </dev/null");
    const QString ok = QStringLiteral("\033[32mok    \033[0m");
    const auto passing = QStringLiteral("passing.yaml");
    const auto output = [&](const char *environment, const QString &file) {
        return runInShell(terminal.arg(QString::fromLatin1(environment), file)).out;
    };
    QVERIFY(output("NO_COLOR= TERM=xterm", passing).contains(ok));
    QVERIFY(!output("NO_COLOR=1 TERM=xterm", passing).contains(QStringLiteral("\033[3")));
    QVERIFY(!output("NO_COLOR= TERM=dumb", passing).contains(QStringLiteral("\033[3")));
    const QString bad = output("NO_COLOR= TERM=xterm", QStringLiteral("bad.yaml"));
    QVERIFY2(bad.contains(QStringLiteral("bad.yaml:2:11: \033[31merror:\033[0m found")), qPrintable(bad));
    QVERIFY(bad.contains(QStringLiteral("\033[31mpanelhost:\033[0m Nothing was played.")));
    QVERIFY(!run({QStringLiteral("play"), passing}).out.contains(QLatin1Char('\033')));
}

void CommandsTest::playRefusesBadFilesBeforeAnythingRuns()
{
    const auto good = write(QStringLiteral("good.yaml"), Passing);
    const auto bad = write(QStringLiteral("bad.yaml"), "steps:\n  - soft: up\n  - wait: 3\n");
    const auto worse = write(QStringLiteral("worse.yaml"), "steps: [\n");
    const auto played = run({QStringLiteral("play"), good, bad, worse, QStringLiteral("none.yaml")});
    QCOMPARE(played.status, 2);
    QCOMPARE(played.out, QString());
    QVERIFY2(played.err.contains(QStringLiteral("bad.yaml:2:11: error: found \"up\", expected one of left, right\n")),
             qPrintable(played.err));
    QVERIFY(played.err.contains(QStringLiteral("bad.yaml:3:11: error: found \"3\", expected a duration")));
    QVERIFY(played.err.contains(QStringLiteral("worse.yaml:")));
    QVERIFY(played.err.contains(QStringLiteral("none.yaml:1:1: error: No such file or directory\n")));
}

void CommandsTest::playGoesOnWithTheNextFile()
{
    const auto failing = write(QStringLiteral("failing.yaml"), Failing);
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto played = run({QStringLiteral("play"), failing, passing});
    QCOMPARE(played.status, 1);
    QVERIFY(played.out.contains(QStringLiteral("  expected page: \"aging\"\n  found    \"menu\"\n")));
    QVERIFY(!played.out.contains(QStringLiteral("failing.yaml:3 ")));
    QVERIFY(played.out.contains(QStringLiteral("passing.yaml:4 0:01.000 ok")));
    QVERIFY(played.out.endsWith(QStringLiteral("1 of 2 scenarios passed\n")));
}

void CommandsTest::playWritesWhatItIsAskedFor()
{
    const auto failing = write(QStringLiteral("failing.yaml"), Failing);
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto played = run({QStringLiteral("play"), passing, failing, QStringLiteral("--report"),
                             QStringLiteral("out/report"), QStringLiteral("--journal"), QStringLiteral("j.jsonl"),
                             QStringLiteral("--screenshots"), QStringLiteral("out/pictures")});
    QCOMPARE(played.status, 1);
    const auto html = read(QStringLiteral("out/report/report.html"));
    QVERIFY(html.contains("1 of 2 passed"));
    QCOMPARE(html.count("data:image/png;base64,"), 2); // one that the scenario takes, and one of the failure
    QVERIFY(read(QStringLiteral("out/report/report.xml")).contains("tests=\"2\" failures=\"1\""));
    QVERIFY(read(QStringLiteral("j.jsonl")).startsWith("{\"seq\":1,\"t\":0,\"thread\":\"gui\",\"kind\":"));
    QVERIFY(read(QStringLiteral("out/pictures/passing-menu.png")).startsWith("\x89PNG"));
}

// The menu in two places of the cursor; the third file's picture would have the name of the first file's second.
void CommandsTest::screenshotsOfTwoScenariosStayApart()
{
    QVERIFY(QDir(m_directory->path()).mkpath(QStringLiteral("a")));
    QVERIFY(QDir(m_directory->path()).mkpath(QStringLiteral("b")));
    const auto first = write(QStringLiteral("a/x.yaml"), "steps:\n  - screenshot: menu\n  - screenshot: y-menu\n");
    const auto second = write(QStringLiteral("b/x.yaml"), "steps:\n  - navigate: down\n  - screenshot: menu\n");
    const auto third = write(QStringLiteral("b/x-y.yaml"), "steps:\n  - screenshot: menu\n");
    const auto played =
        run({QStringLiteral("play"), first, second, third, QStringLiteral("--screenshots"), QStringLiteral("out")});
    QCOMPARE(played.status, 0);
    const QDir out(m_directory->filePath(QStringLiteral("out")));
    QCOMPARE(out.entryList(QDir::Files, QDir::Name).join(QLatin1Char(' ')),
             QStringLiteral("x-2-menu.png x-menu.png x-y-menu-2.png x-y-menu.png"));
    QVERIFY(read(QStringLiteral("out/x-menu.png")) != read(QStringLiteral("out/x-2-menu.png")));
    QCOMPARE(read(QStringLiteral("out/x-menu.png")), read(QStringLiteral("out/x-y-menu-2.png")));
}

void CommandsTest::playRefusesPlacesThatCanNotBeWritten()
{
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto report =
        run({QStringLiteral("play"), passing, QStringLiteral("--report"), passing + QStringLiteral("/x")});
    QCOMPARE(report.status, 2);
    QCOMPARE(report.out, QString());
    const auto journal = run({QStringLiteral("play"), passing, QStringLiteral("--journal"), QStringLiteral("no/j")});
    QCOMPARE(journal.status, 2);
    QVERIFY2(journal.err.contains(QStringLiteral("no/j: ")), qPrintable(journal.err));
}

void CommandsTest::playWritesIntoAPipeAndReplacesItNot()
{
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto pipe = m_directory->filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    QProcess reader;
    reader.start(QStringLiteral("cat"), {pipe});
    const auto played = run({QStringLiteral("play"), passing, QStringLiteral("--journal"), pipe});
    QCOMPARE(played.status, 0);
    QVERIFY(reader.waitForFinished());
    QVERIFY(reader.readAllStandardOutput().startsWith("{\"seq\":1,"));
    QVERIFY(QFileInfo::exists(pipe) && !QFileInfo(pipe).isFile());
}

// A node of the test's own, so that the system's is out of reach.
void CommandsTest::playTellsOfAFullDisk()
{
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto full = m_directory->filePath(QStringLiteral("full"));
    if (mknod(full.toLocal8Bit().constData(), S_IFCHR | 0600, makedev(1, 7)) != 0)
        QSKIP("no device can be made here");
    if (!QFile(full).open(QIODevice::WriteOnly))
        QSKIP("no device can be opened here");
    const auto played = run({QStringLiteral("play"), passing, QStringLiteral("--journal"), full});
    QCOMPARE(played.err, QStringLiteral("panelhost: %1: No space left on device\n").arg(full));
    QCOMPARE(played.status, 2);
    QVERIFY(!QFileInfo(full).isFile());
}

// A disk of its own that is too small, in a name space that ends with the shell.
void CommandsTest::playLeavesWholeLinesOnAFullDisk()
{
    const auto shell = [this](const QString &script) {
        QProcess process;
        process.setWorkingDirectory(m_directory->path());
        process.start(QStringLiteral("unshare"),
                      {QStringLiteral("-m"), QStringLiteral("sh"), QStringLiteral("-c"), script});
        process.waitForFinished();
        return Run{process.error() == QProcess::FailedToStart ? 127 : process.exitCode(),
                   {},
                   QString::fromUtf8(process.readAllStandardError())};
    };
    const auto mount = QStringLiteral("mkdir -p disk && mount -t tmpfs -o size=16k tmpfs disk");
    if (shell(mount).status != 0)
        QSKIP("no file system can be mounted here");
    write(QStringLiteral("a.yaml"), Passing);
    const auto played = shell(mount
                              + QStringLiteral(" && " PANELHOST " play a.yaml --journal disk/j --report disk >out\n"
                                               "status=$?; cp disk/j j; ls disk >files; exit $status"));
    QCOMPARE(played.status, 2);
    QVERIFY2(played.err.startsWith(QStringLiteral("panelhost: disk/report.html: No space left on device\n"))
                 || played.err.startsWith(QStringLiteral("panelhost: disk/j: No space left on device\n")),
             qPrintable(played.err));
    QCOMPARE(played.err.count(QStringLiteral("disk/j: No space left on device\n")), 1);
    QCOMPARE(played.err.count(QStringLiteral("disk/report.html: No space left on device\n")), 1);
    QVERIFY(!played.err.contains(QStringLiteral("Unknown error")));
    const auto journal = read(QStringLiteral("j"));
    QVERIFY(journal.size() > 1000);
    checkJournalLines(journal);
    QVERIFY(!read(QStringLiteral("files")).contains(".part"));
    QVERIFY(read(QStringLiteral("out")).contains("ok     a.yaml: 3 steps"));
}

void CommandsTest::checkJournalLines(const QByteArray &journal)
{
    QVERIFY(journal.endsWith('\n'));
    auto lines = journal.split('\n');
    lines.removeLast();
    for (int index = 0; index < lines.size(); ++index)
        QCOMPARE(QJsonDocument::fromJson(lines.at(index)).object().value(QStringLiteral("seq")).toInt(), index + 1);
}

void CommandsTest::checkWellFormed(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
}

void CommandsTest::playNeverWritesOverAnInput_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("victim");
    const auto journal = [](const char *path) {
        return QStringList{QStringLiteral("--journal"), QString::fromLatin1(path)};
    };
    const QStringList report{QStringLiteral("--report"), QStringLiteral("out")};
    QTest::newRow("scenario") << journal("a.yaml") << QStringLiteral("a.yaml");
    QTest::newRow("another spelling") << journal("./out/../a.yaml") << QStringLiteral("a.yaml");
    QTest::newRow("link") << journal("link") << QStringLiteral("a.yaml");
    QTest::newRow("hard link") << journal("hardlink") << QStringLiteral("a.yaml");
    QTest::newRow("part") << journal("part.yaml") << QStringLiteral("part.yaml");
    QTest::newRow("share") << QStringList{QStringLiteral("--share"), QStringLiteral("s"), QStringLiteral("--journal"),
                                          QStringLiteral("s/factorymenu.xml")}
                           << QStringLiteral("s/factorymenu.xml");
    QTest::newRow("report") << report << QStringLiteral("a.yaml");
    QTest::newRow("journal and report") << report + journal("out/report.xml") << QString();
    QTest::newRow("screenshot") << QStringList{QStringLiteral("--screenshots"), QStringLiteral("out")}
                                << QStringLiteral("part.yaml");
}

void CommandsTest::playNeverWritesOverAnInput()
{
    QFETCH(QStringList, options);
    QFETCH(QString, victim);
    const auto path = [this](const char *name) {
        return m_directory->filePath(QString::fromLatin1(name)).toLocal8Bit();
    };
    const QDir directory(m_directory->path());
    QVERIFY(directory.mkdir(QStringLiteral("out")));
    write(QStringLiteral("part.yaml"), "steps:\n  - screenshot: x\n");
    write(QStringLiteral("a.yaml"), "steps:\n  - use: part.yaml\n");
    writeShare(GoodMenu, GoodKeys);
    QCOMPARE(::symlink("a.yaml", path("link").constData()), 0);
    QCOMPARE(::link(path("a.yaml").constData(), path("hardlink").constData()), 0);
    if (QTest::currentDataTag() == QByteArray("report"))
        QCOMPARE(::symlink("../a.yaml", path("out/report.html").constData()), 0);
    QCOMPARE(::symlink("../part.yaml", path("out/a-x.png").constData()), 0);
    const auto before = read(victim);
    const auto played = run(QStringList{QStringLiteral("play"), QStringLiteral("a.yaml")} + options);
    QCOMPARE(played.status, 2);
    QVERIFY2(played.err.contains(QStringLiteral("\" would overwrite \"")), qPrintable(played.err));
    QCOMPARE(read(victim), before);
}

void CommandsTest::playWritesOverARecordingOnlyWhenForced()
{
    write(QStringLiteral("a.yaml"), Passing);
    const QByteArray recording = "# Recorded with panelhost. Play it with: panelhost play FILE\ndevice:\n";
    write(QStringLiteral("old.yaml"), recording);
    const QStringList arguments{QStringLiteral("play"), QStringLiteral("a.yaml"), QStringLiteral("--journal"),
                                QStringLiteral("old.yaml")};
    const auto refused = run(arguments);
    QCOMPARE(refused.status, 2);
    QVERIFY2(refused.err.contains(QStringLiteral("--force")), qPrintable(refused.err));
    QCOMPARE(read(QStringLiteral("old.yaml")), recording);
    QCOMPARE(run(arguments + QStringList{QStringLiteral("--force")}).status, 0);
    checkJournalLines(read(QStringLiteral("old.yaml")));
}

void CommandsTest::journalThatIsBeingWrittenIsRefused()
{
    write(QStringLiteral("a.yaml"), Passing);
    write(QStringLiteral("j"), "of another\n");
    const int other =
        ::open(m_directory->filePath(QStringLiteral("j")).toLocal8Bit().constData(), O_WRONLY | O_CLOEXEC);
    QCOMPARE(flock(other, LOCK_EX), 0);
    const auto played =
        run({QStringLiteral("play"), QStringLiteral("a.yaml"), QStringLiteral("--journal"), QStringLiteral("j")});
    QCOMPARE(played.err, QStringLiteral("panelhost: j: another process is writing this file.\n"));
    QCOMPARE(played.status, 2);
    QCOMPARE(read(QStringLiteral("j")), QByteArray("of another\n"));
    ::close(other);
}

void CommandsTest::recordNeverWritesOverAnInput()
{
    const QString f = QStringLiteral("f");
    const auto both = run({QStringLiteral("record"), f, QStringLiteral("--journal"), QStringLiteral("./f")});
    QCOMPARE(both.err, QStringLiteral("panelhost: --journal \"./f\" would overwrite \"f\", which record writes.\n"));
    QCOMPARE(both.status, 2);
    QVERIFY(!QFileInfo::exists(m_directory->filePath(f)));
    writeShare(GoodMenu, GoodKeys);
    const auto share = run({QStringLiteral("record"), QStringLiteral("s/factorymenu.xml"), QStringLiteral("--force"),
                            QStringLiteral("--share"), QStringLiteral("s")});
    QCOMPARE(share.status, 2);
    QCOMPARE(read(QStringLiteral("s/factorymenu.xml")), GoodMenu);
}

// The picture of the window is taken at once, and the window closes.
void CommandsTest::recordWritesOverAFileOnlyWhenForced()
{
    const QStringList arguments{QStringLiteral("record"), QStringLiteral("f"), QStringLiteral("--screenshot"),
                                QStringLiteral("w.png")};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCOMPARE(run(arguments).status, 0);
    QVERIFY(read(QStringLiteral("f")).startsWith("# Recorded with panelhost."));
    write(QStringLiteral("f"), "precious\n");
    const auto refused = run(arguments);
    QCOMPARE(refused.status, 2);
    QCOMPARE(refused.err, QStringLiteral("panelhost: f: the file exists; --force overwrites it.\n"));
    QCOMPARE(read(QStringLiteral("f")), QByteArray("precious\n"));
    QCOMPARE(run(arguments + QStringList{QStringLiteral("--force")}).status, 0);
    QVERIFY(read(QStringLiteral("f")).startsWith("# Recorded with panelhost."));
}

// Waits until the aging test has left the first lines in the journal.
bool CommandsTest::startAging(QProcess &process, const QStringList &options)
{
    write(QStringLiteral("aging.yaml"), Aging);
    process.setWorkingDirectory(m_directory->path());
    process.start(QStringLiteral(PANELHOST),
                  QStringList{QStringLiteral("play"), QStringLiteral("aging.yaml"), QStringLiteral("--journal"),
                              QStringLiteral("j")}
                      + options);
    QFileInfo journal(m_directory->filePath(QStringLiteral("j")));
    return QTest::qWaitFor(
        [&journal] {
            journal.refresh();
            return journal.size() > 1000000;
        },
        60000);
}

void CommandsTest::interruptedPlayLeavesWhatWasPlayed_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::newRow("SIGINT") << SIGINT << QStringLiteral("Interrupt");
    QTest::newRow("SIGTERM") << SIGTERM << QStringLiteral("Terminated");
    QTest::newRow("SIGHUP") << SIGHUP << QStringLiteral("Hangup");
}

void CommandsTest::interruptedPlayLeavesWhatWasPlayed()
{
    QFETCH(int, number);
    QFETCH(QString, name);
    QProcess player;
    QVERIFY(startAging(
        player,
        {QStringLiteral("--report"), QStringLiteral("out"), QStringLiteral("--screenshots"), QStringLiteral("shots")}));
    kill(static_cast<pid_t>(player.processId()), number);
    QVERIFY(player.waitForFinished());
    QCOMPARE(player.exitStatus(), QProcess::CrashExit);
    QCOMPARE(player.exitCode(), number);
    QCOMPARE(
        QString::fromUtf8(player.readAllStandardError()),
        QStringLiteral("panelhost: Interrupted (%1); what was played is in j, out/report.html, shots.\n").arg(name));
    QVERIFY(player.readAllStandardOutput().contains("STOPPED aging.yaml: "));
    checkJournalLines(read(QStringLiteral("j")));
    const auto html = read(QStringLiteral("out/report.html"));
    checkWellFormed(html);
    QVERIFY(html.contains("0 of 1 passed"));
    QVERIFY(html.contains("<span class=\"badge interrupted\">"));
    QVERIFY(html.contains("soft: right"));
    const auto xml = read(QStringLiteral("out/report.xml"));
    QVERIFY2(xml.contains("failures=\"0\" errors=\"1\"")
                 && xml.contains("<error message=\"aging.yaml: interrupted at "),
             xml.constData());
    QVERIFY(read(QStringLiteral("shots/aging-prepared.png")).startsWith("\x89PNG"));
}

// As nohup does, and a shell for what it starts in the background.
void CommandsTest::ignoredSignalStaysIgnored()
{
    std::signal(SIGHUP, SIG_IGN);
    QProcess player;
    const bool isStarted = startAging(player, {});
    std::signal(SIGHUP, SIG_DFL);
    QVERIFY(isStarted);
    kill(static_cast<pid_t>(player.processId()), SIGHUP);
    kill(static_cast<pid_t>(player.processId()), SIGTERM);
    QVERIFY(player.waitForFinished());
    QCOMPARE(player.exitCode(), SIGTERM);
}

void CommandsTest::killedPlayLeavesWholeFiles()
{
    QProcess player;
    QVERIFY(startAging(player, {QStringLiteral("--report"), QStringLiteral("out")}));
    player.kill();
    QVERIFY(player.waitForFinished());
    checkJournalLines(read(QStringLiteral("j")));
    const auto html = read(QStringLiteral("out/report.html"));
    checkWellFormed(html);
    QVERIFY(html.contains("<span class=\"badge running\">"));
    checkWellFormed(read(QStringLiteral("out/report.xml")));
}

// By the next start.
void CommandsTest::whatAKilledPlayLeavesIsRemoved()
{
    QDir temporary(m_directory->filePath(QStringLiteral("tmp")));
    QVERIFY(temporary.mkpath(QStringLiteral(".")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), temporary.path());
    const auto start = [&](QProcess &player, const QStringList &arguments) {
        player.setProcessEnvironment(environment);
        player.setWorkingDirectory(m_directory->path());
        player.start(QStringLiteral(PANELHOST), QStringList{QStringLiteral("play")} + arguments);
    };
    const auto left = [&temporary] {
        return temporary.entryList({QStringLiteral("panelhost*")}, QDir::AllEntries | QDir::Hidden);
    };
    const QString scenario = write(QStringLiteral("a.yaml"), "device: {usb-stick: temporary}\nsteps:\n  - wait: 24h\n");
    QProcess killed;
    start(killed, {scenario, QStringLiteral("--realtime")});
    QTRY_COMPARE_WITH_TIMEOUT(left().size(), 1, 60000);
    const QString lock = temporary.filePath(left().first() + QStringLiteral("/lock"));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(lock), 60000);
    killed.kill();
    QVERIFY(killed.waitForFinished());
    QVERIFY(QFile::exists(lock));
    QProcess next;
    start(next, {write(QStringLiteral("b.yaml"), Passing)});
    QVERIFY(next.waitForFinished());
    QCOMPARE(next.exitCode(), 0);
    QCOMPARE(left(), QStringList());
}

/// The largest resident size, in KiB, of a process that plays a scenario.
long CommandsTest::mostMemory(const QByteArray &scenario, const QList<QByteArray> &options)
{
    write(QStringLiteral("long.yaml"), scenario);
    QList<QByteArray> arguments{PANELHOST, "play", m_directory->filePath(QStringLiteral("long.yaml")).toLocal8Bit()};
    arguments += options;
    QVector<char *> pointers;
    for (auto &argument : arguments)
        pointers.append(argument.data());
    pointers.append(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int spawned = posix_spawn(&child, PANELHOST, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    rusage usage = {};
    if (spawned != 0 || wait4(child, &status, 0, &usage) != child || status != 0)
        return -1;
    return usage.ru_maxrss;
}

// Journal and report go to the disk: ten times as long takes the same memory.
void CommandsTest::memoryDoesNotGrowWithTime()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer has a memory of its own");
#endif
    const QList<QByteArray> outputs{"--journal", m_directory->filePath(QStringLiteral("j")).toLocal8Bit(), "--report",
                                    m_directory->filePath(QStringLiteral("out")).toLocal8Bit()};
    const auto hours = [](int count) {
        return QByteArray(Aging).replace("times: 100000", "times: " + QByteArray::number(count)).replace("24h", "1h");
    };
    const int fewHours = proofLength(1, 2, 10);
    const long shorter = mostMemory(hours(fewHours), outputs);
    QVERIFY(shorter > 0);
    const auto linesOfShorter = read(QStringLiteral("j")).count('\n');
    const long longer = mostMemory(hours(10 * fewHours), outputs);
    QVERIFY(read(QStringLiteral("j")).count('\n') > 9 * linesOfShorter);
    QVERIFY2(longer < shorter + 8 * 1024, qPrintable(QStringLiteral("%1 KiB, then %2 KiB").arg(shorter).arg(longer)));
    QVERIFY2(longer < 200 * 1024, qPrintable(QStringLiteral("%1 KiB").arg(longer)));
    QVERIFY(read(QStringLiteral("out/report.html")).size() < 2000000);
}

// Without a report, nothing of what was played is kept.
void CommandsTest::memoryOfManyAgingRounds()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitizer has a memory of its own");
#endif
    constexpr int RoundDuration = 76; // s, with all ports plugged
    const auto rounds = [](int count) {
        return "device: {plugged: [net1, net2, net3, net4, usb1, usb2, usb3, usb4]}\n"
               "steps:\n  - open: AgingMode\n  - soft: right\n  - wait: "
            + QByteArray::number(count * RoundDuration) + "s\n  - expect: {page: aging}\n";
    };
    const long shorter = mostMemory(rounds(proofLength(100, 300, 1000)), {});
    QVERIFY(shorter > 0);
    const long longer = mostMemory(rounds(proofLength(400, 1000, 10000)), {});
    QVERIFY2(longer < shorter + 2 * 1024, qPrintable(QStringLiteral("%1 KiB, then %2 KiB").arg(shorter).arg(longer)));
    QVERIFY2(longer < 60 * 1024, qPrintable(QStringLiteral("%1 KiB").arg(longer)));
}

void CommandsTest::reportFoldsRepeatedRounds()
{
    write(QStringLiteral("a.yaml"),
          "steps:\n  - repeat: {times: 15, steps: [{wait: 1s}, {screenshot: again}, "
          "{repeat: {times: 4, steps: [{expect: {page: menu}}]}}]}\n");
    const auto played = run({QStringLiteral("play"), QStringLiteral("a.yaml"), QStringLiteral("--report"),
                             QStringLiteral("out"), QStringLiteral("--screenshots"), QStringLiteral("shots")});
    QCOMPARE(played.status, 0);
    QVERIFY(played.out.contains(QStringLiteral("a.yaml: 90 steps, ")));
    const auto html = read(QStringLiteral("out/report.html"));
    checkWellFormed(html);
    QCOMPARE(html.count("data:image/png;base64,"), 3);
    QCOMPARE(html.count("… repetitions 3 to 14 passed: 72 steps …"), 1);
    QCOMPARE(html.count("… repetitions 3 to 3 passed: 1 steps …"), 3);
    QVERIFY(html.contains("again-15"));
    QCOMPARE(QDir(m_directory->filePath(QStringLiteral("shots"))).entryList(QDir::Files).size(), 15);
}

void CommandsTest::reportBeginsWithFailures()
{
    write(QStringLiteral("passing.yaml"), Passing);
    write(QStringLiteral("failing.yaml"),
          "title: Bad one\ndevice:\n  language: de\n  faults: [{name: key-dead, key: CUT}]\nsteps:\n  - wait: 2s\n"
          "  - expect: {page: aging}\n  - note: never one\n  - repeat: {times: 7, steps: [{note: never two}]}\n");
    const auto played = run({QStringLiteral("play"), QStringLiteral("passing.yaml"), QStringLiteral("failing.yaml"),
                             QStringLiteral("--report"), QStringLiteral("out"), QStringLiteral("--screenshots"),
                             QStringLiteral("shots")});
    QCOMPARE(played.status, 1);
    const auto html = read(QStringLiteral("out/report.html"));
    checkWellFormed(html);
    // In this order.
    int at = 0;
    for (const char *text :
         {"1 of 2 passed", ">Bad one</a>", "<h2>Failures</h2>", "failing.yaml:7:5: failed at 0:02.000",
          "<figure id=\"screen-2-2\"><img alt=\"failure\"", "<section id=\"scenario-2\"", "<h2>Bad one",
          "<th>Date</th><td>20", "<th>panelhost</th><td>1.", "<th>Component</th><td>", "language de",
          "<th>Faults</th><td>key-dead (key CUT)", "Not played: 2 steps", "failing.yaml:8", "note: never one",
          "note: never two", "<section id=\"scenario-1\""}) {
        at = html.indexOf(text, at);
        QVERIFY2(at > 0, text);
    }
    QCOMPARE(html.count("alt=\"failure\""), 1);
    QVERIFY(read(QStringLiteral("shots/failing-failure.png")).startsWith("\x89PNG"));
    QVERIFY(!QFile::exists(m_directory->filePath(QStringLiteral("shots/passing-failure.png"))));
}

// As the guidelines for accessible web pages define it.
static double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const double lighter = qMax(luminance(a), luminance(b));
    const double darker = qMin(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

// All colors are variables, with one value for light and one for dark pages.
void CommandsTest::reportIsReadableInBothThemes()
{
    struct Pair
    {
        const char *text;
        const char *ground;
    };
    static constexpr Pair pairs[] = {{"text", "ground"},
                                     {"text", "card"},
                                     {"dim", "ground"},
                                     {"dim", "card"},
                                     {"link", "card"},
                                     {"link", "soft"},
                                     {"text", "soft"},
                                     {"text", "page"},
                                     {"text", "failed-soft"},
                                     {"passed", "passed-ground"},
                                     {"passed", "ground"},
                                     {"running", "running-ground"},
                                     {"failed", "failed-ground"},
                                     {"failed", "ground"},
                                     {"dim", "page"},
                                     {"failed", "failed-soft"}};
    write(QStringLiteral("a.yaml"), Failing);
    QCOMPARE(run({QStringLiteral("play"), QStringLiteral("a.yaml"), QStringLiteral("--report"), QStringLiteral("out")})
                 .status,
             1);
    const QString html = QString::fromUtf8(read(QStringLiteral("out/report.html")));
    QVERIFY(html.contains(QStringLiteral("color-scheme: light dark")));
    QVERIFY(html.contains(QStringLiteral("<h3>Not played: 1 step</h3><table class=\"steps not-played\">")));
    QVERIFY(html.contains(QStringLiteral("<td class=\"number place\">a.yaml:3</td>")));
    const auto valuesOf = [&html](const char *name) {
        QList<QColor> values;
        auto found = QRegularExpression(QStringLiteral("--%1: (#[0-9a-f]{6});").arg(QString::fromLatin1(name)))
                         .globalMatch(html);
        while (found.hasNext())
            values << QColor(found.next().captured(1));
        return values;
    };
    for (const Pair &pair : pairs) {
        const QList<QColor> texts = valuesOf(pair.text);
        const QList<QColor> grounds = valuesOf(pair.ground);
        QVERIFY2(texts.size() == 2 && grounds.size() == 2, pair.text);
        QVERIFY2(grounds.at(0).lightness() > 200 && grounds.at(1).lightness() < 60, pair.ground);
        for (int theme = 0; theme < 2; ++theme) {
            const double found = contrast(texts.at(theme), grounds.at(theme));
            QVERIFY2(found >= 4.5,
                     qPrintable(QStringLiteral("%1 on %2: %3")
                                    .arg(QString::fromLatin1(pair.text), QString::fromLatin1(pair.ground))
                                    .arg(found)));
        }
    }
}

void CommandsTest::reportLinksStepsScreensAndJournal()
{
    write(QStringLiteral("a.yaml"), "steps:\n  - navigate: down\n  - screenshot: here\n");
    QCOMPARE(run({QStringLiteral("play"), QStringLiteral("a.yaml"), QStringLiteral("--report"), QStringLiteral("out"),
                  QStringLiteral("--journal"), QStringLiteral("j")})
                 .status,
             0);
    const auto html = QString::fromUtf8(read(QStringLiteral("out/report.html")));
    // Each link leads to something in the page.
    static const QRegularExpression links(QStringLiteral("href=\"#([^\"]+)\""));
    QStringList targets;
    for (auto match = links.globalMatch(html); match.hasNext();)
        targets << match.next().captured(1);
    for (const QString &target : qAsConst(targets))
        QVERIFY2(html.contains(QStringLiteral(" id=\"%1\"").arg(target)), qPrintable(target));
    QVERIFY(targets.contains(QStringLiteral("screen-1-2")) && targets.contains(QStringLiteral("step-1-2")));
    // The first line of the step is that of its action.
    const auto lines = read(QStringLiteral("j")).split('\n');
    const auto action = std::find_if(lines.begin(), lines.end(),
                                     [](const QByteArray &line) { return line.contains("\"kind\":\"action\""); });
    QVERIFY(action != lines.end());
    const QString anchor = QStringLiteral("line-1-%1").arg(action - lines.begin() + 1);
    QVERIFY2(targets.contains(anchor), qPrintable(targets.join(QLatin1Char(' '))));
    QVERIFY(html.contains(QStringLiteral("<div id=\"%1\">").arg(anchor) + QString::fromUtf8(*action).toHtmlEscaped()));
    QVERIFY(html.contains(QStringLiteral("<input id=\"search\" type=\"search\"")));
}

// The command is one that can be used: it shows the moment of the step.
void CommandsTest::reportLeadsToTheMomentsOfSteps()
{
    const QString file = write(QStringLiteral("it's a.yaml"),
                               "steps:\n  - navigate: down\n  - wait: 65s\n"
                               "  - expect: {menu.row: 5}\n");
    QCOMPARE(run({QStringLiteral("play"), file, QStringLiteral("--report"), QStringLiteral("out"),
                  QStringLiteral("--journal"), QStringLiteral("j")})
                 .status,
             1);
    const auto html = QString::fromUtf8(read(QStringLiteral("out/report.html")));
    const auto lines = read(QStringLiteral("j")).split('\n');
    const auto action = std::find_if(lines.begin(), lines.end(),
                                     [](const QByteArray &line) { return line.contains("\"kind\":\"action\""); });
    const auto number = action - lines.begin() + 1;
    QVERIFY(html.contains(QStringLiteral("<button data-moment=\"--line %1\">0:00.000</button>").arg(number)));
    QVERIFY(html.contains(QStringLiteral("<button data-moment=\"--at 65000ms\">1:05.000</button>")));
    static const QRegularExpression shown(QStringLiteral("<p class=\"view\">To look at it: <code>([^<]+)</code>"));
    QString command = shown.match(html).captured(1).replace(QStringLiteral("&#39;"), QStringLiteral("'"));
    QVERIFY2(command.startsWith(QStringLiteral("panelhost view '/"))
                 && command.endsWith(QStringLiteral(" --at 65000ms")),
             qPrintable(command));
    QVERIFY2(html.contains(QStringLiteral("data-view=\"panelhost view '")), "each section has the command");
    command.replace(QRegularExpression(QStringLiteral("^panelhost")), QStringLiteral("\"$0\""));
    const auto viewed = runInShell(command + QStringLiteral(" --screenshot a.png"));
    QVERIFY2(viewed.status == 0, qPrintable(viewed.err));
    QVERIFY(QImage::fromData(read(QStringLiteral("a.png"))).width() >= 800);
}

void CommandsTest::reportOfManyAgingRoundsIsSmall()
{
    const QByteArray rounds = QByteArray::number(proofLength(200, 1000, 10000));
    write(QStringLiteral("rounds.yaml"),
          "device:\n  plugged: [net1, net2, net3, net4, usb1, usb2, usb3, usb4]\nsteps:\n  - open: Aging test\n"
          "  - soft: right\n  - repeat:\n      times: "
              + rounds
              + "\n      steps:\n"
                "        - wait: 80s\n        - expect: {page: aging}\n");
    QProcess player;
    player.setWorkingDirectory(m_directory->path());
    player.start(
        QStringLiteral(PANELHOST),
        {QStringLiteral("play"), QStringLiteral("rounds.yaml"), QStringLiteral("--report"), QStringLiteral("out")});
    QVERIFY(player.waitForFinished(240'000));
    QCOMPARE(player.exitCode(), 0);
    const auto html = read(QStringLiteral("out/report.html"));
    QVERIFY2(html.size() < 5000000, QByteArray::number(html.size()).constData());
    QVERIFY(html.contains("<details class=\"rounds\"><summary>Repetition 1, 2 steps, "));
    QVERIFY(html.contains("<summary>Repetition " + rounds + ", 2 steps, "));
    QCOMPARE(html.count("<details class=\"rounds\">"), 3);
}

void CommandsTest::playThatCanNotBeginIsNoFailedExpectation_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("no such language") << QStringList{QStringLiteral("--language"), QStringLiteral("xx")};
    QTest::newRow("no component") << QStringList{QStringLiteral("--component"), QStringLiteral("passing.yaml")};
}

void CommandsTest::playThatCanNotBeginIsNoFailedExpectation()
{
    QFETCH(QStringList, options);
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto played = run(QStringList{QStringLiteral("play"), passing} + options);
    QCOMPARE(played.status, 2);
    QVERIFY2(played.out.startsWith(QStringLiteral("FAILED passing.yaml: 0 steps")), qPrintable(played.out));
}

void CommandsTest::shareWithErrorsIsRefused_data()
{
    QTest::addColumn<QByteArray>("menu");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("message");
    QTest::newRow("broken menu") << QByteArray("<LCD><MenuBar>") << GoodKeys
                                 << QStringLiteral("s/factorymenu.xml:1:15: error: Failed to parse XML: ");
    QTest::newRow("wrong root") << QByteArray(
        "<lcd/>") << GoodKeys << QStringLiteral("s/factorymenu.xml:1:1: error: Root element is not LCD, got: \"lcd\"");
    QTest::newRow("no MenuBar") << QByteArray("<LCD/>") << GoodKeys
                                << QStringLiteral("s/factorymenu.xml:1:1: error: No MenuBar element found in: ");
    QTest::newRow("no menu") << QByteArray() << GoodKeys
                             << QStringLiteral("s/factorymenu.xml:1:1: error: Failed to open config file: ");
    QTest::newRow("broken key list") << GoodMenu << QByteArray("<LCD version=\"2\"><LcdKeys/></LCD>")
                                     << QStringLiteral(
                                            "s/factorykeychecklist.xml:1:1: error: XML version is not 1.0 in file: ");
    QTest::newRow("no key list") << GoodMenu << QByteArray()
                                 << QStringLiteral(
                                        "s/factorykeychecklist.xml:1:1: error: Failed to open config file: ");
}

void CommandsTest::shareWithErrorsIsRefused()
{
    QFETCH(QByteArray, menu);
    QFETCH(QByteArray, keys);
    QFETCH(QString, message);
    writeShare(menu, keys);
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const QStringList share{QStringLiteral("--share"), QStringLiteral("s")};
    const QStringList play{QStringLiteral("play"), passing, QStringLiteral("--journal"), QStringLiteral("j.jsonl")};
    const QStringList record{QStringLiteral("record"), QStringLiteral("r.yaml")};
    for (const auto &command : {play, record, QStringList{QStringLiteral("info")}, QStringList()}) {
        const auto refused = run(command + share);
        QCOMPARE(refused.status, 2);
        QCOMPARE(refused.out, QString());
        QVERIFY2(refused.err.startsWith(message), qPrintable(refused.err));
        QVERIFY2(refused.err.endsWith(QStringLiteral("panelhost: --share is \"s\"; the files there have errors. To use "
                                                     "them all the same, give --share-unchecked.\n")),
                 qPrintable(refused.err));
    }
    QCOMPARE(run(QStringList{QStringLiteral("check")} + share).status, 1);
    QVERIFY(!QFileInfo::exists(m_directory->filePath(QStringLiteral("j.jsonl"))));
    QVERIFY(!QFileInfo::exists(m_directory->filePath(QStringLiteral("r.yaml"))));
}

// The component refuses the menu and takes its default one.
void CommandsTest::shareUncheckedIsLeftToTheComponent()
{
    writeShare("<lcd/>", GoodKeys);
    const auto passing = write(QStringLiteral("passing.yaml"), Passing);
    const auto played = run({QStringLiteral("play"), passing, QStringLiteral("--share-unchecked"), QStringLiteral("s"),
                             QStringLiteral("--journal"), QStringLiteral("j.jsonl")});
    QCOMPARE(played.status, 0);
    QCOMPARE(played.err, QString());
    QVERIFY(read(QStringLiteral("j.jsonl")).contains("Root element is not LCD, got: \\\"lcd\\\""));
}

// Loading it empties the menu, and entering factory mode with an empty menu reads the default files.
void CommandsTest::menuWithoutMenuBarIsReplacedByTheDefaultOne()
{
    writeShare("<LCD/>", GoodKeys);
    const auto scenario = write(QStringLiteral("menu.yaml"),
                                "steps:\n  - expect: {page: menu, menu.items: [Aging test, Machine test, Log Export, "
                                "Factory Reset, RepairMode]}\n");
    const auto played = run({QStringLiteral("play"), scenario, QStringLiteral("--share-unchecked"), QStringLiteral("s"),
                             QStringLiteral("--journal"), QStringLiteral("j.jsonl")});
    QVERIFY2(played.status == 0, qPrintable(played.out));
    const auto journal = read(QStringLiteral("j.jsonl"));
    QVERIFY(journal.contains("No MenuBar element found in:"));
    QVERIFY(journal.contains("Config reloaded from share path:"));
}

void CommandsTest::lostOutputIsAnError_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reason");
    for (const char *command : {"play passing.yaml", "check .", "info", "--help", "--version"}) {
        const auto row = [command](const char *output, const char *form, const char *reason) {
            QTest::addRow("%s, %s", command, output)
                << QString::fromLatin1(form).arg(QString::fromLatin1(command)) << QString::fromLatin1(reason);
        };
        row("a full disk", "\"$0\" %1 > full", "No space left on device");
        row("closed", "\"$0\" %1 >&-", "Bad file descriptor");
        // The reader has ended before anything is written.
        row("a closed pipe", "exec 3> >(:); wait $!; \"$0\" %1 >&3", "Broken pipe");
    }
}

void CommandsTest::lostOutputIsAnError()
{
    QFETCH(QString, line);
    QFETCH(QString, reason);
    write(QStringLiteral("passing.yaml"), Passing);
    write(QStringLiteral("factorymenu.xml"), "<LCD><MenuBar><MenuItem Key=\"a.Nothing\"/></MenuBar></LCD>");
    write(QStringLiteral("factorykeychecklist.xml"), GoodKeys);
    if (line.endsWith(QLatin1String("full"))
        && mknod(m_directory->filePath(QStringLiteral("full")).toLocal8Bit().constData(), S_IFCHR | 0600, makedev(1, 7))
            != 0)
        QSKIP("no device can be made here");
    const auto ended = runInShell(line);
    QVERIFY2(ended.err.endsWith(QStringLiteral("panelhost: The output was lost: %1.\n").arg(reason)),
             qPrintable(ended.err));
    QCOMPARE(ended.status, 2);
}

void CommandsTest::aClosedOutputIsNoFilesDescriptor()
{
    write(QStringLiteral("passing.yaml"), Passing);
    const auto played = runInShell(QStringLiteral("\"$0\" play passing.yaml --journal j.jsonl <&- >&-"));
    QCOMPARE(played.status, 2);
    const auto journal = read(QStringLiteral("j.jsonl"));
    QVERIFY(journal.startsWith("{\"seq\":1,"));
    QVERIFY(!journal.contains("passing.yaml:2 "));
}

void CommandsTest::theDisplayCanNotBeReached_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, const QByteArray &line, const QString &sentence) {
        QTest::newRow(name) << QString::fromLatin1(line) << sentence;
    };
    const QString none = QStringLiteral("There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set; ");
    const QString nowhere = QStringLiteral("The display \":4711\" can't be reached; ");
    const QString play = QStringLiteral("\"panelhost play FILE\" needs none.");
    row("no display", "env -u QT_QPA_PLATFORM -u DISPLAY -u WAYLAND_DISPLAY \"$0\"", none + play);
    row("an empty name", "env -u QT_QPA_PLATFORM -u WAYLAND_DISPLAY DISPLAY= \"$0\"", none + play);
    row("record, no display", "env -u QT_QPA_PLATFORM -u DISPLAY -u WAYLAND_DISPLAY \"$0\" record r.yaml", none + play);
    row("no server", "env -u QT_QPA_PLATFORM -u WAYLAND_DISPLAY DISPLAY=:4711 \"$0\"", nowhere + play);
    row("record, no server", "env QT_QPA_PLATFORM=xcb DISPLAY=:4711 \"$0\" record r.yaml", nowhere + play);
    row("no such platform", "env QT_QPA_PLATFORM=paper \"$0\"",
        QStringLiteral("The platform \"paper\" can't show a window here; ") + play);
    row("play on a display", "env QT_QPA_PLATFORM=xcb DISPLAY=:4711 \"$0\" play passing.yaml",
        nowhere + QStringLiteral("the command needs none when no platform is asked for."));
    row("play", "env -u QT_QPA_PLATFORM DISPLAY=:4711 \"$0\" play passing.yaml", {});
    row("info", "env -u QT_QPA_PLATFORM DISPLAY=:4711 \"$0\" info", {});
    row("help", "env -u QT_QPA_PLATFORM DISPLAY=:4711 \"$0\" --help", {});
    // Commands that only read or write run records start without the window system, unless they draw.
    const QString paper = QStringLiteral("The platform \"paper\" can't show a window here; the command needs none when "
                                         "no platform is asked for.");
    const auto onPaper = [&row](const char *name, const char *command, const QString &sentence = {}) {
        row(name, QByteArray("env QT_QPA_PLATFORM=paper PANELHOST_RECORDS=sqlite:r.sqlite \"$0\" ") + command,
            sentence);
    };
    onPaper("runs", "runs");
    onPaper("runs as JSON", "runs --json");
    onPaper("prune", "prune --older-than 1d --archive a.sqlite");
    onPaper("stats", "stats");
    onPaper("stats with charts", "stats --html page", paper);
    onPaper("schema", "schema");
    onPaper("info on a platform", "info", paper);
    row("runs with Qt's option", "env PANELHOST_RECORDS=sqlite:r.sqlite \"$0\" runs -platform offscreen", {});
}

void CommandsTest::theDisplayCanNotBeReached()
{
    QFETCH(QString, line);
    QFETCH(QString, sentence);
    write(QStringLiteral("passing.yaml"), Passing);
    if (line.contains(QStringLiteral("r.sqlite"))) {
        write(QStringLiteral("saved.yaml"),
              "steps:\n  - open: Aging test\n  - soft: right\n  - wait: 1s\n  - soft: right\n");
        QCOMPARE(runInShell(QStringLiteral("\"$0\" play saved.yaml --records sqlite:r.sqlite")).status, 0);
    }
    const auto ended = runInShell(line);
    QCOMPARE(ended.err, sentence.isEmpty() ? QString() : QStringLiteral("panelhost: %1\n").arg(sentence));
    QCOMPARE(ended.status, sentence.isEmpty() ? 0 : 2);
    QVERIFY(!QFileInfo::exists(m_directory->filePath(QStringLiteral("r.yaml"))));
}

void CommandsTest::checkExitStatus_data()
{
    QTest::addColumn<QByteArray>("menu");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("status");
    const QByteArray unknown = "<LCD><MenuBar><MenuItem Key=\"a.Nothing\"/></MenuBar></LCD>";
    const QStringList strict{QStringLiteral("--strict")};
    QTest::newRow("clean") << GoodMenu << QStringList() << 0;
    QTest::newRow("clean, strict") << GoodMenu << strict << 0;
    QTest::newRow("warning") << unknown << QStringList() << 0;
    QTest::newRow("warning, strict") << unknown << strict << 1;
    QTest::newRow("error") << QByteArray("<LCD>") << QStringList() << 1;
}

void CommandsTest::checkExitStatus()
{
    QFETCH(QByteArray, menu);
    QFETCH(QStringList, options);
    QFETCH(int, status);
    write(QStringLiteral("factorymenu.xml"), menu);
    write(QStringLiteral("factorykeychecklist.xml"), GoodKeys);
    QCOMPARE(run(QStringList{QStringLiteral("check"), QStringLiteral(".")} + options).status, status);
    QCOMPARE(run(QStringList{QStringLiteral("check"), QStringLiteral("no-directory")} + options).status, 2);
}

void CommandsTest::checkTellsFileLineAndColumn()
{
    write(QStringLiteral("factorymenu.xml"),
          "<LCD>\n  <MenuBar>\n    <MenuItem Key=\"a.Nothing\"/>\n  </MenuBar>\n</LCD>");
    const auto checked = run({QStringLiteral("check"), QStringLiteral(".")});
    QCOMPARE(checked.status, 1);
    QCOMPARE(checked.out,
             QStringLiteral("./factorymenu.xml:3:5: warning: unknown title \"Nothing\": the menu shows it unchanged\n"
                            "./factorykeychecklist.xml:1:1: error: Failed to open config file: "
                            "\"./factorykeychecklist.xml\" Error: \"No such file or directory\"\n"));
}

QTEST_GUILESS_MAIN(CommandsTest)
#include "tst_commands.moc"
