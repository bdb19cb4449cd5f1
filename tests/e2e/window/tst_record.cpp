#include "panelprocess.h"

#include <QtTest/QtTest>

#include <csignal>
#include <memory>

/// What is recorded in the window plays again and gives the same journal.
class TestRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void playedAgainGivesTheSameJournal();
    void killLeavesAReadableScenario();
    void fileThatCannotBeWrittenIsRefused();
    void secondRecorderIsRefused();
    void recordingOfAKilledProcessIsNotLocked();
    void fullDiskIsToldAtOnce();
    void runsAreSaved();
    void scannedUnitsAreRecorded();
    void aSignalEndsTheWindowInOrder_data();
    void aSignalEndsTheWindowInOrder();
    void anIgnoredSignalStaysIgnored();

private:
    QProcess &runOffscreen(QProcess &panel, const QStringList &arguments);
    void record();
    void useTheDevice();
    QByteArray play();

    XServer m_xServer;
    std::unique_ptr<PanelProcess> m_panel;
};

void TestRecord::initTestCase()
{
    QVERIFY(m_xServer.start("1400x1000x24"));
}

void TestRecord::init()
{
    m_panel = std::make_unique<PanelProcess>(m_xServer);
}

void TestRecord::cleanup()
{
    m_panel.reset();
}

void TestRecord::record()
{
    QVERIFY(m_panel->start({text("record"), m_panel->path(text("session.yaml")), text("--speed"), text("10")}));
}

// Menu, keys, ports, T-Bar and an aging test under way, while time passes.
void TestRecord::useTheDevice()
{
    m_xServer.type(text("Down"));
    m_panel->click(text("key-27"));
    m_panel->clickPort(text("net1"));
    const QRect bar = m_panel->place(text("tbar"));
    m_xServer.drag(bar.center(), QPoint(bar.center().x(), bar.top() + 10));
    m_xServer.type(text("Up"));
    m_panel->touch({100, 20});
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("aging"), 30000);
    m_xServer.type(text("Return"));
    const auto steps = [this] { return m_panel->count(text("call"), text("lcdKeyboardEvent.setScreenBrightness")); };
    QTRY_VERIFY_WITH_TIMEOUT((m_panel->poll(), steps() >= 6), 30000);
    m_panel->clickPort(text("usb2"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->count(text("action"), text("plug"))), 2, 30000);
}

QByteArray TestRecord::play()
{
    QProcess player;
    player.setProcessChannelMode(QProcess::ForwardedChannels);
    const QString journal = m_panel->path(text("played.jsonl"));
    player.start(text(LCD_BUILD_DIR "/bin/panelhost"),
                 {text("play"), m_panel->path(text("session.yaml")), text("--journal"), journal});
    if (!player.waitForFinished(60000) || player.exitCode() != 0)
        return "the player failed";
    QFile file(journal);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestRecord::playedAgainGivesTheSameJournal()
{
    record();
    useTheDevice();
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitCode(), 0);
    const auto recorded = m_panel->journalBytes().split('\n');
    const auto played = play().split('\n');
    for (int i = 0; i < qMin(recorded.size(), played.size()); ++i)
        QCOMPARE(played[i], recorded[i]);
    QCOMPARE(played.size(), recorded.size());
}

// Time that passed after the last step is not in the file: what is played is the beginning of what was recorded.
void TestRecord::killLeavesAReadableScenario()
{
    record();
    useTheDevice();
    // A process that is gone has the id 0, which would end this test's own group.
    const auto id = static_cast<pid_t>(m_panel->process().processId());
    QVERIFY(id > 0);
    kill(id, SIGKILL);
    QVERIFY(m_panel->process().waitForFinished(30000));
    const auto recorded = m_panel->journalBytes().split('\n');
    auto played = play().split('\n');
    played.removeLast();
    QVERIFY(played.size() > 20);
    QVERIFY(played.size() <= recorded.size());
    for (int i = 0; i < played.size(); ++i)
        QCOMPARE(played[i], recorded[i]);
    const QByteArray lastStep = "\"name\":\"plug\",\"data\":{\"port\":\"usb2\"}";
    QVERIFY(
        std::any_of(played.cbegin(), played.cend(), [&](const QByteArray &line) { return line.contains(lastStep); }));
}

