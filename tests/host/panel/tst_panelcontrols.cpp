#include "panel/keybutton.h"
#include "panel/knob.h"
#include "panel/lcdview.h"
#include "panel/navigationbutton.h"
#include "panel/navigationcontrols.h"
#include "panel/portwidget.h"
#include "panel/screenview.h"
#include "panel/tbarwidget.h"
#include "panel/theme.h"
#include "panelfixture.h"

#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtTest/QtTest>

#include <memory>

using namespace panelhost;

class TestPanelControls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLcdFillsItsView();
    void tbarFollowsADrag();
    void tbarStaysInItsTrack();
    void tbarTellsEachPositionOnce();
    void tbarKindsLookDifferent();
    void tbarShowsCalibration();
    void tbarShowsWhereToMove_data();
    void tbarShowsWhereToMove();
    void tbarShowsWhatFailed();
    void portPlugsAndUnplugs_data();
    void portPlugsAndUnplugs();
    void usbSwitchBlocksAndUnblocks();
    void usbSpeedIsInTheToolTip();
    void netPortHasNoSwitch();
    void joystickNavigates_data();
    void joystickNavigates();
    void knobTurnsAndEnters();
    void stateIsAccessible_data();
    void stateIsAccessible();
    void positionIsAccessible();
    void accessibleActionIsAClick();
    void arrowKeysMoveTheTbar();
    void otherActions();
    void faultsAreMarked();
    void captionsStayReadable();
    void screenDims();
    void screenShowsPattern_data();
    void screenShowsPattern();
};

namespace {

class SizedTBar : public TBarWidget
{
public:
    SizedTBar() : TBarWidget(nullptr) { resize(sizeHint()); }
};

}

static TBarState barAt(double position, TBarType type = TBarType::Slider)
{
    TBarState bar;
    bar.type = type;
    bar.position = position;
    return bar;
}

static void dragTo(TBarWidget &tbar, int y)
{
    QMouseEvent move(QEvent::MouseMove, QPointF(tbar.width() / 2, y), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&tbar, &move);
}

static void turnWheel(QWidget &widget, int notches)
{
    const QPointF at = widget.rect().center();
    QWheelEvent wheel(at, at, {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &wheel);
}

void TestPanelControls::tbarFollowsADrag()
{
    SizedTBar tbar;
    ActionLog log(static_cast<TBarWidget &>(tbar));
    dragTo(tbar, tbar.yOf(0.5));
    QCOMPARE(log.lines, QStringList(QStringLiteral("tbar position=0.5")));
    tbar.setState(barAt(0.5));
    dragTo(tbar, tbar.yOf(1));
    QCOMPARE(log.lines.last(), QStringLiteral("tbar position=1"));
}

void TestPanelControls::tbarStaysInItsTrack()
{
    SizedTBar tbar;
    tbar.setState(barAt(0.5));
    ActionLog log(static_cast<TBarWidget &>(tbar));
    dragTo(tbar, -500);
    dragTo(tbar, 5000);
    QCOMPARE(log.lines, (QStringList{QStringLiteral("tbar position=1"), QStringLiteral("tbar position=0")}));
}

void TestPanelControls::tbarTellsEachPositionOnce()
{
    SizedTBar tbar;
    tbar.setState(barAt(0.25));
    ActionLog log(static_cast<TBarWidget &>(tbar));
    dragTo(tbar, tbar.yOf(0.25));
    QCOMPARE(log.lines, QStringList());
    turnWheel(tbar, 1);
    QCOMPARE(log.lines, QStringList(QStringLiteral("tbar position=0.3")));
}

void TestPanelControls::tbarKindsLookDifferent()
{
    SizedTBar tbar;
    tbar.setState(barAt(0.5));
    const QImage slider = tbar.grab().toImage();
    tbar.setState(barAt(0.5, TBarType::Fader));
    QVERIFY(tbar.grab().toImage() != slider);
}

// The lines below the T-Bar, counted from the top: position, hint, failure.
static QImage footLine(const QImage &bar, int line)
{
    return bar.copy(0, bar.height() - 56 + 16 * line, bar.width(), 16);
}

static bool holds(const QImage &image, QRgb color)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) | 0xff000000) == color)
                return true;
    return false;
}

void TestPanelControls::tbarShowsCalibration()
{
    SizedTBar tbar;
    TBarState bar = barAt(0);
    tbar.setState(bar);
    const QImage idle = tbar.grab().toImage();
    bar.step = QStringLiteral("middle");
    tbar.setState(bar);
    const QImage busy = tbar.grab().toImage();
    QVERIFY(footLine(busy, 1) != footLine(idle, 1));
    const QRect above(0, 0, idle.width(), idle.height() - 40);
    QCOMPARE(busy.copy(above), idle.copy(above));
}

