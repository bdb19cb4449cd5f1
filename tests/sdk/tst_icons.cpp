#include "iconlabel.h"
#include "iconstore.h"
#include "lcd/widget/icons.h"

#include <QtTest/QtTest>

using namespace LCD::Widget;

namespace {

int inkedPixels(const QImage &image)
{
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            inked += qAlpha(image.pixel(x, y)) > 0;
    }
    return inked;
}

QImage shown(IconLabel &label)
{
    QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    label.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

}

class TestIcons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeyHasADrawing_data();
    void everyKeyHasADrawing();
    void theDrawingsDiffer();
    void aDrawingIsSharpOnADenseScreen();
    void anUnknownKeyShowsItsName();
    void anUnknownKeyFitsItsLabel();
    void noKeyShowsNothing();
    void aPathIsNoKey();
};

namespace {

QStringList iconKeys()
{
    QStringList keys = QStringLiteral("AgingMode|MachineMode|ScreenLight|ScreenBadPixel|ButtonLight|ButtonFunction|"
                                      "fc_tbar_slider|fc_tbar_fader|NetTest|UsbTest|TypecTest|"
                                      "Knob|Joystick|TouchScreen|LogExport|FactoryReset")
                           .split(QLatin1Char('|'));
    keys << Icon_Genlock_Normal << Icon_Genlock_Pass << Icon_Genlock_NoPass << Icon_LTC_Normal << Icon_LTC_Pass
         << Icon_LTC_NoPass << Icon_TypeC_Link << Icon_TypeC_LinkF << Icon_TypeC_LinkR << Icon_TypeC_UnLink
         << Icon_Net_Normal << Icon_Net_Pass << Icon_Net_NoPass << Icon_Usb_Normal << Icon_Usb_Pass << Icon_Usb_NoPass
         << Pass_Icon_File << NoPass_Icon_File;
    return keys;
}

}

void TestIcons::everyKeyHasADrawing_data()
{
    QTest::addColumn<QString>("key");
    for (const QString &key : iconKeys())
        QTest::newRow(qPrintable(key)) << key;
}

void TestIcons::everyKeyHasADrawing()
{
    QFETCH(QString, key);
    QVERIFY(IconStore::contains(key));
    const QImage image = IconStore::icon(key, 48, 1.0).toImage();
    QCOMPARE(image.size(), QSize(48, 48));
    QVERIFY2(inkedPixels(image) > 100, "a drawing covers more than a few pixels");
}

void TestIcons::theDrawingsDiffer()
{
    QVector<QImage> drawings;
    for (const QString &key : iconKeys()) {
        const QImage drawing = IconStore::icon(key, 96, 1.0).toImage();
        QVERIFY2(!drawings.contains(drawing) || key == Icon_TypeC_Link, qPrintable(key));
        drawings << drawing;
    }
}

void TestIcons::aDrawingIsSharpOnADenseScreen()
{
    const QPixmap dense = IconStore::icon(Icon_Net_Pass, 48, 2.0);
    QCOMPARE(dense.size(), QSize(96, 96));
    QCOMPARE(dense.devicePixelRatio(), 2.0);
    const QPixmap plain = IconStore::icon(Icon_Net_Pass, 96, 1.0);
    QCOMPARE(plain.devicePixelRatio(), 1.0);
    QCOMPARE(dense.toImage().convertToFormat(QImage::Format_ARGB32).pixel(48, 20),
             plain.toImage().convertToFormat(QImage::Format_ARGB32).pixel(48, 20));
}

void TestIcons::anUnknownKeyShowsItsName()
{
    IconLabel label(nullptr);
    label.resize(200, 40);
    label.setKey(QStringLiteral("NoSuchIcon"));
    const QImage name = shown(label);
    QVERIFY(inkedPixels(name) > 50);
    label.setKey(QStringLiteral("AnotherName"));
    QVERIFY(shown(label) != name);
    QVERIFY(!IconStore::contains(QStringLiteral("NoSuchIcon")));
    QVERIFY(IconStore::icon(QStringLiteral("NoSuchIcon"), 48, 1.0).isNull());
}

void TestIcons::anUnknownKeyFitsItsLabel()
{
    IconLabel label(nullptr);
    label.resize(140, 40);
    label.setKey(QStringLiteral("AnIconNameThatIsLong"));
    const QImage name = shown(label);
    QVERIFY(inkedPixels(name) > 50);
    QCOMPARE(inkedPixels(name.copy(0, 0, 1, 40)), 0);
    QCOMPARE(inkedPixels(name.copy(139, 0, 1, 40)), 0);
}

void TestIcons::noKeyShowsNothing()
{
    IconLabel label(nullptr);
    label.resize(48, 48);
    QCOMPARE(inkedPixels(shown(label)), 0);
    QVERIFY(!IconStore::contains(QString()));
}

void TestIcons::aPathIsNoKey()
{
    QVERIFY(!IconStore::contains(QStringLiteral("../icons/NetPass")));
    QVERIFY(!IconStore::contains(QStringLiteral("/lcdwidgets/icons/NetPass")));
}

QTEST_MAIN(TestIcons)
#include "tst_icons.moc"