QProcess &TestRecord::runOffscreen(QProcess &panel, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(text("QT_QPA_PLATFORM"), text("offscreen"));
    panel.setProcessEnvironment(environment);
    panel.start(text(LCD_BUILD_DIR "/bin/panelhost"), arguments);
    panel.waitForFinished(60000);
    return panel;
}

void TestRecord::fileThatCannotBeWrittenIsRefused()
{
    QProcess panel;
    runOffscreen(panel, {text("record"), text("/nowhere/at/all.yaml")});
    QCOMPARE(panel.exitCode(), 2);
    QVERIFY(panel.readAllStandardError().contains("/nowhere/at/all.yaml: "));
}

void TestRecord::secondRecorderIsRefused()
{
    record();
    QProcess second;
    const QString file = m_panel->path(text("session.yaml"));
    runOffscreen(second, {text("record"), text("--force"), file});
    QCOMPARE(second.exitCode(), 2);
    QCOMPARE(QString::fromUtf8(second.readAllStandardError()),
             QStringLiteral("panelhost: %1: another process is writing this file.\n").arg(file));
    m_xServer.type(text("Down"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->count(text("action"), text("navigate"))), 1, 30000);
    QFile recording(file);
    QVERIFY(recording.open(QIODevice::ReadOnly));
    QVERIFY(recording.readAll().endsWith("  - navigate: down\n"));
}

void TestRecord::recordingOfAKilledProcessIsNotLocked()
{
    record();
    const auto id = static_cast<pid_t>(m_panel->process().processId());
    QVERIFY(id > 0);
    kill(id, SIGKILL);
    QVERIFY(m_panel->process().waitForFinished(30000));
    QProcess next;
    runOffscreen(next,
                 {text("record"), text("--force"), m_panel->path(text("session.yaml")), text("--screenshot"),
                  m_panel->path(text("w.png"))});
    QCOMPARE(next.exitCode(), 0);
}

// The journal of the test is elsewhere: only the recording runs out of room.
void TestRecord::fullDiskIsToldAtOnce()
{
    QProcess trial;
    trial.start(text("unshare"),
                {text("-m"), text("mount"), text("-t"), text("tmpfs"), text("tmpfs"), m_panel->path({})});
    if (!trial.waitForFinished() || trial.exitCode() != 0)
        QSKIP("no file system can be mounted here");
    const QString file = m_panel->path(text("disk/session.yaml"));
    QVERIFY(m_panel->startWithSmallDisk({text("record"), file}));
    // Each of these leaves a step of the recording. Keys that wait in the queue would all be handled before the test
    // ends.
    QStringList keys{text("key"), text("--delay"), text("1")};
    for (int pair = 0; pair < 20; ++pair)
        keys << text("Down") << text("Up");
    const auto pressed = [this] { return m_panel->count(text("action"), text("navigate")); };
    for (int sent = 40; sent <= 2400 && m_panel->errors().isEmpty(); sent += 40) {
        m_xServer.xdotool(keys);
        QTRY_VERIFY_WITH_TIMEOUT((m_panel->poll(), !m_panel->errors().isEmpty() || pressed() >= sent), 30000);
    }
    QTRY_COMPARE(QString::fromUtf8(m_panel->errors()),
                 QStringLiteral("panelhost: %1: No space left on device\n").arg(file));
    QFile recording(m_panel->diskPath(text("session.yaml")));
    QVERIFY(recording.open(QIODevice::ReadOnly));
    const QByteArray content = recording.readAll();
    QVERIFY(content.size() > 2000);
    QVERIFY(content.endsWith("\n"));
    QVERIFY(content.mid(content.lastIndexOf('\n', -2) + 1).startsWith("  - "));
    QFile copy(m_panel->path(text("session.yaml")));
    QVERIFY(copy.open(QIODevice::WriteOnly) && copy.write(content) == content.size());
    copy.close();
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitCode(), 2);
    QVERIFY(!play().isEmpty());
}

// An aging test that isn't stopped, of a session that wasn't recorded.
void TestRecord::runsAreSaved()
{
    const QString store = text("sqlite:") + m_panel->path(text("runs.sqlite"));
    QVERIFY(m_panel->start({text("--records"), store, text("--unit"), text("A1"), text("--speed"), text("10")}));
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("aging"), 30000);
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->caption("left")), text("Recount"), 30000);
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitCode(), 0);
    QProcess runs;
    runs.start(text(LCD_BUILD_DIR "/bin/panelhost"), {text("runs"), text("--csv"), text("--records"), store});
    QVERIFY(runs.waitForFinished());
    const QStringList lines = QString::fromUtf8(runs.readAllStandardOutput()).split(QLatin1Char('\n'));
    QVERIFY2(lines.size() == 3, qPrintable(lines.join(QLatin1Char('\n'))));
    QVERIFY2(lines.at(1).contains(text(",A1,,,aging,aborted,1,")), qPrintable(lines.at(1)));
}

