#include "device/board/boardoutputs.h"
#include "device/board/boardprobe.h"
#include "mockinput.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace panelhost;

namespace {

constexpr int Cut = 33;
constexpr int Auto = 26;
constexpr int Mix = 29;

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

// An LED of the panel as it is before panelhost writes to it.
QString ledDescription(const char *name, const char *more = "")
{
    return q("P: /devices/panel/leds/%1\nE: SUBSYSTEM=leds\nA: max_brightness=255\\n\nA: brightness=7\\n\n"
             "A: trigger=none [heartbeat] timer\\n\nA: delay_on=100\\n\nA: delay_off=900\\n\n%2\n")
        .arg(q(name), q(more));
}

QString backlightDescription(const char *name)
{
    return q("P: /devices/panel/backlight/%1\nE: SUBSYSTEM=backlight\nA: max_brightness=1000\\n\nA: "
             "brightness=420\\n\n\n")
        .arg(q(name));
}

// Opens a file where the bed keeps it. The mock library replaces open() and doesn't let two threads in: while one waits
// for the other end of a pipe, the next one would wait for ever.
int openDirectly(const QString &path, int flags)
{
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, qPrintable(path), flags | O_CLOEXEC));
}

// At the end of a test nobody waits for the other end of the pipe at @c path anymore, and it is gone.
struct PipeEnd
{
    ~PipeEnd()
    {
        openDirectly(path, O_RDWR | O_NONBLOCK); // stays open for who waits
        QFile::remove(path);
    }
    const QString path;
};

// Returns what is being written to the pipe at @p path; nothing if nobody writes.
QByteArrayList readWaiting(const QString &path)
{
    const int reader = openDirectly(path, O_RDONLY | O_NONBLOCK);
    pollfd waiting{reader, POLLIN, 0};
    char value[16];
    const ssize_t size = poll(&waiting, 1, 50) > 0 ? ::read(reader, value, sizeof value) : 0;
    ::close(reader);
    return size > 0 ? QByteArrayList{QByteArray(value, static_cast<int>(size))} : QByteArrayList();
}

// Returns the content of the file where the bed keeps it. The mock library can't open a file of the bed, and QFile asks
// it for each file, while another thread waits in open().
QString readDirectly(const QString &path)
{
    const int file = openDirectly(path, O_RDONLY);
    char value[16];
    const ssize_t size = ::read(file, value, sizeof value);
    ::close(file);
    return QString::fromLatin1(value, static_cast<int>(std::max<ssize_t>(0, size))).trimmed();
}

}

/// LEDs and backlights of a board in a test bed: what is written, and what is restored.
class tst_BoardOutputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsBrightnessColorAndBlinking();
    void showsMulticolor();
    void colorWithoutLedIsShownByAll();
    void scalesScreens();
    void writesNothingBeforeItIsTold();
    void restoresAtTheEnd();
    void restoresAfterACrash();
    void nextStartRestoresAfterACrash();
    void restoreIgnoresDevicesThatAreGone();
    void restoreRefusesOtherFiles();
    void secondProcessIsRefused();
    void missingPartsAreSaidWithRemedy_data();
    void missingPartsAreSaidWithRemedy();
    void removalDuringABlinkAndReturn();
    void screenDisappearsAndReturns();
    void attributeThatCanNotBeWrittenCountsAsGone();
    void deviceThatReturnsWithGarbageStaysGone();
    void slowWriteBlocksNobody();
    void probeListsWhatIsThere();

private:
    BoardConfiguration board() const;
    QString attribute(const QString &path) const;
    QString led(const char *name, const char *attributeName) const;
    QString realPath(const QString &path) const;
    bool start();
    void flush()
    {
        outputs->loop().run([] {});
    }

    std::unique_ptr<MockBed> bed;
    std::unique_ptr<QTemporaryDir> state;
    std::unique_ptr<BoardOutputs> outputs;
    QStringList parts; // that were lost and found
    QString error;
};

void tst_BoardOutputs::init()
{
    if (!canMock())
        QSKIP("This test needs umockdev-wrapper.");
    bed = std::make_unique<MockBed>();
    bed->add(ledDescription("red"));
    bed->add(ledDescription("green"));
    bed->add(ledDescription("single"));
    bed->add(ledDescription("rgb", "A: multi_index=green red blue\\n\nA: multi_intensity=1 2 3\\n\n"));
    bed->add(backlightDescription("lcd0"));
    state = std::make_unique<QTemporaryDir>();
    outputs = std::make_unique<BoardOutputs>(
        board(), [this](const QString &part, bool present) { parts << part + (present ? q(" back") : q(" gone")); });
    parts.clear();
    error.clear();
}

