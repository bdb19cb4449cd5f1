#include "../host/hosttest.h"
#include "records/journalreader.h"
#include "session/session.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace panelhost;

/// Runs that are derived from journals: the shipped ones, made ones, and that of a session.
class RunsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shippedJournals_data();
    void shippedJournals();
    void phasesOfARunThatPasses();
    void phasesFollowEachOther_data();
    void phasesFollowEachOther();
    void keysAndPorts();
    void failuresOfAnAgingSession();
    void sessionsOneAfterTheOther();
    void idsTellJournalsApart();
    void theSessionLineTellsWhoAndWhen();
    void theUnitChangesWithinASession();
    void theNextUnitEndsOpenRuns();
    void aReportDecides();
    void aFailedRunStaysFailed();
    void aRunIsBegunAnewBehindTheEntryScreen();
    void anEmptyUsbReportHasAllKnownPortsDown();
    void linesThatAreNoJournal_data();
    void linesThatAreNoJournal();
    void theJournalOfASessionGivesTheSameRuns();
};

namespace {

const QStringList PhaseNames = {q("brightness"), q("pattern"),  q("key-light"),           q("key-walk"),    q("tbar"),
                                q("net-port"),   q("usb-port"), q("typec-communication"), q("typec-power"), q("poe")};

QByteArray golden(const QString &name)
{
    QFile file(q(LCD_SOURCE_DIR "/tests/e2e/journals/") + name + q(".jsonl"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVector<Run> runsOf(QByteArray journal, QString *error = nullptr)
{
    QVector<Run> runs;
    QBuffer buffer(&journal);
    buffer.open(QIODevice::ReadOnly);
    RunExtractor extractor([&runs](const Run &run) { runs << run; });
    QString problem;
    readJournal(buffer, q("test.jsonl"), extractor, &problem);
    extractor.endSession();
    if (error)
        *error = problem;
    return runs;
}

QString summary(const Run &run)
{
    return q("%1 %2 %3-%4 %5")
        .arg(toText(run.kind), toText(run.outcome))
        .arg(run.begin)
        .arg(run.end)
        .arg(run.failedPhase())
        .trimmed();
}

QStringList summaries(const QVector<Run> &runs)
{
    QStringList list;
    for (const Run &run : runs)
        list << summary(run);
    return list;
}

QStringList phaseTexts(const Run &run)
{
    QStringList list;
    for (const RunPhase &phase : run.phases)
        list << q("%1 %2 %3+%4 %5")
                    .arg(phase.name, toText(phase.outcome))
                    .arg(phase.begin)
                    .arg(phase.duration)
                    .arg(toText(phase.source))
                    .trimmed();
    return list;
}

/// A journal made line by line.
class MadeJournal
{
public:
    MadeJournal &line(const char *kind, const char *name, const char *data)
    {
        m_lines += q("{\"seq\":%1,\"t\":%2,\"thread\":\"gui\",\"kind\":\"%3\",\"name\":\"%4\",\"data\":%5}\n")
                       .arg(++m_sequence)
                       .arg(m_now)
                       .arg(q(kind), q(name), q(data))
                       .toUtf8();
        return *this;
    }
    MadeJournal &screen(const char *data) { return line("screen", "screen", data); }
    MadeJournal &press() { return line("action", "soft", "{\"side\":\"right\"}"); }
    MadeJournal &at(int now)
    {
        m_now = now;
        return *this;
    }
    /// To the first phase of a machine test.
    MadeJournal &started()
    {
        return screen("{\"page\":\"machine\",\"titleIcon\":\"MachineMode\",\"steps\":[],\"log\":[]}")
            .press()
            .firstPhase();
    }
    MadeJournal &firstPhase()
    {
        line("call", "lcdFactoryModeBiz.setFactoryTestType", "{\"testType\":0}");
        return screen("{\"titleIcon\":\"ScreenLight\",\"steps\":[{\"color\":\"#ffffff\"}]}");
    }
    MadeJournal &failed(const char *log)
    {
        return screen(qPrintable(
            q("{\"titleIcon\":\"MachineMode\",\"steps\":[{\"color\":\"#ff483c\"}],\"log\":%1}").arg(q(log))));
    }
    QByteArray lines() const { return m_lines; }

private:
    QByteArray m_lines;
    int m_sequence = 0;
    int m_now = 0;
};

const char SessionLine[] =
    "{\"session\":{\"begin\":\"2026-03-01T08:00:00.000Z\",\"component\":\"1.2\",\"id\":"
    "\"0d7f2a34-53b1-4b6c-9f4e-0c1d2e3f4a5b\",\"operator\":\"Kim\",\"station\":\"S3\",\"unit\":\"A1\"}}\n";

}

void RunsTest::shippedJournals_data()
{
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QStringList &expected) { QTest::newRow(name) << expected; };
    row("machine-pass", {q("machine passed 0-57210")});
    row("machine-pass-zh", {q("machine passed 0-70670")});
    row("machine-fail-0", {q("machine failed 0-20000 brightness")});
    row("machine-fail-1", {q("machine failed 0-32000 pattern")});
    row("machine-fail-2", {q("machine failed 0-52000 key-light")});
    row("machine-fail-3", {q("machine failed 0-64600 key-walk")});
    row("machine-fail-5", {q("machine failed 0-69650 net-port")});
    row("machine-fail-6", {q("machine failed 0-70670 usb-port")});
    row("machine-fail-7", {q("machine failed 0-70670 typec-communication")});
    row("machine-fail-9", {q("machine failed 0-70670 typec-power")});
    row("machine-fail-10", {q("machine failed 0-70670 poe")});
    row("machine-retest",
        {q("machine failed 0-20000 brightness"), q("machine passed 20000-90670"), q("machine aborted 90670-90670")});
    row("machine-wrong-keys", {q("machine failed 0-54000 key-walk")});
    row("tbar-positions", {q("machine aborted 0-67600")});
    row("faults", {q("machine passed 0-71970")});
    row("aging", {q("aging failed 0-216080")});
    row("aging-zh", {q("aging failed 0-78200")});
    row("tour", {q("repair aborted 0-0")});
    row("repair-screen-light", {q("repair aborted 0-2000"), q("repair passed 62000-82000")});
    row("repair-bad-pixel-fail", {q("repair failed 0-0 screenbadpixel")});
    row("repair-button-function-fail", {q("repair failed 0-0 buttonfunction"), q("repair aborted 0-0")});
}

void RunsTest::shippedJournals()
{
    QFETCH(QStringList, expected);
    QString error;
    QCOMPARE(summaries(runsOf(golden(q(QTest::currentDataTag())), &error)), expected);
    QCOMPARE(error, QString());
}

void RunsTest::phasesOfARunThatPasses()
{
    const QVector<Run> runs = runsOf(golden(q("machine-pass")));
    QCOMPARE(runs.size(), 1);
    QCOMPARE(phaseTexts(runs.first()),
             (QStringList{q("brightness passed 0+20000 operator"), q("pattern passed 20000+0 operator"),
                          q("key-light passed 20000+20000 operator"), q("key-walk passed 40000+12600 operator"),
                          q("tbar passed 52600+3500 test"), q("net-port passed 56100+1070 operator"),
                          q("usb-port passed 57170+40 operator"), q("typec-communication passed 57210+0 operator"),
                          q("typec-power passed 57210+0 operator"), q("poe passed 57210+0 operator")}));
    const Run tour = runsOf(golden(q("tour"))).first();
    QCOMPARE(phaseTexts(tour), QStringList{q("tbar aborted 0+0")});
    const Run repair = runsOf(golden(q("repair-screen-light"))).last();
    QCOMPARE(phaseTexts(repair), QStringList{q("screenlight passed 62000+20000 operator")});
}

void RunsTest::phasesFollowEachOther_data()
{
    QTest::addColumn<QByteArray>("journal");
    const QStringList files = QDir(q(LCD_SOURCE_DIR "/tests/e2e/journals")).entryList({q("*.jsonl")});
    QVERIFY(files.size() >= 26);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << golden(file.chopped(6));
}

void RunsTest::phasesFollowEachOther()
{
    QFETCH(QByteArray, journal);
    const QVector<Run> runs = runsOf(journal);
    for (const Run &run : runs) {
        qint64 next = run.begin;
        for (int index = 0; index < run.phases.size(); ++index) {
            const RunPhase &phase = run.phases.at(index);
            if (run.kind == RunKind::Machine)
                QCOMPARE(phase.name, PhaseNames.at(index));
            QCOMPARE(phase.begin, next);
            next = phase.begin + phase.duration;
            QCOMPARE(phase.outcome, index + 1 < run.phases.size() ? RunOutcome::Passed : run.outcome);
        }
        if (!run.phases.isEmpty())
            QCOMPARE(next, run.end);
        if (run.kind == RunKind::Machine && run.outcome == RunOutcome::Passed)
            QCOMPARE(run.phases.size(), PhaseNames.size());
    }
}

void RunsTest::keysAndPorts()
{
    const Run wrong = runsOf(golden(q("machine-wrong-keys"))).first();
    QCOMPARE(wrong.wrongKeyCount, 6);
    QCOMPARE(wrong.wrongKeys, (QVector<int>{33, 2, 42, 10, 32, 33}));
    const Run passed = runsOf(golden(q("machine-pass"))).first();
    QCOMPARE(passed.wrongKeyCount, 0);
    QCOMPARE(passed.ports.size(), 8);
    QCOMPARE(passed.ports.value(q("net2")), q("plugged"));
    QCOMPARE(passed.ports.value(q("net3")), q("unplugged"));
    QCOMPARE(passed.ports.value(q("usb4")), q("plugged"));
    const QByteArray skipped = MadeJournal()
                                   .started()
                                   .line("call", "lcdKeyboardEvent.setKeyLed", "{\"halKey\":7,\"mode\":1}")
                                   .screen("{\"titleIcon\":\"ButtonFunction\"}")
                                   .line("log", "default", "{\"text\":\"[ButtonFunctionBiz] Skipped key: halKey= 7\"}")
                                   .lines();
    QCOMPARE(runsOf(skipped).first().skippedKeys, QVector<int>{7});
}

void RunsTest::failuresOfAnAgingSession()
{
    const Run run = runsOf(golden(q("aging"))).first();
    QCOMPARE(run.rounds, 2);
    QCOMPARE(run.failureCount, 2);
    QCOMPARE(run.failures.at(0).at, 136020);
    QCOMPARE(run.failures.at(0).ports, QStringList{q("net2")});
    QCOMPARE(run.failures.at(1).at, 212080);
    QCOMPARE(run.failures.at(1).ports, QStringList{q("net3")});
}

// The sequence numbers begin anew.
void RunsTest::sessionsOneAfterTheOther()
{
    const QByteArray first = golden(q("tbar-positions"));
    const QByteArray second = golden(q("machine-fail-0"));
    const QVector<Run> both = runsOf(first + second);
    QCOMPARE(summaries(both), summaries(runsOf(first)) + summaries(runsOf(second)));
    QCOMPARE(both.at(0).id, runsOf(first).first().id);
    QCOMPARE(both.at(1).id, runsOf(second).first().id);
}

void RunsTest::idsTellJournalsApart()
{
    QSet<QUuid> ids;
    int count = 0;
    const QStringList files =
        QDir(q(LCD_SOURCE_DIR "/tests/e2e/journals")).entryList({q("machine-fail-*.jsonl"), q("aging*.jsonl")});
    for (const QString &file : files) {
        for (const Run &run : runsOf(golden(file.chopped(6)))) {
            QCOMPARE(run.id.version(), QUuid::Sha1);
            ids << run.id;
            ++count;
        }
    }
    QCOMPARE(ids.size(), count);
    // The same lines up to the end of a run are the same run.
    QCOMPARE(runsOf(golden(q("machine-retest"))).first().id, runsOf(golden(q("machine-fail-0"))).first().id);
    QCOMPARE(runsOf(golden(q("aging"))).first().id, runsOf(golden(q("aging"))).first().id);
}

void RunsTest::theSessionLineTellsWhoAndWhen()
{
    const Run run = runsOf(SessionLine + golden(q("machine-retest"))).at(1);
    QCOMPARE(run.session.unit, q("A1"));
    QCOMPARE(run.session.station, q("S3"));
    QCOMPARE(run.session.operatorName, q("Kim"));
    QCOMPARE(run.session.componentVersion, q("1.2"));
    QCOMPARE(run.beginUtc(), QDateTime({2026, 3, 1}, {8, 0, 20}, Qt::UTC));
    QCOMPARE(run.endUtc(), QDateTime({2026, 3, 1}, {8, 1, 30, 670}, Qt::UTC));
    const QJsonObject json = run.toJson();
    QCOMPARE(json.value(q("begin")).toString(), q("2026-03-01T08:00:20.000Z"));
    QCOMPARE(json.value(q("outcome")).toString(), q("passed"));
    QVERIFY(json.value(q("attempt")).isNull());
    // The id depends on the session and the position alone.
    QCOMPARE(runsOf(SessionLine + golden(q("machine-pass"))).first().id,
             runsOf(SessionLine + golden(q("machine-fail-0"))).first().id);
    QVERIFY(run.id != runsOf(SessionLine + golden(q("machine-pass"))).first().id);
    // What is written is what was read.
    QString error;
    const auto again = SessionInfo::fromJson(QJsonDocument::fromJson(run.session.toJsonLine()).object(), &error);
    QVERIFY2(again, qPrintable(error));
    QCOMPARE(again->toJsonLine() + '\n', QByteArray(SessionLine));
}

void RunsTest::theUnitChangesWithinASession()
{
    const QByteArray journal = MadeJournal()
                                   .started()
                                   .press()
                                   .failed("[\"Test failed\"]")
                                   .line("action", "unit", "{\"unit\":\"B2\"}")
                                   .line("action", "language", "{\"code\":\"de\"}")
                                   .press()
                                   .firstPhase()
                                   .lines();
    const QVector<Run> runs = runsOf(SessionLine + journal);
    QCOMPARE(runs.size(), 2);
    QCOMPARE(runs.at(0).session.unit, q("A1"));
    QCOMPARE(runs.at(1).session.unit, q("B2"));
    QCOMPARE(runs.at(1).session.language, q("de"));
}

void RunsTest::theNextUnitEndsOpenRuns()
{
    const QByteArray journal = MadeJournal()
                                   .started()
                                   .at(3000)
                                   .line("action", "unit", "{\"unit\":\"B2\"}")
                                   .at(4000)
                                   .press()
                                   .firstPhase()
                                   .at(5000)
                                   .failed("[\"Test failed\"]")
                                   .lines();
    const QVector<Run> runs = runsOf(SessionLine + journal);
    QCOMPARE(summaries(runs), (QStringList{q("machine aborted 0-3000"), q("machine failed 4000-5000 brightness")}));
    QCOMPARE(runs.at(0).session.unit, q("A1"));
    QCOMPARE(runs.at(1).session.unit, q("B2"));
}

void RunsTest::aReportDecides()
{
    const QByteArray failed =
        MadeJournal()
            .started()
            .press()
            .at(500)
            .line("event", "lcdMemoryCacheNetworkPort.report", "{\"records\":[{\"port\":0,\"link\":0}]}")
            .failed("[\"Test failed\"]")
            .lines();
    QCOMPARE(phaseTexts(runsOf(failed).first()), QStringList{q("brightness failed 0+500 report")});
    const QByteArray passed =
        MadeJournal()
            .started()
            .press()
            .at(20000)
            .screen("{\"titleIcon\":\"ScreenBadPixel\"}")
            .at(20500)
            .line("event", "lcdMemoryCacheNetworkPort.changed", "{\"records\":[{\"port\":0,\"link\":1}]}")
            .screen("{\"titleIcon\":\"ButtonLight\",\"log\":[\"Screen bad pixel pass\"]}")
            .lines();
    QCOMPARE(phaseTexts(runsOf(passed).first()),
             (QStringList{q("brightness passed 0+20000 operator"), q("pattern passed 20000+500 report"),
                          q("key-light aborted 20500+0")}));
}

// Its fail screen is covered, and the operator goes on to the pass screen.
void RunsTest::aFailedRunStaysFailed()
{
    const QByteArray journal = MadeJournal()
                                   .started()
                                   .press()
                                   .failed("[\"Test failed\"]")
                                   .screen("{\"titleIcon\":\"ButtonLight\",\"steps\":[]}")
                                   .screen("{\"steps\":[{\"color\":\"#129a37\"}]}")
                                   .lines();
    QCOMPARE(summaries(runsOf(journal)), QStringList{q("machine failed 0-0 brightness")});
}

void RunsTest::aRunIsBegunAnewBehindTheEntryScreen()
{
    const char entry[] = "{\"page\":\"machine\",\"titleIcon\":\"MachineMode\",\"steps\":[]}";
    const char running[] = "{\"titleIcon\":\"ScreenLight\",\"steps\":[{\"color\":\"#ffffff\"}]}";
    MadeJournal goesOn = MadeJournal().started().screen("{\"page\":\"hidden\"}").screen(entry).screen(running);
    QCOMPARE(runsOf(goesOn.lines()).size(), 1);
    MadeJournal anew =
        MadeJournal().started().screen("{\"page\":\"hidden\"}").screen(entry).at(700).press().firstPhase();
    QCOMPARE(summaries(runsOf(anew.lines())), (QStringList{q("machine aborted 0-700"), q("machine aborted 700-700")}));
}

void RunsTest::anEmptyUsbReportHasAllKnownPortsDown()
{
    const char report[] = "{\"records\":[{\"nodeType\":26,\"portId\":0,\"linkActive\":1,\"linkBlocked\":0}]}";
    const QByteArray journal = MadeJournal()
                                   .screen("{\"page\":\"aging\",\"left\":\"\",\"right\":\"Start\"}")
                                   .screen("{\"left\":\"Recount\"}")
                                   .line("event", "lcdMemoryCacheNodeUSB.changed", report)
                                   .line("event", "lcdMemoryCacheNodeUSB.changed", "{\"records\":[]}")
                                   .line("event", "lcdMemoryCacheNodeUSB.changed", "{\"records\":[]}")
                                   .lines();
    const Run run = runsOf(journal).first();
    QCOMPARE(run.failureCount, 1);
    QCOMPARE(run.failures.first().ports, QStringList{q("usb1")});
}

void RunsTest::linesThatAreNoJournal_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *line, const char *error) {
        QTest::newRow(name) << QByteArray(line) << q(error);
    };
    row("cut off", "{\"seq\":2,\"t\":0", "expected a JSON object (invalid termination by number)");
    row("no object", "[1]", "expected a JSON object");
    row("no seq", "{\"t\":0}", "expected a whole number from 1 on as \"seq\"");
    row("seq is a text", "{\"seq\":\"2\"}", "expected a whole number from 1 on as \"seq\"");
    row("no t", "{\"seq\":2,\"t\":-1}", "expected milliseconds as \"t\"");
    row("kind", "{\"seq\":2,\"t\":0,\"kind\":\"dance\"}",
        "expected one of call, event, signal, log, screen, action as \"kind\"");
    row("name", "{\"seq\":2,\"t\":0,\"kind\":\"log\"}", "expected a text as \"name\"");
    row("data", "{\"seq\":2,\"t\":0,\"kind\":\"log\",\"name\":\"a\",\"data\":[]}", "expected an object as \"data\"");
    row("session id", "{\"session\":{\"id\":\"7\"}}", "expected a UUID as the \"id\" of the session");
    row("session begin", "{\"session\":{\"id\":\"0d7f2a34-53b1-4b6c-9f4e-0c1d2e3f4a5b\",\"begin\":\"today\"}}",
        "expected a time such as 2026-01-31T08:00:00.000Z as the \"begin\" of the session");
    row("session unit",
        "{\"session\":{\"id\":\"0d7f2a34-53b1-4b6c-9f4e-0c1d2e3f4a5b\",\"begin\":\"2026-01-31T08:00:00Z\",\"unit\":7}}",
        "expected a text as \"unit\" of the session");
}

