#include "panel/frontpanel.h"
#include "panelfixture.h"

#include <QtCore/QDir>
#include <QtGui/QFontDatabase>
#include <QtTest/QtTest>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>

using namespace panelhost;

/// The drawn panel against pictures that somebody has looked at. A difference leaves what was drawn and what differs
/// beside the test; LCD_UPDATE_GOLDEN=1 in the environment renews the pictures.
class TestPanelGolden : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void panel_data();
    void panel();
};

namespace {

constexpr int Tolerance = 24;           // of 255, in each channel of a pixel
constexpr double MostDiffering = 0.002; // share of the pixels: edges of letters vary with the font library

QString goldenPath(const QString &name)
{
    return QStringLiteral(LCD_SOURCE_DIR "/tests/host/panel/golden/%1.png").arg(name);
}

bool differs(QRgb a, QRgb b)
{
    return qAbs(qRed(a) - qRed(b)) > Tolerance || qAbs(qGreen(a) - qGreen(b)) > Tolerance
        || qAbs(qBlue(a) - qBlue(b)) > Tolerance;
}

/// White where the two differ; returns how many pixels do.
int compare(const QImage &actual, const QImage &golden, QImage &difference)
{
    int count = 0;
    difference = QImage(actual.size(), QImage::Format_RGB32);
    difference.fill(Qt::black);
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x)
            if (differs(actual.pixel(x, y), golden.pixel(x, y))) {
                difference.setPixel(x, y, 0xffffffff);
                ++count;
            }
    return count;
}

// The pictures' own font files, so that they don't depend on what is installed.
bool useFontOfThePictures()
{
    const QString fonts = QStringLiteral(LCD_SOURCE_DIR "/tests/host/panel/fonts/");
    QFont font = QApplication::font();
    font.setFamily(QStringLiteral("DejaVu Sans"));
    QApplication::setFont(font);
    return QFontDatabase::addApplicationFont(fonts + QStringLiteral("DejaVuSans.ttf")) >= 0
        && QFontDatabase::addApplicationFont(fonts + QStringLiteral("DejaVuSans-Bold.ttf")) >= 0;
}

DeviceState restingDevice()
{
    return sampleDevice(12);
}

DeviceState busyDevice()
{
    DeviceState device = sampleDevice(12);
    for (int i = 0; i < 4; ++i)
        device.keys[i].led = {i, 0, 100, 800};
    device.keys[4].led = {2, 0, 50, 800};
    device.keys[5].isDown = true;
    device.screenBrightness[1] = 50;
    device.screenBrightness[2] = 10;
    device.pattern = {3, 2, 255};
    device.tbar.type = TBarType::Fader;
    device.tbar.position = 0.6;
    device.tbar.target = TBarEnd::Top;
    device.tbar.failure = QStringLiteral("step 3 (bottom) failed: the T-Bar is at 60 %");
    device.netPorts[0].isPlugged = true;
    device.usbPorts[1].isPlugged = true;
    device.usbPorts[2].isBlocked = true;
    return device;
}

}

void TestPanelGolden::panel_data()
{
    QTest::addColumn<bool>("busy");
    QTest::newRow("panel-resting") << false;
    QTest::newRow("panel-busy") << true;
}

void TestPanelGolden::panel()
{
    QFETCH(bool, busy);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QWidget lcd;
    lcd.setStyleSheet(QStringLiteral("background: #0f1318"));
    lcd.resize(320, 480);
    const DeviceState device = busy ? busyDevice() : restingDevice();
    FrontPanel panel(device, &lcd, nullptr);
    panel.resize(panel.naturalSize());
    panel.setState(device, 0);
    const QImage actual = panel.grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (qEnvironmentVariableIntValue("LCD_UPDATE_GOLDEN") == 1)
        QVERIFY(actual.save(goldenPath(name)));
    const QImage golden = QImage(goldenPath(name)).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(actual.size(), golden.size());
    QImage difference;
    const int differing = compare(actual, golden, difference);
    if (differing <= MostDiffering * actual.width() * actual.height())
        return;
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
    actual.save(beside + QStringLiteral("-actual.png"));
    difference.save(beside + QStringLiteral("-difference.png"));
    QFAIL(qPrintable(
        QStringLiteral("%1 pixels differ; see %2-actual.png and -difference.png").arg(differing).arg(beside)));
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    if (!useFontOfThePictures())
        qFatal("the fonts of the pictures can't be read");
    TestPanelGolden test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_panelgolden.moc"