void tst_BoardOutputs::cleanup()
{
    outputs.reset();
    bed.reset();
}

BoardConfiguration tst_BoardOutputs::board() const
{
    BoardConfiguration configuration;
    configuration.file = q("board.yaml");
    configuration.stateDirectory = state->path();
    KeyLedConfiguration cut;
    cut.halKey = Cut;
    cut.single = q("single");
    cut.where = q("board.yaml:2:8");
    KeyLedConfiguration automatic;
    automatic.halKey = Auto;
    automatic.red = q("red");
    automatic.green = q("green");
    automatic.where = q("board.yaml:3:9");
    KeyLedConfiguration mix;
    mix.halKey = Mix;
    mix.multicolor = q("rgb");
    mix.where = q("board.yaml:4:8");
    configuration.leds = {cut, automatic, mix};
    configuration.screens = {{q("lcd0"), {}, q("board.yaml:6:5")}};
    return configuration;
}

QString tst_BoardOutputs::attribute(const QString &path) const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : q("unreadable");
}

QString tst_BoardOutputs::led(const char *name, const char *attributeName) const
{
    return attribute(q("/sys/class/leds/%1/%2").arg(q(name), q(attributeName)));
}

// Where the bed keeps a file, so that a test can make it read-only or a pipe.
QString tst_BoardOutputs::realPath(const QString &path) const
{
    gchar *root = umockdev_testbed_get_root_dir(bed->get());
    const QString result = QString::fromLocal8Bit(root) + path;
    g_free(root);
    return result;
}

bool tst_BoardOutputs::start()
{
    return outputs->start(&error);
}

void tst_BoardOutputs::showsBrightnessColorAndBlinking()
{
    QVERIFY2(start(), qPrintable(error));
    outputs->setKeyLed(Cut, {0, 0, 50, 800});
    outputs->setKeyLed(Auto, {2, 1, 100, 801});
    flush();
    QCOMPARE(led("single", "trigger"), q("none"));
    QCOMPARE(led("single", "brightness"), q("128"));
    QCOMPARE(led("green", "brightness"), q("255"));
    QCOMPARE(led("green", "trigger"), q("timer"));
    QCOMPARE(led("green", "delay_on"), q("400"));
    QCOMPARE(led("green", "delay_off"), q("401"));
    QCOMPARE(led("red", "trigger"), q("none"));
    QCOMPARE(led("red", "brightness"), q("0"));

    outputs->setKeyLed(Auto, {0, 0, 1, 800});
    flush();
    QCOMPARE(led("green", "trigger"), q("none"));
    QCOMPARE(led("green", "brightness"), q("0"));
    QCOMPARE(led("red", "brightness"), q("3"));
    QCOMPARE(parts, QStringList());
}

void tst_BoardOutputs::showsMulticolor()
{
    QVERIFY2(start(), qPrintable(error));
    const QMap<int, QString> intensities = {
        {0, q("0 255 0")}, {1, q("0 0 255")}, {2, q("255 0 0")}, {3, q("255 255 255")}, {9, q("255 255 0")}};
    for (auto color = intensities.begin(); color != intensities.end(); ++color) {
        outputs->setKeyLed(Mix, {color.key(), 0, 40, 800});
        flush();
        QCOMPARE(led("rgb", "multi_intensity"), color.value());
        QCOMPARE(led("rgb", "brightness"), q("102"));
    }
}

void tst_BoardOutputs::colorWithoutLedIsShownByAll()
{
    QVERIFY2(start(), qPrintable(error));
    outputs->setKeyLed(Auto, {1, 0, 100, 800}); // blue
    flush();
    QCOMPARE(led("red", "brightness"), q("255"));
    QCOMPARE(led("green", "brightness"), q("255"));
}

void tst_BoardOutputs::scalesScreens()
{
    QVERIFY2(start(), qPrintable(error));
    const QString brightness = q("/sys/class/backlight/lcd0/brightness");
    outputs->setScreenBrightness(0, 33);
    flush();
    QCOMPARE(attribute(brightness), q("330"));
    outputs->setScreenBrightness(0, 250);
    outputs->setScreenBrightness(1, 10); // the profile has no such screen
    flush();
    QCOMPARE(attribute(brightness), q("1000"));
}

