#include "panel/frontpanel.h"
#include "panel/keybutton.h"
#include "panel/keygroups.h"
#include "panel/keypanel.h"
#include "panel/lcdinput.h"
#include "panelfixture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsProxyWidget>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollArea>

#include <memory>

using namespace panelhost;

class TestFrontPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeyHasAButton();
    void nothingOverlaps_data();
    void nothingOverlaps();
    void keysScrollWhenThereAreMany();
    void isScaledAsAWhole_data();
    void isScaledAsAWhole();
    void aLargeLcdIsScaledDown();
    void touchIsMappedBackToLcdPixels_data();
    void touchIsMappedBackToLcdPixels();
    void theScaledLcdShowsItsPixels();
    void theLcdIsDrawnAgainWhenItChanges();
    void givesTheLcdBack();
    void touchHasLcdPixels();
    void aDragIsAFingerThatMoves();
    void touchTakesTheFocusBack();
    void keyboardNavigates_data();
    void keyboardNavigates();
    void keysNeverReachTheLcdByThemselves();
    void keysThatAreSentToTheLcdPass();
    void stateReachesEveryPart();
    void keysAreGroupedByName();
    void fewOfAKindStandTogether();
};

namespace {

/// A panel around an LCD that holds a list, as the component's does.
struct PanelFixture
{
    explicit PanelFixture(const DeviceState &device, const QSize &lcdSize = {800, 480})
    {
        lcd.resize(lcdSize);
        list = new QListWidget(&lcd);
        list->resize(lcd.size());
        list->addItems({QStringLiteral("one"), QStringLiteral("two")});
        list->setCurrentRow(0);
        panel = std::make_unique<FrontPanel>(device, &lcd, nullptr);
        log = std::make_unique<ActionLog>(*panel);
    }
    void show()
    {
        panel->show();
        panel->resize(panel->size().expandedTo(panel->naturalSize()));
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
        list->setFocus();
    }

    QWidget lcd;
    QListWidget *list;
    std::unique_ptr<FrontPanel> panel;
    std::unique_ptr<ActionLog> log;
};

QRect rectIn(const QWidget &panel, const QWidget &widget)
{
    return {widget.mapTo(&panel, QPoint()), widget.size()};
}

/// The parts that an operator sees: controls, screens, the bezel. The overlay lies over the LCD on purpose.
QList<QWidget *> partsOf(FrontPanel &panel)
{
    QList<QWidget *> parts{panel.findChild<QWidget *>(QStringLiteral("lcd-bezel"))};
    for (int i = 0; i < 3; ++i)
        parts << panel.findChild<QWidget *>(QStringLiteral("screen%1").arg(i));
    const auto controls = panel.findChildren<Control *>();
    for (Control *control : controls)
        if (!qobject_cast<LcdInput *>(control))
            parts << control;
    return parts;
}

}

void TestFrontPanel::everyKeyHasAButton()
{
    PanelFixture fixture(sampleDevice(40));
    for (int key = 1; key <= 40; ++key)
        QVERIFY2(fixture.panel->findChild<KeyButton *>(QStringLiteral("key-%1").arg(key)),
                 qPrintable(QString::number(key)));
}

void TestFrontPanel::nothingOverlaps_data()
{
    QTest::addColumn<int>("keys");
    QTest::addColumn<QSize>("size");
    for (const int keys : {0, 1, 12, 40, 120})
        for (const QSize &size : {QSize(1, 1), QSize(1280, 760), QSize(1600, 1000), QSize(3000, 2000)})
            QTest::addRow("%d keys %dx%d", keys, size.width(), size.height()) << keys << size;
}

void TestFrontPanel::nothingOverlaps()
{
    QFETCH(int, keys);
    QFETCH(QSize, size);
    PanelFixture fixture(sampleDevice(keys));
    fixture.panel->resize(size.expandedTo(fixture.panel->minimumSizeHint()));
    fixture.show();
    const QList<QWidget *> parts = partsOf(*fixture.panel);
    for (int i = 0; i < parts.size(); ++i) {
        const QRect rect = rectIn(*fixture.panel, *parts[i]);
        QVERIFY2(rect.left() >= 0 && rect.right() < fixture.panel->width(), qPrintable(parts[i]->objectName()));
        for (int j = 0; j < i; ++j)
            QVERIFY2(!rect.intersects(rectIn(*fixture.panel, *parts[j])),
                     qPrintable(parts[i]->objectName() + QStringLiteral(" over ") + parts[j]->objectName()));
    }
}

