#include "mockinput.h"
#include "prooflength.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <csignal>

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

const char *const Backlight = "/sys/class/backlight/lcd0/brightness";

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray("unreadable");
}

}

/// panelhost as a process on a board of mock hardware: how it begins, how it ends, and what is left of it.
class tst_BoardProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void missingPartIsOneSentence();
    void profileWithErrorsIsRefused();
    void playIsForTheSimulatedDevice();
    void signalRestores_data();
    void signalRestores();
    void restoreAfterAKill();
    void killAtAnyMomentCanBeRestored();
    void kioskShowsTheLcd();
    void probedProfileCanBeUsed();
    void nothingToRestore();

private:
    QString write(const char *name, const QByteArray &text);
    QByteArray profile() const;
    int run(const QStringList &arguments);
    bool startAgingTest(const QStringList &arguments);

    std::unique_ptr<MockBed> bed;
    std::unique_ptr<MockInput> knob;
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<QProcess> process;
    QByteArray output;
    QByteArray errors;
};

void tst_BoardProcess::initTestCase()
{
    if (!canMock())
        QSKIP("This test needs umockdev-wrapper.");
}

void tst_BoardProcess::init()
{
    directory = std::make_unique<QTemporaryDir>();
    bed = std::make_unique<MockBed>();
    bed->add(q("P: /devices/panel/backlight/lcd0\nE: SUBSYSTEM=backlight\nA: max_brightness=1000\\n\n"
               "A: brightness=420\\n\n\n"));
    bed->add(q("P: /devices/panel/leds/cut\nE: SUBSYSTEM=leds\nA: max_brightness=255\\n\nA: brightness=7\\n\n"
               "A: trigger=none [heartbeat] timer\\n\nA: delay_on=1\\n\nA: delay_off=2\\n\n\n"));
    knob = std::make_unique<MockInput>(
        *bed, MockInput::Description{4, q("panel knob"), {}, {KEY_ENTER, KEY_UP, KEY_DOWN}, {}, {}});
    process = std::make_unique<QProcess>();
    process->setWorkingDirectory(directory->path());
}

void tst_BoardProcess::cleanup()
{
    process.reset();
    knob.reset();
    bed.reset();
}