void tst_BoardOutputs::writesNothingBeforeItIsTold()
{
    QVERIFY2(start(), qPrintable(error));
    outputs->setKeyLed(Cut, {2, 0, 100, 800});
    flush();
    QCOMPARE(led("red", "trigger"), q("none [heartbeat] timer"));
    QCOMPARE(led("red", "brightness"), q("7"));
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("420"));
}

void tst_BoardOutputs::restoresAtTheEnd()
{
    QVERIFY2(start(), qPrintable(error));
    QVERIFY(QFile::exists(state->filePath(q("outputs.json"))));
    outputs->setKeyLed(Cut, {2, 1, 100, 800});
    outputs->setKeyLed(Mix, {2, 0, 0, 800});
    outputs->setScreenBrightness(0, 1);
    flush();
    outputs.reset();
    QCOMPARE(led("single", "trigger"), q("heartbeat"));
    QCOMPARE(led("single", "brightness"), q("7"));
    QCOMPARE(led("single", "delay_on"), q("100"));
    QCOMPARE(led("single", "delay_off"), q("900"));
    QCOMPARE(led("rgb", "multi_intensity"), q("1 2 3"));
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("420"));
    QVERIFY(!QFile::exists(state->filePath(q("outputs.json"))));
}

// The file that is there before the first write is all that is left of the process.
void tst_BoardOutputs::restoresAfterACrash()
{
    {
        SavedOutputs crashed(state->path());
        QVERIFY(crashed.lock(&error));
        QVERIFY2(crashed.save({q("single"), q("rgb")}, {q("lcd0")}, &error), qPrintable(error));
    }
    bed->set(q("/sys/devices/panel/leds/single"), "trigger", "timer");
    bed->set(q("/sys/devices/panel/leds/single"), "brightness", "255");
    bed->set(q("/sys/devices/panel/backlight/lcd0"), "brightness", "0");
    SavedOutputs saved(state->path());
    QVERIFY(saved.lock(&error));
    QCOMPARE(saved.restore(), QStringList());
    QCOMPARE(saved.restoredCount(), 3);
    QCOMPARE(led("single", "trigger"), q("heartbeat"));
    QCOMPARE(led("single", "brightness"), q("7"));
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("420"));
    QVERIFY(!saved.exists());
    QCOMPARE(saved.restore(), QStringList());
}

void tst_BoardOutputs::nextStartRestoresAfterACrash()
{
    {
        SavedOutputs crashed(state->path());
        QVERIFY(crashed.lock(&error) && crashed.save({}, {q("lcd0")}, &error));
    }
    bed->set(q("/sys/devices/panel/backlight/lcd0"), "brightness", "0");
    QVERIFY2(start(), qPrintable(error));
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("420"));
    outputs->setScreenBrightness(0, 100);
    outputs.reset();
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("420"));
}

void tst_BoardOutputs::restoreIgnoresDevicesThatAreGone()
{
    SavedOutputs saved(state->path());
    QVERIFY(saved.lock(&error) && saved.save({q("single")}, {q("lcd0")}, &error));
    bed->remove(q("/sys/devices/panel/leds/single"));
    bed->set(q("/sys/devices/panel/backlight/lcd0"), "brightness", "0");
    QCOMPARE(saved.restore(), QStringList());
    QCOMPARE(saved.restoredCount(), 1);
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("420"));
}

// Nothing outside of the two classes is ever written.
void tst_BoardOutputs::restoreRefusesOtherFiles()
{
    const QString path = state->filePath(q("outputs.json"));
    const QString victim = state->filePath(q("brightness"));
    const QList<QByteArray> contents = {"", "not JSON", "{\"format\": 2}",
                                        "{\"format\": 1, \"leds\": {\"../../../" + state->path().toUtf8()
                                            + "\": {\"brightness\": \"1\"}}}"};
    for (const QByteArray &content : contents) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        QFile other(victim);
        QVERIFY(other.open(QIODevice::WriteOnly) && other.write("mine") == 4);
        other.close();
        SavedOutputs saved(state->path());
        const bool isOurs = content.startsWith("{\"format\": 1");
        QCOMPARE(saved.restore().isEmpty(), isOurs);
        QCOMPARE(saved.restoredCount(), 0);
        QCOMPARE(attribute(victim), q("mine"));
    }
}