void TestFrontPanel::keysScrollWhenThereAreMany()
{
    PanelFixture fixture(sampleDevice(200));
    fixture.panel->resize(fixture.panel->naturalSize());
    fixture.show();
    auto *area = fixture.panel->findChild<QScrollArea *>(QStringLiteral("key-area"));
    auto *last = fixture.panel->findChild<KeyButton *>(QStringLiteral("key-200"));
    QVERIFY(last->visibleRegion().isEmpty());
    area->ensureWidgetVisible(last);
    QVERIFY(!last->visibleRegion().isEmpty());
}

void TestFrontPanel::isScaledAsAWhole_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    const QSize natural = PanelFixture(sampleDevice(12)).panel->naturalSize();
    QTest::newRow("natural") << natural << 1.0;
    QTest::newRow("half") << natural / 2 << 0.5;
    QTest::newRow("double") << natural * 2 << 2.0;
    QTest::newRow("wide") << QSize(3 * natural.width(), natural.height()) << 1.0;
    QTest::newRow("high") << QSize(natural.width(), 3 * natural.height()) << 1.0;
}

// Each part has the scaled size and is in the widget, and what is left is divided between both sides.
void TestFrontPanel::isScaledAsAWhole()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    PanelFixture fixture(sampleDevice(12));
    fixture.panel->resize(fixture.panel->naturalSize());
    fixture.panel->show();
    QMap<QString, QSize> sizes;
    const QList<QWidget *> parts = partsOf(*fixture.panel);
    for (const QWidget *part : parts)
        sizes.insert(part->objectName(), part->size());
    fixture.panel->resize(size);
    QVERIFY2(qAbs(fixture.panel->scale() - scale) < 0.01, qPrintable(QString::number(fixture.panel->scale())));
    QRect all;
    for (const QWidget *part : parts) {
        const QSize expected = sizes.value(part->objectName()) * scale;
        QVERIFY2(qAbs(part->width() - expected.width()) <= 1 && qAbs(part->height() - expected.height()) <= 1,
                 qPrintable(part->objectName()));
        all |= rectIn(*fixture.panel, *part);
    }
    QVERIFY(fixture.panel->rect().contains(all));
    const int left = all.left();
    const int right = fixture.panel->width() - 1 - all.right();
    QVERIFY2(qAbs(left - right) <= 2, qPrintable(QStringLiteral("%1 left, %2 right").arg(left).arg(right)));
}

// A panel with such an LCD fits onto the screens that operators have, at a readable scale.
void TestFrontPanel::aLargeLcdIsScaledDown()
{
    PanelFixture fixture(sampleDevice(12), {1920, 1080});
    fixture.panel->resize(1280, 720);
    fixture.show();
    fixture.panel->resize(1280, 720);
    const auto *overlay = fixture.panel->findChild<LcdInput *>();
    QVERIFY2(fixture.panel->scale() > 0.8, qPrintable(QString::number(fixture.panel->scale())));
    QVERIFY(overlay->width() > 700);
    QVERIFY(qAbs(overlay->width() * 1080 - overlay->height() * 1920) < 2000);
    QCOMPARE(fixture.lcd.size(), QSize(1920, 1080));
}

void TestFrontPanel::touchIsMappedBackToLcdPixels_data()
{
    QTest::addColumn<QSize>("lcd");
    QTest::addColumn<double>("scale");
    QTest::newRow("smaller") << QSize(800, 480) << 0.63;
    QTest::newRow("larger") << QSize(800, 480) << 1.7;
    QTest::newRow("many pixels") << QSize(1920, 1080) << 0.9;
}

// The middle of each LCD pixel, and each corner of the view.
void TestFrontPanel::touchIsMappedBackToLcdPixels()
{
    QFETCH(QSize, lcd);
    QFETCH(double, scale);
    PanelFixture fixture(sampleDevice(12), lcd);
    fixture.panel->resize(fixture.panel->naturalSize() * scale);
    fixture.panel->show();
    auto *overlay = fixture.panel->findChild<LcdInput *>();
    const QSize shown = overlay->size();
    const auto touched = [&](const QPoint &at) {
        fixture.log->lines.clear();
        QTest::mouseClick(overlay, Qt::LeftButton, {}, at);
        return fixture.log->lines.value(0);
    };
    const auto line = [](int x, int y) { return QStringLiteral("touch x=%1 y=%2").arg(x).arg(y); };
    for (int step = 1; step < 20; ++step) {
        const QPoint at(shown.width() * step / 20, shown.height() * step / 20);
        QCOMPARE(touched(at), line(at.x() * lcd.width() / shown.width(), at.y() * lcd.height() / shown.height()));
    }
    const QPoint last(shown.width() - 1, shown.height() - 1);
    QCOMPARE(touched(last), line(last.x() * lcd.width() / shown.width(), last.y() * lcd.height() / shown.height()));
}

