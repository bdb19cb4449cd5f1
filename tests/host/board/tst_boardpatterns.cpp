#include "../hosttest.h"
#include "device/faults.h"
#include "device/simulated/simulateddevice.h"
#include "panel/patternscreens.h"
#include "panel/screenview.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPainter>
#include <QtGui/QScreen>

using namespace panelhost;

namespace {

constexpr int Skipped = 77;
const char *const First = "DUMMY0";
const char *const Second = "DUMMY1";
const QSize FirstSize(1280, 800);

// Outputs without displays, which xrandr switches on and off.
const char *const ServerConfiguration = R"(
Section "Device"
    Identifier "device"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5.0 - 1000.0
    VertRefresh 5.0 - 200.0
EndSection
Section "Screen"
    Identifier "screen"
    Device "device"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Virtual 1280 800
    EndSubSection
EndSection
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
)";

// Returns what xrandr says if it fails.
QString run(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(q("xrandr"), arguments);
    if (!process.waitForFinished())
        return process.errorString();
    return process.exitCode() == 0 ? QString() : QString::fromLocal8Bit(process.readAll());
}

// The driver reports what is connected only if somebody asks for it.
QString xrandr(const QStringList &arguments)
{
    const QString failure = run(arguments);
    return failure.isEmpty() ? run({q("--query")}) : failure;
}

QString switchOn(const char *output, const char *mode)
{
    const QString failure = xrandr({q("--addmode"), q(output), q(mode)});
    return failure.isEmpty() ? xrandr({q("--output"), q(output), q("--mode"), q(mode), q("--right-of"), q(First)})
                             : failure;
}

QScreen *screenNamed(const char *output)
{
    const auto screens = QGuiApplication::screens();
    for (QScreen *screen : screens) {
        if (screen->name() == q(output))
            return screen;
    }
    return nullptr;
}

QImage imageOf(const char *output)
{
    QScreen *screen = screenNamed(output);
    return screen ? screen->grabWindow(0).toImage().convertToFormat(QImage::Format_RGB32) : QImage();
}

QImage drawn(const QSize &size, const TestPattern &pattern)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    drawTestPattern(painter, image.rect(), pattern);
    return image;
}

}

/// Test patterns on one of two outputs of an X server.
class tst_BoardPatterns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void patternFillsTheOutputAndNoOther();
    void otherPatternsAreShownAtOnce();
    void outputDisappearsAndReturnsDuringAPattern();
    void missingOutputHasNoWindow();

private:
    void show(const TestPattern &pattern);
    static QWidget *window(const char *output);

    Faults faults;
    std::unique_ptr<SimulatedDevice> device;
    std::unique_ptr<PatternScreens> patterns;
};

void tst_BoardPatterns::initTestCase()
{
    QCOMPARE(xrandr({q("--output"), q(First), q("--mode"), q("1280x800")}), QString());
}

void tst_BoardPatterns::init()
{
    QCOMPARE(switchOn(Second, "640x480"), QString());
    QTRY_VERIFY(screenNamed(Second) && screenNamed(Second)->geometry() == QRect(1280, 0, 640, 480));
    QTRY_COMPARE(screenNamed(First)->size(), FirstSize);
    device = std::make_unique<SimulatedDevice>(SimulatedDevice::Configuration(), VirtualClock::instance(), faults);
    patterns = std::make_unique<PatternScreens>(
        *device, QVector<ScreenConfiguration>{{{}, q(Second), {}}, {{}, q("HDMI-7"), {}}, {q("lcd"), {}, {}}});
}

void tst_BoardPatterns::cleanup()
{
    patterns.reset();
    device.reset();
}

void tst_BoardPatterns::show(const TestPattern &pattern)
{
    device->setPatternLevel(pattern.level);
    device->setTestPattern(pattern.type, pattern.index);
}

QWidget *tst_BoardPatterns::window(const char *output)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *each : windows) {
        if (each->objectName() == q("pattern-") + q(output))
            return each;
    }
    return nullptr;
}

void tst_BoardPatterns::patternFillsTheOutputAndNoOther()
{
    const QImage first = imageOf(First);
    const QImage second = imageOf(Second);
    QImage red({640, 480}, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red != second);
    show({1, 1, 0});
    QTRY_COMPARE(imageOf(Second), red);
    QCOMPARE(imageOf(First), first);

    show({0, 0, 0});
    QTRY_COMPARE(imageOf(Second), second);
    QVERIFY(!window(Second)->isVisible());
}

void tst_BoardPatterns::otherPatternsAreShownAtOnce()
{
    const QVector<TestPattern> all = {{1, 2, 0}, {3, 2, 100}, {3, 4, 100}, {3, 4, 30}};
    QImage before;
    for (const TestPattern &pattern : all) {
        show(pattern);
        const QImage expected = drawn({640, 480}, pattern);
        QVERIFY(expected != before);
        QTRY_COMPARE(imageOf(Second), expected);
        before = expected;
    }
}

void tst_BoardPatterns::outputDisappearsAndReturnsDuringAPattern()
{
    const TestPattern pattern{1, 2, 0};
    const QImage first = imageOf(First);
    show(pattern);
    QTRY_COMPARE(imageOf(Second), drawn({640, 480}, pattern));
    QCOMPARE(xrandr({q("--output"), q(Second), q("--off")}), QString());
    QTRY_VERIFY(!screenNamed(Second));
    QTRY_VERIFY(!window(Second)->isVisible());
    QCOMPARE(imageOf(First), first); // the window doesn't move there

    QCOMPARE(switchOn(Second, "800x600"), QString());
    QTRY_COMPARE(imageOf(Second), drawn({800, 600}, pattern));
}

void tst_BoardPatterns::missingOutputHasNoWindow()
{
    show({1, 0, 0});
    QTRY_VERIFY(window(Second)->isVisible());
    QVERIFY(window("HDMI-7") && !window("HDMI-7")->isVisible());
}

// Runs this program again, on an X server of its own.
static int runOnXServer(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    for (const char *program : {"Xorg", "xrandr"}) {
        if (QStandardPaths::findExecutable(q(program)).isEmpty()) {
            qWarning("Skipped: %s isn't installed (tools/setup test).", program);
            return Skipped;
        }
    }
    const QTemporaryDir directory;
    QFile configuration(directory.filePath(q("xorg.conf")));
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write(ServerConfiguration) < 0)
        return 1;
    configuration.close();
    QProcess server;
    server.setStandardErrorFile(directory.filePath(q("errors")));
    server.start(q("Xorg"),
                 {q("-displayfd"), q("1"), q("-config"), configuration.fileName(), q("-logfile"),
                  directory.filePath(q("log")), q("-noreset"), q("-novtswitch"), q("-sharevts"), q("-nolisten"),
                  q("tcp")});
    while (!server.canReadLine() && server.waitForReadyRead(20000)) {}
    const QByteArray display = ':' + server.readLine().trimmed();
    if (display == ":") {
        qWarning("Skipped: Xorg doesn't start; it needs root and the driver \"dummy\" (tools/setup test).");
        return Skipped;
    }
    qputenv("DISPLAY", display);
    qputenv("QT_QPA_PLATFORM", "xcb");
    const int status = QProcess::execute(application.applicationFilePath(), application.arguments().mid(1));
    server.terminate();
    server.waitForFinished();
    return status;
}

int main(int argc, char **argv)
{
    if (qgetenv("QT_QPA_PLATFORM") != "xcb")
        return runOnXServer(argc, argv);
    prepareProcess(true);
    QApplication application(argc, argv);
    prepareApplication();
    tst_BoardPatterns test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_boardpatterns.moc"
