#include "hardwareoperator.h"

#include "hosttest.h"
#include "networknamespace.h"
#include "playing/player.h"
#include "profile/boardprofile.h"
#include "prooflength.h"
#include "scenario/scenarioloader.h"
#include "scenario/scenariowriter.h"
#include "session/devicenames.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <unistd.h>

using namespace panelhost;

/// Sessions on a board, recorded and then played on the simulated device: the journals are the same, byte for byte.
class tst_BoardRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void machineTest();
    void machineTestByTheWallClock();
    void threeAgingRounds();
    void threeAgingRoundsByTheWallClock();
    void linksAndPositionOfTheStart();
    void partsThatDisappear();

private:
    bool record(const QString &scenario, const std::function<void()> &more = {});
    QString agingScenario();
    QByteArray played();
    void compare();
    QString filePath(const char *name) const { return place + QLatin1Char('/') + q(name); }
    QString write(const char *name, const QByteArray &content);
    static QByteArray cut(const QByteArray &line) { return line.left(300); }

    std::unique_ptr<MockBed> bed;
    std::unique_ptr<MockBoard> board;
    std::unique_ptr<QTemporaryDir> directory;
    QString place;       // of the files
    QByteArray recorded; // the journal
    QString failure;
    double speed = 0; // of the clock; 0: it doesn't follow the wall clock
};

// The interfaces of each test are in a network namespace of their own, which ends with the process.
void tst_BoardRecording::initTestCase()
{
    if (!canMock())
        QSKIP("This test needs umockdev-wrapper.");
    if (geteuid() != 0)
        QSKIP("This test makes network interfaces; run it as root.");
    if (!enterEmptyNetwork())
        QSKIP("This test needs a network namespace of its own.");
}

void tst_BoardRecording::init()
{
    directory = std::make_unique<QTemporaryDir>();
    place = directory->path();
    // "./run board-demo" keeps the files of each test.
    const QString kept = qEnvironmentVariable("PANELHOST_BOARD_DEMO");
    if (!kept.isEmpty()) {
        place = kept + QLatin1Char('/') + q(QTest::currentTestFunction());
        QDir(place).removeRecursively();
        QVERIFY(QDir().mkpath(place));
    }
    recorded.clear();
    failure.clear();
    speed = 0;
    Session::Options options;
    options.share = q(LCD_SOURCE_DIR "/share");
    QVERIFY(enterEmptyNetwork());
    bed = std::make_unique<MockBed>();
    board = std::make_unique<MockBoard>(*bed, deviceNamesOf(options).keys);
}

void tst_BoardRecording::cleanup()
{
    board.reset();
    bed.reset();
}