void TestPanelControls::tbarShowsWhereToMove_data()
{
    QTest::addColumn<TBarEnd>("end");
    QTest::addColumn<double>("away");
    QTest::addColumn<double>("there");
    QTest::newRow("top") << TBarEnd::Top << 0.94 << 0.95;
    QTest::newRow("bottom") << TBarEnd::Bottom << 0.06 << 0.05;
}

// The end that is asked for is amber until the bar is there, then green; the other end is as ever.
void TestPanelControls::tbarShowsWhereToMove()
{
    QFETCH(TBarEnd, end);
    QFETCH(double, away);
    QFETCH(double, there);
    SizedTBar tbar;
    TBarState bar = barAt(0.5);
    tbar.setState(bar);
    const QImage idle = tbar.grab().toImage();
    QVERIFY(!holds(idle, theme::Amber) && !holds(idle, theme::Green));
    bar.target = end;
    tbar.setState(bar);
    const QImage asked = tbar.grab().toImage();
    const int middle = tbar.yOf(0.5);
    const QRect upper(0, 0, asked.width(), middle);
    const QRect lower(0, middle, asked.width(), asked.height() - 56 - middle);
    QCOMPARE(holds(asked.copy(upper), theme::Amber), end == TBarEnd::Top);
    QCOMPARE(holds(asked.copy(lower), theme::Amber), end == TBarEnd::Bottom);
    QVERIFY(footLine(asked, 1) != footLine(idle, 1));

    bar.position = away;
    tbar.setState(bar);
    QVERIFY(!holds(tbar.grab().toImage(), theme::Green));
    bar.position = there;
    tbar.setState(bar);
    const QImage inPlace = tbar.grab().toImage();
    QVERIFY(holds(inPlace, theme::Green) && !holds(inPlace, theme::Amber));
}

void TestPanelControls::tbarShowsWhatFailed()
{
    SizedTBar tbar;
    TBarState bar = barAt(0.5);
    tbar.setState(bar);
    const QImage before = tbar.grab().toImage();
    bar.failure = QStringLiteral("step 2 (top) failed: the T-Bar is at 50 %");
    tbar.setState(bar);
    const QImage failed = tbar.grab().toImage();
    QVERIFY(footLine(failed, 2) != footLine(before, 2));
    QCOMPARE(footLine(failed, 1), footLine(before, 1));
    QVERIFY(tbar.toolTip().startsWith(QStringLiteral("T-Bar\nstep 2 (top) failed: the T-Bar is at 50 %\n")));
    bar.failure.clear();
    tbar.setState(bar);
    QCOMPARE(tbar.grab().toImage(), before);
    QVERIFY(!tbar.toolTip().contains(QStringLiteral("failed")));
}

void TestPanelControls::portPlugsAndUnplugs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::newRow("net") << QStringLiteral("net2") << int(PortWidget::Type::Net);
    QTest::newRow("usb") << QStringLiteral("usb3") << int(PortWidget::Type::Usb);
}

void TestPanelControls::portPlugsAndUnplugs()
{
    QFETCH(QString, name);
    QFETCH(int, type);
    PortState port{name, 2, false, false, 0};
    PortWidget widget(PortWidget::Type(type), port, nullptr);
    widget.resize(widget.sizeHint());
    ActionLog log(widget);
    const QImage empty = widget.grab().toImage();
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {30, 20});
    port.isPlugged = true;
    widget.setState(port);
    QVERIFY(widget.grab().toImage() != empty);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {30, 20});
    QCOMPARE(log.lines, (QStringList{QStringLiteral("plug port=") + name, QStringLiteral("unplug port=") + name}));
}

void TestPanelControls::usbSwitchBlocksAndUnblocks()
{
    PortState port{QStringLiteral("usb1"), 1, false, false, 0};
    PortWidget widget(PortWidget::Type::Usb, port, nullptr);
    widget.resize(widget.sizeHint());
    ActionLog log(widget);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, widget.blockSwitch().center());
    port.isBlocked = true;
    widget.setState(port);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, widget.blockSwitch().center());
    QCOMPARE(log.lines, (QStringList{QStringLiteral("block port=usb1"), QStringLiteral("unblock port=usb1")}));
}