void tst_BoardOutputs::secondProcessIsRefused()
{
    QVERIFY2(start(), qPrintable(error));
    BoardOutputs second(board(), [](const QString &, bool) {});
    QVERIFY(!second.start(&error));
    QCOMPARE(error, state->filePath(q("board.lock")) + q(": another panelhost uses the board."));
}

void tst_BoardOutputs::missingPartsAreSaidWithRemedy_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("content"); // empty: removed; "read-only": no write permission
    QTest::addColumn<QString>("sentence");
    const QString led = q("/sys/devices/panel/leds/single");
    const QString shown = q("board.yaml:2:8: /sys/class/leds/single/");
    QTest::newRow("no such LED") << led << QString()
                                 << q("board.yaml:2:8: /sys/class/leds/single: No such file or directory; \"panelhost "
                                      "probe\" lists what is in /sys/class/leds.");
    QTest::newRow("read-only") << led + q("/brightness") << q("read-only")
                               << shown
            + q("brightness is read-only: its driver can't set it; take it out of the profile.");
    QTest::newRow("garbage") << led + q("/max_brightness") << q("many")
                             << shown + q("max_brightness: found \"many\", expected a whole number of at least 1.");
    QTest::newRow("no brightness at all")
        << led + q("/max_brightness") << q("0")
        << shown + q("max_brightness: found \"0\", expected a whole number of at least 1.");
    QTest::newRow("brightness is garbage") << led + q("/brightness") << q("\x01\x02")
                                           << q("board.yaml: /sys/class/leds/single/brightness: found \"\x01\x02\", "
                                                "expected a number.");
    QTest::newRow("no timer") << led + q("/trigger") << q("[none] heartbeat")
                              << shown
            + q("trigger has no \"timer\", which makes the LED blink; load the kernel module ledtrig-timer.");
    QTest::newRow("backlight") << q("/sys/devices/panel/backlight/lcd0/brightness") << q("read-only")
                               << q("board.yaml:6:5: /sys/class/backlight/lcd0/brightness is read-only: its driver "
                                    "can't set it; take it out of the profile.");
}

void tst_BoardOutputs::missingPartsAreSaidWithRemedy()
{
    QFETCH(QString, path);
    QFETCH(QString, content);
    QFETCH(QString, sentence);
    const QString directory = path.section(QLatin1Char('/'), 0, -2);
    if (content.isEmpty())
        bed->remove(path);
    else if (content == q("read-only"))
        QCOMPARE(chmod(qPrintable(realPath(path)), 0444), 0);
    else
        bed->set(directory, qPrintable(path.section(QLatin1Char('/'), -1)), qPrintable(content));
    QVERIFY(!start());
    QCOMPARE(error, sentence);
    QVERIFY(!QFile::exists(state->filePath(q("outputs.json"))));
}

void tst_BoardOutputs::removalDuringABlinkAndReturn()
{
    QVERIFY2(start(), qPrintable(error));
    outputs->setKeyLed(Cut, {2, 1, 100, 800});
    flush();
    bed->uevent(q("/sys/devices/panel/leds/single"), "remove");
    bed->remove(q("/sys/devices/panel/leds/single"));
    outputs->setKeyLed(Cut, {2, 1, 100, 400});
    QTRY_COMPARE(parts, QStringList{q("leds gone")});
    outputs->setKeyLed(Auto, {2, 0, 100, 800}); // the others go on
    flush();
    QCOMPARE(led("green", "brightness"), q("255"));

    bed->add(ledDescription("single"));
    bed->uevent(q("/sys/devices/panel/leds/single"), "add");
    QTRY_COMPARE(parts, (QStringList{q("leds gone"), q("leds back")}));
    flush();
    QCOMPARE(led("single", "trigger"), q("timer"));
    QCOMPARE(led("single", "delay_on"), q("200"));
}

void tst_BoardOutputs::screenDisappearsAndReturns()
{
    const QString backlight = q("/sys/devices/panel/backlight/lcd0");
    QVERIFY2(start(), qPrintable(error));
    outputs->setScreenBrightness(0, 50);
    flush();
    bed->uevent(backlight, "remove");
    bed->remove(backlight);
    outputs->setScreenBrightness(0, 10);
    QTRY_COMPARE(parts, QStringList{q("screens gone")});
    bed->add(backlightDescription("lcd0"));
    bed->uevent(backlight, "add");
    QTRY_COMPARE(parts, (QStringList{q("screens gone"), q("screens back")}));
    flush();
    QCOMPARE(attribute(backlight + q("/brightness")), q("100"));
    outputs.reset();
    QCOMPARE(attribute(backlight + q("/brightness")), q("420"));
}

