#include "application/processsetup.h"
#include "history/devicestatedata.h"
#include "history/historyrecorder.h"
#include "history/lcdpicturedata.h"
#include "history/sessionreplay.h"
#include "playing/player.h"
#include "prooflength.h"
#include "scenario/scenarioloader.h"
#include "scenario/scenariowriter.h"
#include "shippedscenarios.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPixmap>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <csignal>
#include <ctime>

#include <sys/resource.h>

using namespace panelhost;

using Direction = SessionHistory::Direction;

/// The history of a session that was played, and sessions that are taken over from it.
class SessionHistoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deviceStatesAreReadAsTheyWere();
    void picturesAreReadAsTheyWere();
    void equalContentsAreStoredOnce();
    void unreadableContentIsEmpty();
    void contentThatCanNotBeWrittenIsReported();
    void everyLineIsKept_data();
    void everyLineIsKept();
    void aReplayedSessionShowsTheSame_data();
    void aReplayedSessionShowsTheSame();
    void markersTellWhatHappened();
    void failuresAreMarked();
    void aFailedStepIsMarked();
    void linesAreFound();
    void theFirstDifferenceIsFound();
    void manyHoursOfAging();
    void aSessionThatWasTakenOverIsRecorded();
    void interruptedRecordingEnds();

private:
    std::unique_ptr<SessionHistory> history(const QString &path);
    std::unique_ptr<SessionHistory> historyOf(const QByteArray &text);
    QString write(const QByteArray &text);

    QTemporaryDir m_directory;
};