// The list of the LCD covers it; its quarters get colors that must be at the same place of the view.
void TestFrontPanel::theScaledLcdShowsItsPixels()
{
    PanelFixture fixture(sampleDevice(12));
    delete fixture.list;
    QWidget quarter(&fixture.lcd);
    quarter.setGeometry(400, 240, 400, 240);
    quarter.setStyleSheet(QStringLiteral("background: #ff0000"));
    quarter.show();
    fixture.panel->resize(fixture.panel->naturalSize() * 0.7);
    fixture.panel->show();
    const auto *overlay = fixture.panel->findChild<LcdInput *>();
    const QImage picture = fixture.panel->grab(rectIn(*fixture.panel, *overlay)).toImage();
    const auto isRed = [&](double x, double y) {
        return picture.pixelColor(int(x * picture.width()), int(y * picture.height())) == QColor(Qt::red);
    };
    QVERIFY(isRed(0.51, 0.51) && isRed(0.99, 0.99));
    QVERIFY(!isRed(0.49, 0.51) && !isRed(0.51, 0.49));
    quarter.setParent(nullptr);
}

void TestFrontPanel::theLcdIsDrawnAgainWhenItChanges()
{
    PanelFixture fixture(sampleDevice(12));
    fixture.show();
    const auto *overlay = fixture.panel->findChild<LcdInput *>();
    const QImage before = fixture.panel->grab(rectIn(*fixture.panel, *overlay)).toImage();
    fixture.list->setCurrentRow(1);
    QTRY_VERIFY(fixture.panel->grab(rectIn(*fixture.panel, *overlay)).toImage() != before);
}

void TestFrontPanel::givesTheLcdBack()
{
    PanelFixture fixture(sampleDevice());
    QVERIFY(fixture.lcd.graphicsProxyWidget());
    fixture.panel.reset();
    QVERIFY(!fixture.lcd.graphicsProxyWidget() && !fixture.lcd.isVisible());
    QCOMPARE(fixture.lcd.size(), QSize(800, 480));
}

void TestFrontPanel::touchHasLcdPixels()
{
    PanelFixture fixture(sampleDevice());
    fixture.show();
    auto *overlay = fixture.panel->findChild<LcdInput *>();
    QCOMPARE(overlay->size(), fixture.lcd.size());
    QTest::mouseClick(overlay, Qt::LeftButton, {}, {123, 45});
    QTest::mouseClick(overlay, Qt::RightButton, {}, {1, 1});
    QCOMPARE(fixture.log->lines, QStringList(QStringLiteral("touch x=123 y=45")));
}

// A small movement is still a click, and the finger stays on the LCD.
void TestFrontPanel::aDragIsAFingerThatMoves()
{
    PanelFixture fixture(sampleDevice());
    fixture.show();
    auto *overlay = fixture.panel->findChild<LcdInput *>();
    const auto drag = [overlay](const QPoint &from, const QPoint &to) {
        QTest::mousePress(overlay, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, overlay->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(overlay, &move);
        QTest::mouseRelease(overlay, Qt::LeftButton, {}, to);
    };
    drag({10, 20}, {12, 22});
    QCOMPARE(fixture.log->lines, QStringList(QStringLiteral("touch x=10 y=20")));
    drag({10, 20}, {2000, 30});
    QCOMPARE(fixture.log->lines.mid(1),
             QStringList({QStringLiteral("touch-down x=10 y=20"), QStringLiteral("touch-move x=799 y=30"),
                          QStringLiteral("touch-move x=799 y=30"), QStringLiteral("touch-up")}));
    drag({1, 2}, {1, 2});
    QCOMPARE(fixture.log->lines.last(), QStringLiteral("touch x=1 y=2"));
}

void TestFrontPanel::touchTakesTheFocusBack()
{
    PanelFixture fixture(sampleDevice());
    QLineEdit other(fixture.panel.get());
    fixture.show();
    other.setFocus();
    QTest::keyClick(&other, Qt::Key_Down);
    QTest::mouseClick(fixture.panel->findChild<LcdInput *>(), Qt::LeftButton, {}, {1, 2});
    QVERIFY(fixture.list->hasFocus());
    QCOMPARE(fixture.log->lines, QStringList(QStringLiteral("touch x=1 y=2")));
}

void TestFrontPanel::keyboardNavigates_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *name, Qt::Key key, const QString &navigation) {
        QTest::newRow(name) << int(key) << QStringLiteral("navigate key=") + navigation;
    };
    row("up", Qt::Key_Up, QStringLiteral("up"));
    row("down", Qt::Key_Down, QStringLiteral("down"));
    row("left", Qt::Key_Left, QStringLiteral("left"));
    row("right", Qt::Key_Right, QStringLiteral("right"));
    row("return", Qt::Key_Return, QStringLiteral("enter"));
    row("enter", Qt::Key_Enter, QStringLiteral("enter"));
    row("escape", Qt::Key_Escape, QStringLiteral("back"));
    row("backspace", Qt::Key_Backspace, QStringLiteral("back"));
    row("home", Qt::Key_Home, QStringLiteral("home"));
    row("end", Qt::Key_End, QStringLiteral("end"));
    row("page up", Qt::Key_PageUp, QStringLiteral("page-up"));
    row("page down", Qt::Key_PageDown, QStringLiteral("page-down"));
}