void TestPanelControls::usbSpeedIsInTheToolTip()
{
    PortState port{QStringLiteral("usb1"), 0, false, false, 0};
    PortWidget widget(PortWidget::Type::Usb, port, nullptr);
    QVERIFY(!widget.toolTip().contains(QStringLiteral("Mbit")));
    port.isPlugged = true;
    port.speed = 1.5;
    widget.setState(port);
    QVERIFY2(widget.toolTip().startsWith(QStringLiteral("USB 1\n1.5 Mbit/s\n")), qPrintable(widget.toolTip()));
    port.speed = 5000;
    widget.setState(port);
    QVERIFY2(widget.toolTip().startsWith(QStringLiteral("USB 1\n5000 Mbit/s\n")), qPrintable(widget.toolTip()));
    port = {QStringLiteral("usb1"), 0, false, false, 0};
    widget.setState(port);
    QVERIFY(!widget.toolTip().contains(QStringLiteral("Mbit")));
}

void TestPanelControls::netPortHasNoSwitch()
{
    PortWidget widget(PortWidget::Type::Net, {QStringLiteral("net1"), 1, false, false, 0}, nullptr);
    widget.resize(widget.sizeHint());
    QVERIFY(widget.blockSwitch().isEmpty());
    ActionLog log(widget);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {widget.width() / 2, widget.height() - 4});
    QCOMPARE(log.lines, QStringList(QStringLiteral("plug port=net1")));
}