namespace {

Scenario load(const QString &path)
{
    QStringList errors;
    const auto scenario = loadScenario(path, shippedOptions(), &errors);
    if (!scenario)
        qFatal("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    return *scenario;
}

bool neverInterrupted()
{
    return false;
}

bool openedQuietly(Session &, QString *)
{
    return true;
}

DeviceState fullState()
{
    DeviceState state;
    state.keys = {{27, QStringLiteral("CUT"), {1, 1, 70, 650}, true}, {3, QStringLiteral("é"), {2, 0, 0, 800}, false}};
    state.screenBrightness[0] = 10;
    state.screenBrightness[1] = 30;
    state.screenBrightness[2] = 50;
    state.pattern = {1, 4, 77};
    state.tbar.type = TBarType::Fader;
    state.tbar.position = 0.625;
    state.tbar.tolerance = 0.25;
    state.tbar.step = QStringLiteral("top");
    state.tbar.target = TBarEnd::Top;
    state.tbar.failure = QStringLiteral("stuck");
    state.netPorts = {{QStringLiteral("net1"), 11, true, false}};
    state.usbPorts = {{QStringLiteral("usb1"), 12, false, true}, {QStringLiteral("usb2"), 13, true, false}};
    state.panelMode = 7;
    state.testType = 3;
    state.machineTestKind = 2;
    state.missingParts = QStringList{QStringLiteral("keys")};
    return state;
}

}

std::unique_ptr<SessionHistory> SessionHistoryTest::history(const QString &path)
{
    QString error;
    auto history = HistoryRecorder(load(path)).record(neverInterrupted, &error);
    if (!history)
        qFatal("%s", qPrintable(error));
    return history;
}

QString SessionHistoryTest::write(const QByteArray &text)
{
    const QString path = m_directory.filePath(QStringLiteral("scenario.yaml"));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? path : QString();
}

std::unique_ptr<SessionHistory> SessionHistoryTest::historyOf(const QByteArray &text)
{
    return history(write(text));
}

void SessionHistoryTest::deviceStatesAreReadAsTheyWere()
{
    const DeviceState state = fullState();
    const DeviceState read = deviceStateFromData(toData(state));
    QCOMPARE(toData(read), toData(state));
    QCOMPARE(read.keys.size(), 2);
    QCOMPARE(read.keys[0].name, QStringLiteral("CUT"));
    QVERIFY(read.keys[0].led == state.keys[0].led);
    QVERIFY(read.keys[0].isDown && !read.keys[1].isDown);
    QCOMPARE(read.screenBrightness[2], 50);
    QCOMPARE(read.pattern.level, 77);
    QVERIFY(read.tbar == state.tbar);
    QCOMPARE(read.netPorts[0].number, 11);
    QVERIFY(read.usbPorts[0].isBlocked && read.usbPorts[1].isPlugged);
    QCOMPARE(read.machineTestKind, 2);
    QCOMPARE(read.testType, 3);
    QCOMPARE(read.panelMode, 7);
    QCOMPARE(read.missingParts, QStringList{QStringLiteral("keys")});
    DeviceState other = state;
    other.keys[1].led.period = 801;
    QVERIFY(toData(other) != toData(state));
}

void SessionHistoryTest::picturesAreReadAsTheyWere()
{
    QImage picture(60, 40, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    picture.setPixelColor(59, 39, Qt::red);
    picture.setDevicePixelRatio(2);
    const QImage read = pictureFromData(toData(picture));
    QCOMPARE(read, picture);
    QCOMPARE(read.devicePixelRatio(), 2.0);
    const QByteArray whole = toData(picture);
    // Its size is the first thing in it: the pixels are too few, and then too many.
    for (const QSize &size : {QSize(60, 41), QSize(60, 39)}) {
        QByteArray wrong;
        QDataStream stream(&wrong, QIODevice::WriteOnly);
        stream << size;
        QVERIFY(pictureFromData(wrong + whole.mid(wrong.size())).isNull());
    }
    QTest::ignoreMessage(QtWarningMsg, "qUncompress: Input data is corrupted");
    QVERIFY(pictureFromData("no picture").isNull());
}

void SessionHistoryTest::equalContentsAreStoredOnce()
{
    ContentFile file;
    QCOMPARE(file.add("abc"), 0);
    QCOMPARE(file.add("de"), 1);
    QCOMPARE(file.add("abc"), 0);
    QCOMPARE(file.append("abc"), 2);
    QCOMPARE(file.add("abc"), 0);
    QCOMPARE(file.count(), 3);
    QCOMPARE(file.size(), 8);
    QCOMPARE(file.read(1), QByteArray("de"));
    QCOMPARE(file.read(2), QByteArray("abc"));
    QVERIFY(file.error().isEmpty());
}

void SessionHistoryTest::unreadableContentIsEmpty()
{
    const ContentFile file;
    QVERIFY(file.read(0).isEmpty());
    QVERIFY(file.read(-1).isEmpty());
    const SessionHistory nothing;
    QCOMPARE(nothing.lineCount(), 0);
    QVERIFY(nothing.lcd(0).isNull());
    QVERIFY(nothing.device(1).keys.isEmpty());
    QVERIFY(!nothing.entry(1));
}

// A disk that gets full while a content is written.
void SessionHistoryTest::contentThatCanNotBeWrittenIsReported()
{
    ContentFile file;
    QCOMPARE(file.append(QByteArray(1000, 'a')), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 1500;
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const int failed = file.append(QByteArray(1000, 'b'));
    const QString error = file.error();
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
    QVERIFY2(error.startsWith(QDir::tempPath()) && error.endsWith(QStringLiteral(": File too large")),
             qPrintable(error));
    QVERIFY(file.read(failed).isEmpty());
    const int next = file.append(QByteArray(10, 'c'));
    QCOMPARE(file.read(0), QByteArray(1000, 'a'));
    QCOMPARE(file.read(next), QByteArray(10, 'c'));
    QCOMPARE(file.error(), error);
}

void SessionHistoryTest::everyLineIsKept_data()
{
    QTest::addColumn<QString>("path");
    const QDir directory(QStringLiteral(LCD_SOURCE_DIR "/scenarios"));
    const auto names = directory.entryList({QStringLiteral("*.yaml")}, QDir::Files);
    QVERIFY(names.size() > 10);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << directory.filePath(name);
}

void SessionHistoryTest::everyLineIsKept()
{
    QFETCH(QString, path);
    const Scenario scenario = load(path);
    QByteArrayList lines;
    Player::Options played;
    played.journal = [&lines](const Journal::Entry &entry) { lines.append(entry.toJsonLine()); };
    const ScenarioResult result = Player(scenario, played, [](const StepResult &, qint64) {}).play();
    const auto kept = history(path);
    QCOMPARE(kept->lineCount(), lines.size());
    for (int line = 0; line < lines.size(); ++line)
        QCOMPARE(kept->line(line + 1), lines[line]);
    QCOMPARE(kept->duration(), result.duration);
    QCOMPARE(kept->error().isEmpty(), result.passed);
}

void SessionHistoryTest::aReplayedSessionShowsTheSame_data()
{
    QTest::addColumn<QString>("path");
    for (const char *name : {"machine-pass.yaml", "aging.yaml", "machine-fail-6.yaml", "repair-touch-screen.yaml"})
        QTest::newRow(name) << shippedScenario(name);
}

// At the end of each scenario and at places before it.
void SessionHistoryTest::aReplayedSessionShowsTheSame()
{
    QFETCH(QString, path);
    const int places = proofLength(6, 20, 100);
    const auto kept = history(path);
    for (int place = 1; place <= places; ++place) {
        const qint64 line = kept->lineCount() * place / places;
        QString error;
        const auto session = replaySession(load(path).device, *kept, line, openedQuietly, &error);
        QVERIFY2(session, qPrintable(error));
        QVERIFY(session->journal().count() >= line);
        const QByteArrayList replayed = session->journal().toJsonLines().split('\n');
        for (qint64 each = 1; each <= line; ++each)
            QCOMPARE(replayed[static_cast<int>(each) - 1], kept->line(each));
        QCOMPARE(toData(kept->device(line)), toData(session->device().state()));
        QCOMPARE(kept->lcd(line), session->lcd()->grab().toImage().convertToFormat(QImage::Format_RGB32));
    }
}

void SessionHistoryTest::markersTellWhatHappened()
{
    const auto kept = historyOf("steps:\n"
                                "  - wait: 1s\n"
                                "  - fault: {name: key-dead, key: 27}\n"
                                "  - open: AgingMode\n"
                                "  - wait: 5s\n");
    QStringList texts;
    for (const Marker &marker : kept->markers()) {
        QCOMPARE(marker.at, kept->timeOf(marker.line));
        if (marker.kind == Marker::Kind::Phase)
            texts << marker.text;
    }
    QCOMPARE(texts.size(), 2);
    QVERIFY(texts.first().startsWith(QStringLiteral("menu")));
    const Marker *fault = kept->findMarker(kept->lineAt(999), Direction::Forward);
    QVERIFY(fault && fault->kind == Marker::Kind::Fault);
    QCOMPARE(fault->at, 1000);
    QVERIFY(kept->markerText(*fault).contains(QStringLiteral("key-dead")));
    const Marker *action = kept->findMarker(fault->line, Direction::Forward);
    QVERIFY(action && action->kind == Marker::Kind::Action);
    QCOMPARE(kept->findMarker(action->line, Direction::Back), fault);
    QVERIFY(!kept->findMarker(kept->lineCount(), Direction::Forward));
    QVERIFY(!kept->findMarker(0, Direction::Back));
}

void SessionHistoryTest::failuresAreMarked()
{
    const auto kept = history(shippedScenario("machine-fail-6.yaml"));
    const auto isFailure = [](const Marker &marker) { return marker.kind == Marker::Kind::Failure; };
    const auto &markers = kept->markers();
    const auto found = std::find_if(markers.begin(), markers.end(), isFailure);
    QVERIFY(found != markers.end());
    QVERIFY(found->line > 0 && found->line <= kept->lineCount());
    QVERIFY(kept->error().isEmpty());
}

void SessionHistoryTest::aFailedStepIsMarked()
{
    const auto kept = historyOf("steps:\n"
                                "  - wait: 3s\n"
                                "  - expect: {page: aging}\n"
                                "  - wait: 9s\n");
    QVERIFY(kept->error().contains(QStringLiteral("scenario.yaml:3")));
    QCOMPARE(kept->markers().last().kind, Marker::Kind::Failure);
    QCOMPARE(kept->markers().last().at, 3000);
    QCOMPARE(kept->duration(), 3000);
}

void SessionHistoryTest::linesAreFound()
{
    const auto kept = history(shippedScenario("aging.yaml"));
    QCOMPARE(kept->lineAt(-1), 0);
    QCOMPARE(kept->lineAt(kept->duration()), kept->lineCount());
    for (qint64 line = 1; line <= kept->lineCount(); ++line) {
        QVERIFY(kept->lineAt(kept->timeOf(line)) >= line);
        QCOMPARE(Journal::kindName(kept->kindOf(line)), Journal::kindName(kept->entry(line)->kind));
    }
    const qint64 first = kept->findLine(Journal::Kind::Screen, 0, Direction::Forward);
    const qint64 second = kept->findLine(Journal::Kind::Screen, first, Direction::Forward);
    QVERIFY(0 < first && first < second);
    QCOMPARE(kept->findLine(Journal::Kind::Screen, second, Direction::Back), first);
    QCOMPARE(kept->findLine(Journal::Kind::Screen, first, Direction::Back), 0);
    QCOMPARE(kept->findLine(Journal::Kind::Screen, kept->lineCount(), Direction::Forward), 0);
}

void SessionHistoryTest::theFirstDifferenceIsFound()
{
    const QByteArray same = "steps:\n  - wait: 1s\n  - navigate: down\n";
    const auto a = historyOf(same + "  - navigate: down\n");
    const auto b = historyOf(same + "  - navigate: up\n");
    const auto shorter = historyOf(same);
    QCOMPARE(firstDifference(*a, *a), 0);
    QCOMPARE(firstDifference(*a, *shorter), shorter->lineCount() + 1);
    const qint64 line = firstDifference(*a, *b);
    QCOMPARE(line, shorter->lineCount() + 1);
    QVERIFY(a->line(line) != b->line(line));
    QCOMPARE(a->line(line - 1), b->line(line - 1));
}

// Any of its moments is there at once.
void SessionHistoryTest::manyHoursOfAging()
{
    constexpr double Limit = 100; // milliseconds of processor time
    const auto agingFor = [this](int hours) {
        return historyOf("steps:\n"
                         "  - plug: net1\n"
                         "  - open: AgingMode\n"
                         "  - soft: right\n"
                         "  - wait: "
                         + QByteArray::number(hours) + "h\n");
    };
    const int hours = proofLength(3, 10, 100);
    const auto kept = agingFor(hours);
    QCOMPARE(kept->duration(), hours * 3600000LL);
    QVERIFY(kept->lineCount() > hours * 1000);
    double longest = 0;
    for (int place = 0; place <= 50; ++place) {
        const std::clock_t begin = std::clock();
        const qint64 line = kept->lineAt(kept->duration() * ((place * 37) % 51) / 50);
        QVERIFY(!kept->lcd(line).isNull());
        QVERIFY(!kept->device(line).keys.isEmpty());
        longest = qMax(longest, 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
    }
    qInfo("%lld lines, %lld bytes on disk, %.1f ms at most for a moment", static_cast<long long>(kept->lineCount()),
          static_cast<long long>(kept->size()), longest);
    QVERIFY2(longest < Limit, qPrintable(QString::number(longest)));
    // Rounds look alike, so they add lines, but no pictures.
    const auto oneHour = agingFor(1);
    const double bytesPerLine = static_cast<double>(kept->size() - oneHour->size())
        / static_cast<double>(kept->lineCount() - oneHour->lineCount());
    QVERIFY2(bytesPerLine < 1000, qPrintable(QString::number(bytesPerLine)));
}

void SessionHistoryTest::aSessionThatWasTakenOverIsRecorded()
{
    const QString recording = m_directory.filePath(QStringLiteral("recorded.yaml"));
    const Scenario scenario = load(shippedScenario("machine-pass.yaml"));
    const auto kept = history(shippedScenario("machine-pass.yaml"));
    const qint64 line = kept->lineCount() / 3;
    std::unique_ptr<ScenarioWriter> writer;
    const auto opened = [&](Session &session, QString *error) {
        writer = std::make_unique<ScenarioWriter>(recording, session);
        return writer->open(LineFile::IfExists::Refuse, error);
    };
    QString error;
    auto session = replaySession(scenario.device, *kept, line, opened, &error);
    QVERIFY2(session, qPrintable(error));
    session->clock().advance(500);
    QVERIFY(session->panelOperator().perform(navigationAction(QStringLiteral("back")), &error));
    session->clock().advance(1500);
    const QByteArrayList journal = session->journal().toJsonLines().split('\n');
    writer.reset();
    session.reset();
    const auto played = history(recording);
    QVERIFY2(played->error().isEmpty(), qPrintable(played->error()));
    QCOMPARE(played->lineCount(), journal.size() - 1);
    for (qint64 each = 1; each <= played->lineCount(); ++each)
        QCOMPARE(played->line(each), journal[static_cast<int>(each) - 1]);
}

void SessionHistoryTest::interruptedRecordingEnds()
{
    QString error;
    int calls = 0;
    const auto kept =
        HistoryRecorder(load(shippedScenario("aging.yaml"))).record([&calls] { return ++calls > 5; }, &error);
    QVERIFY(kept);
    QVERIFY(kept->lineCount() > 0);
    QVERIFY(kept->lineCount() < history(shippedScenario("aging.yaml"))->lineCount());
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    SessionHistoryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sessionhistory.moc"