void TestFrontPanel::keyboardNavigates()
{
    QFETCH(int, key);
    QFETCH(QString, line);
    PanelFixture fixture(sampleDevice());
    fixture.show();
    QTest::keyClick(fixture.list, Qt::Key(key));
    QTest::keyClick(fixture.panel.get(), Qt::Key(key));
    QTest::keyClick(fixture.list, Qt::Key_A);
    QCOMPARE(fixture.log->lines, (QStringList{line, line}));
}

void TestFrontPanel::keysNeverReachTheLcdByThemselves()
{
    PanelFixture fixture(sampleDevice());
    fixture.show();
    QTest::keyClick(fixture.list, Qt::Key_Down);
    QTest::keyClick(fixture.list, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(fixture.list, Qt::Key_T);
    QCOMPARE(fixture.list->currentRow(), 0);
    QCOMPARE(fixture.log->lines, QStringList(QStringLiteral("navigate key=down")));
}

void TestFrontPanel::keysThatAreSentToTheLcdPass()
{
    PanelFixture fixture(sampleDevice());
    fixture.show();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QCoreApplication::sendEvent(fixture.list, &down);
    QCOMPARE(fixture.list->currentRow(), 1);
    QCOMPARE(fixture.log->lines, QStringList());
}

void TestFrontPanel::stateReachesEveryPart()
{
    PanelFixture fixture(sampleDevice());
    fixture.show();
    DeviceState device = sampleDevice();
    const QImage before = fixture.panel->grab().toImage();
    const auto changes = [&](const QString &part) {
        fixture.panel->setState(device, 0);
        const auto *widget = fixture.panel->findChild<QWidget *>(part);
        const QRect rect = rectIn(*fixture.panel, *widget);
        return fixture.panel->grab().toImage().copy(rect) != before.copy(rect);
    };
    device.keys[2].led.brightness = 100;
    device.screenBrightness[1] = 10;
    device.tbar.position = 1;
    device.netPorts[3].isPlugged = true;
    device.usbPorts[0].isBlocked = true;
    for (const char *part : {"key-3", "screen1", "tbar", "net4", "usb1"})
        QVERIFY2(changes(QString::fromLatin1(part)), part);
    for (const char *part : {"key-2", "screen0", "net3", "usb2", "knob"})
        QVERIFY2(!changes(QString::fromLatin1(part)), part);
}

static QStringList groupLines(const QStringList &names)
{
    QList<KeyState> keys;
    for (int i = 0; i < names.size(); ++i)
        keys.append(sampleKey(i, names[i]));
    QStringList lines;
    const auto groups = groupKeys(keys);
    for (const KeyGroup &group : groups) {
        QStringList members;
        for (const KeyState &key : group.keys)
            members << key.name;
        lines << group.title + QStringLiteral(": ") + members.join(QLatin1Char(' '));
    }
    return lines;
}

void TestFrontPanel::keysAreGroupedByName()
{
    const QStringList names = QStringLiteral("PGM1 PVW1 CUT PGM2 PVW2 PGM3 PVW3 AUTO").split(QLatin1Char(' '));
    QCOMPARE(groupLines(names),
             (QStringList{QStringLiteral("PGM: PGM1 PGM2 PGM3"), QStringLiteral("PVW: PVW1 PVW2 PVW3"),
                          QStringLiteral("FUNCTION: CUT AUTO")}));
}

void TestFrontPanel::fewOfAKindStandTogether()
{
    const QStringList names{QStringLiteral("F1"), {}, QStringLiteral("F2"), QStringLiteral("12")};
    QCOMPARE(groupLines(names), QStringList(QStringLiteral("FUNCTION: F1  F2 12")));
}

QTEST_MAIN(TestFrontPanel)
#include "tst_frontpanel.moc"