void TestPanelControls::joystickNavigates_data()
{
    QTest::addColumn<QString>("key");
    for (const char *key : {"up", "down", "left", "right", "enter", "back"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void TestPanelControls::joystickNavigates()
{
    QFETCH(QString, key);
    NavigationControls controls(nullptr);
    ActionLog log(controls);
    auto *button = controls.findChild<NavigationButton *>(QStringLiteral("nav-") + key);
    QVERIFY(button);
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseClick(button, Qt::RightButton);
    QCOMPARE(log.lines, QStringList(QStringLiteral("navigate key=") + key));
}

void TestPanelControls::knobTurnsAndEnters()
{
    Knob knob(nullptr);
    knob.resize(knob.sizeHint());
    ActionLog log(knob);
    turnWheel(knob, 1);
    turnWheel(knob, -1);
    QTest::mouseClick(&knob, Qt::LeftButton, {}, {12, 36});
    QTest::mouseClick(&knob, Qt::LeftButton, {}, {60, 36});
    QTest::mouseClick(&knob, Qt::LeftButton, {}, {36, 36});
    QCOMPARE(log.lines,
             (QStringList{QStringLiteral("navigate key=up"), QStringLiteral("navigate key=down"),
                          QStringLiteral("navigate key=up"), QStringLiteral("navigate key=down"),
                          QStringLiteral("navigate key=enter")}));
}

static KeyState keyWithLed(const KeyLed &led)
{
    KeyState key = sampleKey(7, QStringLiteral("CUT"));
    key.led = led;
    return key;
}

static std::shared_ptr<Control> makeKey(const KeyLed &led, bool isDown = false)
{
    KeyState key = keyWithLed(led);
    key.isDown = isDown;
    auto button = std::make_shared<KeyButton>(key, nullptr);
    button->setState(key, 0);
    return button;
}

static std::shared_ptr<Control> makePort(PortWidget::Type type, bool isPlugged, bool isBlocked)
{
    return std::make_shared<PortWidget>(type, PortState{QStringLiteral("usb2"), 2, isPlugged, isBlocked}, nullptr);
}

void TestPanelControls::stateIsAccessible_data()
{
    QTest::addColumn<std::shared_ptr<Control>>("control");
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("checked");
    const QString key = QStringLiteral("CUT (key 7)");
    const QString usb = QStringLiteral("USB 2");
    const auto row = [](const char *tag, const std::shared_ptr<Control> &control, QAccessible::Role role,
                        const QString &name, const char *state, bool checked) {
        QTest::newRow(tag) << control << int(role) << name << QString::fromLatin1(state) << checked;
    };
    row("dark key", makeKey({0, 0, 0, 800}), QAccessible::PushButton, key, "dark", false);
    row("lit key", makeKey({0, 0, 70, 800}), QAccessible::PushButton, key, "lit, red, 70 %", false);
    row("blinking key", makeKey({2, 1, 100, 800}), QAccessible::PushButton, key, "blinking, green, 100 %", false);
    row("held key", makeKey({0, 0, 0, 800}, true), QAccessible::PushButton, key, "dark, held", true);
    row("free port", makePort(PortWidget::Type::Usb, false, false), QAccessible::CheckBox, usb, "unplugged", false);
    row("plugged port", makePort(PortWidget::Type::Usb, true, false), QAccessible::CheckBox, usb, "plugged", true);
    row("blocked port", makePort(PortWidget::Type::Usb, true, true), QAccessible::CheckBox, usb, "plugged, blocked",
        true);
    row("knob", std::make_shared<Knob>(nullptr), QAccessible::PushButton, QStringLiteral("Knob"), "", false);
    row("direction", std::make_shared<NavigationButton>(QStringLiteral("up"), QStringLiteral("^"), nullptr),
        QAccessible::PushButton, QStringLiteral("Up"), "", false);
    row("T-Bar", std::make_shared<TBarWidget>(nullptr), QAccessible::Slider, QStringLiteral("T-Bar"), "0 %", false);
}

void TestPanelControls::stateIsAccessible()
{
    QFETCH(std::shared_ptr<Control>, control);
    QFETCH(QString, name);
    QFETCH(QString, state);
    const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(control.get());
    QVERIFY(seen);
    QTEST(int(seen->role()), "role");
    QCOMPARE(seen->text(QAccessible::Name), name);
    QCOMPARE(seen->text(QAccessible::Description), state);
    QTEST(bool(seen->state().checked), "checked");
    QVERIFY(seen->state().focusable);
    QVERIFY(!seen->text(QAccessible::Help).isEmpty());
}

void TestPanelControls::positionIsAccessible()
{
    TBarWidget tbar(nullptr);
    tbar.setState(barAt(0.4));
    ActionLog log(tbar);
    QAccessibleValueInterface *value = QAccessible::queryAccessibleInterface(&tbar)->valueInterface();
    QVERIFY(value);
    QCOMPARE(value->currentValue().toInt(), 40);
    QCOMPARE(value->minimumValue().toInt(), 0);
    QCOMPARE(value->maximumValue().toInt(), 100);
    value->setCurrentValue(75);
    QCOMPARE(log.lines, QStringList(QStringLiteral("tbar position=0.75")));
}

void TestPanelControls::accessibleActionIsAClick()
{
    const auto port = makePort(PortWidget::Type::Usb, false, false);
    ActionLog log(*port);
    QAccessibleActionInterface *actions = QAccessible::queryAccessibleInterface(port.get())->actionInterface();
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(log.lines, QStringList(QStringLiteral("plug port=usb2")));
}

void TestPanelControls::arrowKeysMoveTheTbar()
{
    TBarWidget tbar(nullptr);
    tbar.setState(barAt(0.5));
    ActionLog log(tbar);
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End})
        QVERIFY(tbar.handleKey(key));
    QVERIFY(!tbar.handleKey(Qt::Key_Return));
    QCOMPARE(log.lines,
             (QStringList{QStringLiteral("tbar position=0.55"), QStringLiteral("tbar position=0.45"),
                          QStringLiteral("tbar position=0"), QStringLiteral("tbar position=1")}));
}

void TestPanelControls::otherActions()
{
    const auto key = makeKey({0, 0, 0, 800});
    const auto held = makeKey({0, 0, 0, 800}, true);
    const auto usb = makePort(PortWidget::Type::Usb, false, false);
    const auto net = makePort(PortWidget::Type::Net, false, false);
    QStringList lines;
    for (const auto &control : {key, held, usb, net}) {
        ActionLog log(*control);
        control->activateOther();
        lines << log.lines;
    }
    QCOMPARE(lines,
             (QStringList{QStringLiteral("hold key=7"), QStringLiteral("release key=7"),
                          QStringLiteral("block port=usb2")}));
}

void TestPanelControls::faultsAreMarked()
{
    const auto key = makeKey({0, 0, 0, 800});
    key->resize(key->sizeHint());
    const QImage before = key->grab().toImage();
    QVERIFY(!holds(before, theme::Amber));
    key->setFaults(QStringLiteral("A key gives no event"));
    QVERIFY(holds(key->grab().toImage(), theme::Amber));
    QVERIFY(key->toolTip().endsWith(QStringLiteral("A key gives no event")));
    QCOMPARE(key->stateText(), QStringLiteral("dark, fault"));
    key->setFaults({});
    QCOMPARE(key->grab().toImage(), before);
}

// At any scale of the panel; a text without room is elided, and whole in the tool tip.
void TestPanelControls::captionsStayReadable()
{
    QCOMPARE(theme::captionFont(1, 11), theme::font(11));
    QCOMPARE(theme::captionFont(0.25, 11), theme::captionFont(0.5, 11)); // there is no more room
    for (const double scale : {0.6, 0.7, 0.8})
        QVERIFY2(theme::captionFont(scale, 11).pixelSize() * scale >= 9, qPrintable(QString::number(scale)));
    TBarWidget bar(nullptr);
    bar.setScale(0.5);
    bar.resize(bar.sizeHint());
    const auto pixels = [&bar](TBarEnd target) {
        TBarState state;
        state.target = target;
        bar.setState(state);
        const QImage picture = bar.grab({0, bar.height() - 5 * theme::Grid / 2, bar.width(), theme::Grid}).toImage();
        const auto isLit = [&picture](int x) {
            for (int y = 0; y < picture.height(); ++y)
                if (picture.pixelColor(x, y).hsvSaturation() > 120)
                    return true;
            return false;
        };
        return isLit(0) || isLit(picture.width() - 1);
    };
    QVERIFY(!pixels(TBarEnd::Bottom));
    QVERIFY2(bar.toolTip().contains(QStringLiteral("at the bottom")), qPrintable(bar.toolTip()));
    QVERIFY(!pixels(TBarEnd::Top));
    QVERIFY2(bar.toolTip().contains(QStringLiteral("move to the top")), qPrintable(bar.toolTip()));
}

void TestPanelControls::screenDims()
{
    ScreenView screen(0, nullptr);
    screen.resize(screen.sizeHint());
    const auto light = [&screen](int brightness) {
        screen.setState(brightness, {1, 4, 0});
        return qGray(screen.grab().toImage().pixel(60, 30));
    };
    QCOMPARE(light(100), 255);
    QVERIFY(qAbs(light(50) - 128) <= 2);
    QVERIFY(qAbs(light(10) - 26) <= 2);
    QCOMPARE(light(0), 0);
}

void TestPanelControls::screenShowsPattern_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("level");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("right");
    QTest::newRow("red") << 1 << 1 << 0 << QColor(255, 0, 0) << QColor(255, 0, 0);
    QTest::newRow("green") << 1 << 2 << 0 << QColor(0, 255, 0) << QColor(0, 255, 0);
    QTest::newRow("blue") << 1 << 3 << 0 << QColor(0, 0, 255) << QColor(0, 0, 255);
    QTest::newRow("white") << 1 << 4 << 0 << QColor(255, 255, 255) << QColor(255, 255, 255);
    QTest::newRow("grey") << 3 << 1 << 128 << QColor(128, 128, 128) << QColor(128, 128, 128);
    QTest::newRow("full grey") << 3 << 1 << 255 << QColor(255, 255, 255) << QColor(255, 255, 255);
    QTest::newRow("ramp to half") << 3 << 2 << 128 << QColor(0, 0, 0) << QColor(128, 128, 128);
    QTest::newRow("ramp to full") << 3 << 2 << 255 << QColor(0, 0, 0) << QColor(255, 255, 255);
}