QString tst_BoardRecording::write(const char *name, const QByteArray &content)
{
    QFile file(filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no file");
    return file.fileName();
}

// The scenario says what the operator does with his hands. Its device isn't used: there is the board.
bool tst_BoardRecording::record(const QString &path, const std::function<void()> &more)
{
    Session::Options options;
    options.share = q(LCD_SOURCE_DIR "/share");
    QStringList errors;
    if (!readBoardProfile(write("board.yaml", board->profile()), filePath("state"), options, &errors)) {
        failure = errors.join(QLatin1Char('\n'));
        return false;
    }
    const auto scenario = loadScenario(path, options, &errors);
    if (!scenario) {
        failure = errors.join(QLatin1Char('\n'));
        return false;
    }
    JournalQueryCounter counter(expectationsOf(scenario->steps));
    options.journalSink = [&](const Journal::Entry &entry) {
        counter.add(entry);
        recorded += entry.toJsonLine() + '\n';
    };
    const std::unique_ptr<Session> session = Session::open(options, &failure);
    if (!session)
        return false;
    ScenarioWriter writer(filePath("recorded.yaml"), *session);
    if (!writer.open(LineFile::IfExists::Refuse, &failure))
        return false;
    session->lcd()->show();
    session->clock().settle();
    if (speed > 0)
        session->clock().run(speed);
    HardwareOperator hands(*session, *board, counter);
    failure = hands.play(scenario->steps);
    if (more && failure.isEmpty())
        more();
    session->clock().stop();
    session->journal().setSink({});
    writer.close();
    write("recorded.jsonl", recorded);
    return failure.isEmpty();
}

QByteArray tst_BoardRecording::played()
{
    Session::Options options;
    options.share = q(LCD_SOURCE_DIR "/share");
    QStringList errors;
    const auto scenario = loadScenario(filePath("recorded.yaml"), options, &errors);
    if (!scenario)
        return errors.join(QLatin1Char('\n')).toUtf8();
    QByteArray journal;
    Player::Options playing;
    playing.journal = [&journal](const Journal::Entry &entry) { journal += entry.toJsonLine() + '\n'; };
    const ScenarioResult result = Player(*scenario, playing, [](const StepResult &, qint64) {}).play();
    return result.passed ? journal : result.error.toUtf8();
}

// A difference is shown with its first line.
void tst_BoardRecording::compare()
{
    const QByteArrayList left = recorded.split('\n');
    const QByteArrayList right = played().split('\n');
    for (int line = 0; line < qMin(left.size(), right.size()); ++line)
        QCOMPARE(cut(right.at(line)), cut(left.at(line)));
    QCOMPARE(right.size(), left.size());
}

void tst_BoardRecording::machineTest()
{
    QVERIFY2(record(q(LCD_SOURCE_DIR "/scenarios/machine-pass.yaml")), qPrintable(failure));
    QVERIFY(recorded.contains("\"name\":\"calibration\""));
    QVERIFY(recorded.contains("\"name\":\"plug\""));
    QVERIFY(recorded.contains("{\"port\":\"usb1\",\"speed\":480}"));
    QVERIFY(recorded.contains("\"name\":\"hold\""));
    compare();
}

// As "panelhost record" does it: the hardware reports at any moment, and the machine is sometimes late.
void tst_BoardRecording::machineTestByTheWallClock()
{
    speed = proofLength(4, 1, 1);
    QElapsedTimer elapsed;
    elapsed.start();
    QVERIFY2(record(q(LCD_SOURCE_DIR "/scenarios/machine-pass.yaml")), qPrintable(failure));
    QVERIFY2(elapsed.elapsed() * speed > 30'000, qPrintable(QString::number(elapsed.elapsed())));
    QVERIFY(recorded.contains("\"name\":\"calibration\""));
    compare();
}

// A round goes on at its port steps when a link has changed.
QString tst_BoardRecording::agingScenario()
{
    return write("aging.yaml", R"(
steps:
  - plug: [net1, net2, net3, net4, usb1, usb2, usb3, usb4]
  - open: Aging test
  - soft: right
  - repeat:
      times: 8
      steps:
        - wait: 60s
        - unplug: [net2, usb3]
        - wait: 777ms
        - plug: [usb3, net2]
        - wait: 20s
  - soft: right
  - navigate: back
  - expect: {page: menu}
)");
}

void tst_BoardRecording::threeAgingRounds()
{
    const QString path = agingScenario();
    QVERIFY2(record(path), qPrintable(failure));
    // Once in a round, when the key lights end.
    QVERIFY(recorded.count("setFactoryPanelMode\",\"data\":{\"mode\":7}") >= 3);
    compare();
}

// Three rounds take eleven minutes; by default they are recorded faster.
void tst_BoardRecording::threeAgingRoundsByTheWallClock()
{
    bool isSet = false;
    const double wanted = qEnvironmentVariable("PANELHOST_AGING_SPEED").toDouble(&isSet);
    speed = isSet ? wanted : proofLength(40, 20, 20);
    const QString path = agingScenario();
    QVERIFY2(record(path), qPrintable(failure));
    QVERIFY(recorded.count("setFactoryPanelMode\",\"data\":{\"mode\":7}") >= 3);
    compare();
}

// The board reports them while the session begins.
void tst_BoardRecording::linksAndPositionOfTheStart()
{
    board->setPlugged(q("net2"), true);
    board->setPlugged(q("usb3"), true);
    board->moveTBar(0.75);
    speed = 1;
    const QString path = write("start.yaml", R"(
steps:
  - expect: {port.net2: plugged, port.usb3: plugged, port.net1: unplugged}
    within: 10s
  - open: Aging test
  - soft: right
  - wait: 1s
)");
    QVERIFY2(record(path), qPrintable(failure));
    QVERIFY(recorded.contains("{\"port\":\"net2\"}"));
    compare();
}

void tst_BoardRecording::partsThatDisappear()
{
    const QString path = write("lost.yaml", R"(
steps:
  - open: completemachine
  - soft: right
  - wait: 1s
)");
    const bool isRecorded = record(path, [this] {
        board->unplugKeys();
        if (!QTest::qWaitFor([this] { return recorded.contains("\"name\":\"part\""); }, 10000))
            failure = q("the board doesn't miss its keys");
    });
    QVERIFY2(isRecorded && failure.isEmpty(), qPrintable(failure));
    QVERIFY2(recorded.contains("{\"name\":\"keys\",\"present\":false}"), recorded.right(500).constData());
    compare();
}

PANELHOST_TEST_MAIN(tst_BoardRecording)
#include "tst_boardrecording.moc"