// Writing fails, as with a driver that has failed or a file system that was mounted read-only.
void tst_BoardOutputs::attributeThatCanNotBeWrittenCountsAsGone()
{
    QVERIFY2(start(), qPrintable(error));
    const QString path = realPath(q("/sys/devices/panel/backlight/lcd0/brightness"));
    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::link(q("/dev/full"), path));
    outputs->setScreenBrightness(0, 50);
    QTRY_COMPARE(parts, QStringList{q("screens gone")});
    outputs->setKeyLed(Auto, {2, 0, 100, 800}); // the others go on
    flush();
    QCOMPARE(led("green", "brightness"), q("255"));

    QVERIFY(QFile::remove(path));
    bed->set(q("/sys/devices/panel/backlight/lcd0"), "brightness", "420");
    outputs->setScreenBrightness(0, 60);
    QTRY_COMPARE(parts, (QStringList{q("screens gone"), q("screens back")}));
    flush();
    QCOMPARE(attribute(q("/sys/class/backlight/lcd0/brightness")), q("600"));
}

void tst_BoardOutputs::deviceThatReturnsWithGarbageStaysGone()
{
    const QString single = q("/sys/devices/panel/leds/single");
    QVERIFY2(start(), qPrintable(error));
    outputs->setKeyLed(Cut, {2, 0, 100, 800});
    flush();
    bed->set(single, "max_brightness", "\x7f\xff many");
    bed->uevent(single, "remove");
    QTRY_COMPARE(parts, QStringList{q("leds gone")});
    bed->uevent(single, "add");
    flush();
    outputs->setKeyLed(Cut, {2, 0, 50, 800});
    flush();
    QCOMPARE(parts, QStringList{q("leds gone")});
    bed->set(single, "max_brightness", "100");
    bed->uevent(single, "add");
    QTRY_COMPARE(parts, (QStringList{q("leds gone"), q("leds back")}));
    flush();
    QCOMPARE(led("single", "brightness"), q("50"));
}

// Opening a pipe for writing takes until somebody reads it.
void tst_BoardOutputs::slowWriteBlocksNobody()
{
    QVERIFY2(start(), qPrintable(error));
    const QString path = realPath(q("/sys/devices/panel/leds/single/brightness"));
    QVERIFY(QFile::remove(path));
    QCOMPARE(mkfifo(qPrintable(path), 0666), 0);
    const PipeEnd end{path};
    const QString backlight = realPath(q("/sys/devices/panel/backlight/lcd0/brightness"));
    QElapsedTimer elapsed;
    elapsed.start();
    for (int level = 1; level <= 100; ++level)
        outputs->setKeyLed(Cut, {2, 0, level, 800});
    outputs->setScreenBrightness(0, 50);
    QVERIFY2(elapsed.elapsed() < 5000, qPrintable(QString::number(elapsed.elapsed())));
    QCOMPARE(readDirectly(backlight), q("420")); // the thread waits for the LED

    // Of a hundred values the thread writes the one it waits with, and the newest.
    QByteArrayList written;
    const bool isNewestWritten = QTest::qWaitFor(
        [&] {
            written += readWaiting(path);
            return written.contains("255");
        },
        10000);
    QVERIFY2(isNewestWritten, written.join(' ').constData());
    QVERIFY2(written.size() <= 3, written.join(' ').constData());
    QTRY_COMPARE(readDirectly(backlight), q("500"));
}

void tst_BoardOutputs::probeListsWhatIsThere()
{
    const ProbedBoard found = probeBoard();
    QCOMPARE(found.leds.size(), 4);
    QCOMPARE(found.leds.at(2).name, q("rgb"));
    QCOMPARE(found.leds.at(2).details, q("0 to 255, multicolor"));
    QCOMPARE(found.backlights.at(0).name, q("lcd0"));
    const QString profile = probeProfile(found, {q("CUT"), q("SINGLE")});
    QVERIFY2(profile.contains(q("leds:\n  \"SINGLE\": \"single\"\n")), qPrintable(profile));
    QVERIFY2(profile.contains(q("screens:\n  - backlight: \"lcd0\"\n")), qPrintable(profile));
    QVERIFY2(probeText(found).contains(q("  lcd0 ")), qPrintable(probeText(found)));
}

QTEST_GUILESS_MAIN(tst_BoardOutputs)
#include "tst_boardoutputs.moc"