void TestPanelControls::screenShowsPattern()
{
    QFETCH(int, type);
    QFETCH(int, index);
    QFETCH(int, level);
    QFETCH(QColor, left);
    QFETCH(QColor, right);
    QImage image(200, 10, QImage::Format_RGB32);
    QPainter painter(&image);
    drawTestPattern(painter, image.rect(), {type, index, level});
    painter.end();
    QVERIFY2(qAbs(qGray(image.pixel(1, 5)) - qGray(left.rgb())) <= 3, qPrintable(image.pixelColor(1, 5).name()));
    QVERIFY2(qAbs(qGray(image.pixel(198, 5)) - qGray(right.rgb())) <= 3, qPrintable(image.pixelColor(198, 5).name()));
    QCOMPARE(image.pixelColor(198, 5).hue(), right.hue());
}

// Also if it was shown at another place before, as after a session was replayed.
void TestPanelControls::theLcdFillsItsView()
{
    QWidget lcd;
    lcd.setFixedSize(200, 100);
    lcd.setStyleSheet(QStringLiteral("background: #ff0000"));
    lcd.move(7, 9);
    LcdView view(&lcd, nullptr);
    view.resize(400, 200);
    const QImage image = view.grab().toImage();
    for (const QPoint &inside : {QPoint(3, 3), QPoint(396, 3), QPoint(3, 196), QPoint(396, 196)})
        QCOMPARE(image.pixelColor(inside * image.devicePixelRatio()).name(), QStringLiteral("#ff0000"));
}

QTEST_MAIN(TestPanelControls)
#include "tst_panelcontrols.moc"