QString tst_BoardProcess::write(const char *name, const QByteArray &text)
{
    QFile file(directory->filePath(q(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("no file");
    return q(name);
}

QByteArray tst_BoardProcess::profile() const
{
    return "keys: simulated\nleds: {CUT: cut}\nscreens: [{backlight: lcd0}]\n"
           "navigation:\n  device: {name: panel knob}\n  events: {KEY_ENTER: enter, KEY_UP: up, KEY_DOWN: down}\n";
}

int tst_BoardProcess::run(const QStringList &arguments)
{
    process->start(q(PANELHOST), arguments);
    const bool hasEnded = process->waitForFinished(30000);
    output = process->readAllStandardOutput();
    errors = process->readAllStandardError();
    return hasEnded ? process->exitCode() : -1;
}

// The first entry of the menu is the aging test. It begins with the screens at 10 %.
bool tst_BoardProcess::startAgingTest(const QStringList &arguments)
{
    const QString board = write("board.yaml", profile());
    process->start(q(PANELHOST),
                   QStringList{q("--device"), board, q("--state"), q("state"), q("--journal"), q("journal.jsonl")}
                       + arguments);
    const auto lines = [this] { return content(directory->filePath(q("journal.jsonl"))); };
    if (!QTest::qWaitFor([&] { return lines().contains("\"page\":\"menu\""); }, 30000))
        return false;
    const auto press = [&](int count) {
        knob->send(EV_KEY, KEY_ENTER, 1);
        knob->send(EV_KEY, KEY_ENTER, 0);
        return QTest::qWaitFor([&] { return lines().count("\"name\":\"navigate\"") >= count; }, 30000);
    };
    return press(1) && press(2) && QTest::qWaitFor([] { return content(q(Backlight)) == "100"; }, 30000);
}

void tst_BoardProcess::missingPartIsOneSentence()
{
    bed->remove(q("/sys/devices/panel/backlight/lcd0"));
    const QString board = write("board.yaml", profile());
    QCOMPARE(run({q("--device"), board, q("--state"), q("state")}), 2);
    QCOMPARE(errors.constData(),
             "panelhost: board.yaml:3:11: /sys/class/backlight/lcd0: No such file or directory; "
             "\"panelhost probe\" lists what is in /sys/class/backlight.\n");
}

void tst_BoardProcess::profileWithErrorsIsRefused()
{
    const QString board = write("board.yaml", "leds: {CUT: a/b}\nlids: simulated\n");
    QCOMPARE(run({q("--device"), board}), 2);
    QVERIFY2(errors.contains("board.yaml:1:13: error: found \"a/b\""), errors.constData());
    QVERIFY2(errors.contains("board.yaml:2:1: error: found \"lids\""), errors.constData());
    QVERIFY2(errors.contains("panelhost: --device is \"board.yaml\"; the board profile has errors."),
             errors.constData());
}

void tst_BoardProcess::playIsForTheSimulatedDevice()
{
    QCOMPARE(run({q("play"), q("session.yaml"), q("--device"), q("board.yaml")}), 2);
    QCOMPARE(errors.constData(), "panelhost: A scenario is played on the simulated device; take --device away.\n");
}

void tst_BoardProcess::signalRestores_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_BoardProcess::signalRestores()
{
    QFETCH(int, number);
    QVERIFY2(startAgingTest({}), process->readAllStandardError().constData());
    QVERIFY(QFile::exists(directory->filePath(q("state/outputs.json"))));
    kill(static_cast<pid_t>(process->processId()), number);
    QVERIFY(process->waitForFinished(30000));
    QCOMPARE(process->exitStatus(), QProcess::CrashExit); // it ends by the signal
    QCOMPARE(process->exitCode(), number);
    QCOMPARE(content(q(Backlight)), QByteArray("420"));
    QCOMPARE(content(q("/sys/class/leds/cut/trigger")), QByteArray("heartbeat"));
    QVERIFY(!QFile::exists(directory->filePath(q("state/outputs.json"))));
}

void tst_BoardProcess::restoreAfterAKill()
{
    QVERIFY2(startAgingTest({}), process->readAllStandardError().constData());
    QProcess other;
    other.setWorkingDirectory(directory->path());
    other.start(q(PANELHOST), {q("restore"), q("--state"), q("state")});
    QVERIFY(other.waitForFinished(30000));
    QCOMPARE(other.exitCode(), 2); // not while the board is in use
    QCOMPARE(content(q(Backlight)), QByteArray("100"));

    process->kill();
    QVERIFY(process->waitForFinished(30000));
    QCOMPARE(content(q(Backlight)), QByteArray("100"));
    QCOMPARE(run({q("restore"), q("--state"), q("state")}), 0);
    QCOMPARE(output.constData(), "Restored: 2.\n");
    QCOMPARE(content(q(Backlight)), QByteArray("420"));
    QCOMPARE(content(q("/sys/class/leds/cut/brightness")), QByteArray("7"));
}

// Whenever the process is killed, the file is whole or not there, and what it wrote before is restored.
void tst_BoardProcess::killAtAnyMomentCanBeRestored()
{
    const int kills = proofLength(6, 20, 200);
    constexpr int Longest = 1500; // ms: until the LEDs and screens of a test are being written
    const QString state = directory->filePath(q("state/outputs.json"));
    const QString board = write("board.yaml", profile());
    QRandomGenerator random(20260122);
    int restored = 0;
    for (int kill = 0; kill < kills; ++kill) {
        process->start(q(PANELHOST), {q("--device"), board, q("--state"), q("state")});
        QVERIFY(process->waitForStarted());
        QElapsedTimer lived;
        lived.start();
        const int life = static_cast<int>(random.bounded(Longest));
        while (!process->waitForFinished(20) && lived.elapsed() < life) {
            knob->send(EV_KEY, KEY_ENTER, 1); // begins the aging test, which writes to the board
            knob->send(EV_KEY, KEY_ENTER, 0);
        }
        process->kill();
        process->waitForFinished(30000);
        if (QFile::exists(state)) {
            QVERIFY2(QJsonDocument::fromJson(content(state)).isObject(), content(state).constData());
            ++restored;
        }
        QCOMPARE(run({q("restore"), q("--state"), q("state")}), 0);
        QCOMPARE(content(q(Backlight)), QByteArray("420"));
        QCOMPARE(content(q("/sys/class/leds/cut/trigger")).contains("heartbeat"), true);
        QCOMPARE(content(q("/sys/class/leds/cut/brightness")), QByteArray("7"));
        QVERIFY(!QFile::exists(state));
    }
    qInfo("%d of %d kills left something to restore", restored, kills);
    QVERIFY(restored > 0);
}

void tst_BoardProcess::kioskShowsTheLcd()
{
    QVERIFY2(startAgingTest({q("--kiosk")}), process->readAllStandardError().constData());
    process->terminate();
    QVERIFY(process->waitForFinished(30000));
    QCOMPARE(content(q(Backlight)), QByteArray("420"));
}

void tst_BoardProcess::probedProfileCanBeUsed()
{
    bed->add(q("P: /devices/adc/iio:device0\nE: SUBSYSTEM=iio\nA: name=ads1015\\n\nA: in_voltage1_raw=12\\n\n\n"));
    QCOMPARE(run({q("probe"), q("--profile")}), 0);
    QVERIFY2(output.contains("leds:\n  \"CUT\": \"cut\"\n"), output.constData());
    QVERIFY2(output.contains("#   \"panel knob\"  (/dev/input/event4: KEY_ENTER, KEY_UP, KEY_DOWN)\n"),
             output.constData());
    QVERIFY2(output.contains("#   \"{device: ads1015, channel: voltage1}\"  (iio:device0, now 12)\n"),
             output.constData());
    const QString board = write("board.yaml", output);
    QCOMPARE(run({q("--device"), board, q("--state"), q("state"), q("--screenshot"), q("window.png")}), 0);
    QVERIFY2(!errors.contains("panelhost:"), errors.constData());
}

void tst_BoardProcess::nothingToRestore()
{
    QCOMPARE(run({q("restore"), q("--state"), q("state")}), 0);
    QCOMPARE(output.constData(), "There is nothing to restore.\n");
}

QTEST_GUILESS_MAIN(tst_BoardProcess)
#include "tst_boardprocess.moc"