// A scanner is a keyboard: it types the number and Enter, wherever the focus is.
void TestRecord::scannedUnitsAreRecorded()
{
    const QString store = text("sqlite:") + m_panel->path(text("runs.sqlite"));
    QVERIFY(m_panel->start({text("record"), m_panel->path(text("session.yaml")), text("--records"), store,
                            text("--unit-pattern"), text("[A-Z]\\d+"), text("--speed"), text("10")}));
    QCOMPARE(m_panel->page(), text("hidden"));
    m_xServer.type(text("Return"));
    m_xServer.xdotool({text("key"), text("1"), text("7"), text("Return")});
    m_xServer.xdotool({text("key"), text("A"), text("1"), text("7"), text("Return")});
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("menu"), 30000);
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("aging"), 30000);
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->caption("left")), text("Recount"), 30000);
    m_xServer.xdotool({text("key"), text("B"), text("2"), text("Return")});
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("menu"), 30000);
    QCOMPARE(m_panel->count(text("action"), text("unit")), 2);
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitCode(), 0);

    const QByteArray recorded = m_panel->journalBytes();
    QCOMPARE(play().split('\n'), recorded.mid(recorded.indexOf('\n') + 1).split('\n'));
    const auto csv = [](const QStringList &source) {
        QProcess runs;
        runs.start(text(LCD_BUILD_DIR "/bin/panelhost"), QStringList{text("runs"), text("--csv")} + source);
        return runs.waitForFinished() ? QString::fromUtf8(runs.readAllStandardOutput()) : QString();
    };
    const QString saved = csv({text("--records"), store});
    QVERIFY2(saved.contains(text(",A17,,,aging,aborted,1,")), qPrintable(saved));
    QCOMPARE(csv({text("--from"), m_panel->path(text("journal.jsonl"))}),
             QString(saved).replace(text(",1,"), text(",,")));
}

void TestRecord::aSignalEndsTheWindowInOrder_data()
{
    QTest::addColumn<int>("signal");

    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

// The run that was going on is saved as aborted, and the recording can be played.
void TestRecord::aSignalEndsTheWindowInOrder()
{
    QFETCH(const int, signal);
    const QString store = text("sqlite:") + m_panel->path(text("runs.sqlite"));
    QVERIFY(m_panel->start(
        {text("record"), m_panel->path(text("session.yaml")), text("--records"), store, text("--unit"), text("A1")}));
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("aging"), 30000);
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->caption("left")), text("Recount"), 30000);
    QCOMPARE(kill(static_cast<pid_t>(m_panel->process().processId()), signal), 0);
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitStatus(), QProcess::CrashExit); // ended by the signal, after all was done
    QCOMPARE(m_panel->process().exitCode(), signal);

    QProcess panel;
    const QByteArray runs =
        runOffscreen(panel, {text("runs"), text("--records"), store, text("--json")}).readAllStandardOutput();
    QCOMPARE(runs.count('\n'), 1);
    const QJsonObject run = QJsonDocument::fromJson(runs).object();
    QCOMPARE(run.value(text("kind")).toString(), text("aging"));
    QCOMPARE(run.value(text("outcome")).toString(), text("aborted"));
    QCOMPARE(run.value(text("unit")).toString(), text("A1"));
    QVERIFY(!play().isEmpty());
}

// As under nohup: a terminal that is closed doesn't end the window.
void TestRecord::anIgnoredSignalStaysIgnored()
{
    std::signal(SIGHUP, SIG_IGN); // panelhost inherits it
    const bool isStarted = m_panel->start({text("--records"), text("none")});
    std::signal(SIGHUP, SIG_DFL);
    QVERIFY(isStarted);
    QCOMPARE(kill(static_cast<pid_t>(m_panel->process().processId()), SIGHUP), 0);
    m_xServer.type(text("Return"));
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->page()), text("aging"), 30000);
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_panel->process().exitCode(), 0);
}

int main(int argc, char **argv)
{
    TestRecord test;
    return runOnXServer(test, argc, argv);
}

#include "tst_record.moc"
