#include "../hosttest.h"
#include "mockinput.h"
#include "session/session.h"
#include "time/realtimetimer.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace panelhost;

namespace {

constexpr int Cut = 33;
constexpr int PipeSize = 4096;
constexpr int Blocked = 1000; // ms; much longer than any driver takes
constexpr const char *Backlight = "/sys/devices/panel/backlight/lcd0/brightness";
constexpr const char *Channel = "/sys/devices/adc/iio:device0/in_voltage1_raw";

// Runs the event loop for @p duration and returns the longest time in which it was busy, both in milliseconds.
qint64 longestPause(int duration)
{
    RealTimeTimer timer;
    QElapsedTimer total;
    QElapsedTimer since;
    qint64 longest = 0;
    QEventLoop loop;
    QObject::connect(&timer, &RealTimeTimer::timeout, &loop, [&] {
        longest = qMax(longest, since.restart());
        if (total.elapsed() >= duration)
            loop.quit();
    });
    total.start();
    since.start();
    timer.start(5);
    loop.exec();
    return longest;
}

}

/// A complete session on a board whose driver takes long: the GUI thread goes on.
class tst_BoardSlow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void slowWritesDoNotBlockTheWindow();
    void slowReadsDoNotBlockTheWindow();

private:
    enum class PipeState {
        Empty,
        Full
    };
    void makePipe(const char *attribute, PipeState begin);
    void openSession();
    void feed() const;

    std::unique_ptr<MockBed> bed;
    std::unique_ptr<QTemporaryDir> state;
    std::unique_ptr<Session> session;
    QByteArray pipePath;
    int end = -1; // of the pipe, for the test
};

void tst_BoardSlow::init()
{
    if (!canMock())
        QSKIP("This test needs umockdev-wrapper.");
    std::signal(SIGPIPE, SIG_IGN);
    bed = std::make_unique<MockBed>();
    bed->add(q("P: /devices/panel/leds/cut\nE: SUBSYSTEM=leds\nA: max_brightness=255\\n\nA: brightness=7\\n\n"
               "A: trigger=[none] timer\\n\nA: delay_on=1\\n\nA: delay_off=2\\n\n\n"
               "P: /devices/panel/backlight/lcd0\nE: SUBSYSTEM=backlight\nA: max_brightness=1000\\n\n"
               "A: brightness=420\\n\n\n"
               "P: /devices/adc/iio:device0\nE: SUBSYSTEM=iio\nE: DEVTYPE=iio_device\nA: name=ads1015\\n\n"
               "A: in_voltage1_raw=0\\n\n\n"));
    state = std::make_unique<QTemporaryDir>();
    openSession();
}

// Who still waits for the pipe fails when it is gone.
void tst_BoardSlow::cleanup()
{
    if (end >= 0) {
        ::unlink(pipePath.constData());
        ::close(std::exchange(end, -1));
    }
    session.reset();
    bed.reset();
}

void tst_BoardSlow::openSession()
{
    using Source = BoardConfiguration::Source;
    BoardConfiguration board;
    board.file = q("board.yaml");
    board.stateDirectory = state->path();
    board.parts = {{q("leds"), Source::Real},
                   {q("screens"), Source::Real},
                   {q("tbar"), Source::Real},
                   {q("keys"), Source::Simulated},
                   {q("navigation"), Source::Simulated}};
    KeyLedConfiguration cut;
    cut.halKey = Cut;
    cut.single = q("cut");
    board.leds = {cut};
    board.screens = {{q("lcd0"), {}, {}}};
    board.tbar.slider.iio = SliderInput::IioChannel{q("ads1015"), q("voltage1"), 200};
    board.tbar.slider.range = SliderEnds{0, 4095};
    Session::Options options;
    options.share = q(LCD_SOURCE_DIR "/share");
    options.pages = Session::noPages;
    options.hasCalibrationResults = true;
    options.board = board;
    QString error;
    session = Session::open(options, &error);
    QVERIFY2(session, qPrintable(error));
    session->lcd()->show();
}

// Replaces an attribute by a pipe. Who reads it waits for what is written to it; who writes it waits if it is full.
void tst_BoardSlow::makePipe(const char *attribute, PipeState begin)
{
    gchar *root = umockdev_testbed_get_root_dir(bed->get());
    pipePath = QByteArray(root) + attribute;
    g_free(root);
    const QByteArray other = pipePath + ".pipe";
    QCOMPARE(mkfifo(other.constData(), 0666), 0);
    end = ::open(other.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(fcntl(end, F_SETPIPE_SZ, PipeSize) == PipeSize);
    const QByteArray filling(PipeSize, 'x');
    if (begin == PipeState::Full)
        QCOMPARE(::write(end, filling.constData(), PipeSize), ssize_t(PipeSize));
    QCOMPARE(rename(other.constData(), pipePath.constData()), 0);
}

// The aging test begins with the screens.
void tst_BoardSlow::slowWritesDoNotBlockTheWindow()
{
    makePipe(Backlight, PipeState::Full);
    session->clock().run(1);
    QString error;
    QVERIFY(session->panelOperator().perform(navigationAction(q("enter")), &error));
    QVERIFY2(session->panelOperator().perform({OperatorAction::Kind::Soft, {{q("side"), q("right")}}}, &error),
             qPrintable(error));
    const qint64 pause = longestPause(Blocked);
    qInfo("The GUI thread was busy for at most %lld ms while a write took %d ms.", pause, Blocked);
    QVERIFY2(pause < Blocked / 2, qPrintable(QString::number(pause)));

    // All the time, the value was waiting to be written.
    QByteArray written(PipeSize, '\0');
    QCOMPARE(::read(end, written.data(), PipeSize), ssize_t(PipeSize));
    QCOMPARE(written, QByteArray(PipeSize, 'x'));
    pollfd polled{end, POLLIN, 0};
    QVERIFY(poll(&polled, 1, 5000) > 0);
    written.resize(qMax(0, static_cast<int>(::read(end, written.data(), PipeSize))));
    QCOMPARE(written, QByteArray("100"));
}

void tst_BoardSlow::slowReadsDoNotBlockTheWindow()
{
    session->clock().run(1);
    makePipe(Channel, PipeState::Empty);
    bool isCalibrated = false;
    session->device().calibrate(2, [&isCalibrated](bool, const std::string &) { isCalibrated = true; });
    QVERIFY(session->panelOperator().perform({OperatorAction::Kind::ExitFactoryMode, {}}));
    QVERIFY(session->panelOperator().perform({OperatorAction::Kind::EnterFactoryMode, {}}));
    const qint64 pause = longestPause(Blocked);
    qInfo("The GUI thread was busy for at most %lld ms while a reading took %d ms.", pause, Blocked);
    QVERIFY2(pause < Blocked / 2, qPrintable(QString::number(pause)));
    QCOMPARE(session->device().state().tbar.position, 0.0);
    QVERIFY(!isCalibrated);

    QTRY_COMPARE((feed(), session->device().state().tbar.position), 1.0);
    QTRY_VERIFY((feed(), isCalibrated)); // the calibration takes a reading of its own
}

// Gives a value to who waits for one.
void tst_BoardSlow::feed() const
{
    int unread = 0;
    QCOMPARE(ioctl(end, FIONREAD, &unread), 0);
    if (unread == 0)
        QCOMPARE(::write(end, "4095\n", 5), ssize_t(5));
}

PANELHOST_TEST_MAIN(tst_BoardSlow)
#include "tst_boardslow.moc"