// What stands before the line isn't lost.
void RunsTest::linesThatAreNoJournal()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, error);
    QString found;
    const QByteArray before = golden(q("machine-fail-0"));
    QCOMPARE(summaries(runsOf(before + line, &found)), summaries(runsOf(before)));
    QCOMPARE(found, q("test.jsonl:%1: %2").arg(before.count('\n') + 1).arg(error));
}

void RunsTest::theJournalOfASessionGivesTheSameRuns()
{
    QString error;
    const auto session = Session::open({}, &error);
    QVERIFY2(session, qPrintable(error));
    const auto act = [&](OperatorAction::Kind kind, const char *name, const char *value) {
        QVERIFY2(session->panelOperator().perform({kind, {{q(name), q(value)}}}, &error), qPrintable(error));
    };
    act(OperatorAction::Kind::Navigate, "key", "down");
    act(OperatorAction::Kind::Navigate, "key", "enter");
    act(OperatorAction::Kind::Soft, "side", "right");
    session->clock().advance(20000);
    act(OperatorAction::Kind::Soft, "side", "left");
    act(OperatorAction::Kind::Soft, "side", "left");

    QVector<Run> live;
    RunExtractor extractor([&live](const Run &run) { live << run; });
    for (const Journal::Entry &entry : session->journal().entries())
        extractor.add(entry);
    extractor.endSession();
    QCOMPARE(summaries(live), (QStringList{q("machine failed 0-20000 brightness"), q("machine aborted 20000-20000")}));
    const QVector<Run> read = runsOf(session->journal().toJsonLines());
    QCOMPARE(read.size(), live.size());
    for (int index = 0; index < read.size(); ++index)
        QCOMPARE(read.at(index).toJson(), live.at(index).toJson());
}

PANELHOST_TEST_MAIN(RunsTest)

#include "tst_runs.moc"
