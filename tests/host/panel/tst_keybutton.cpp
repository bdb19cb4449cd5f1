#include "panel/keybutton.h"
#include "panel/led.h"
#include "panelfixture.h"

#include <QtTest/QtTest>

using namespace panelhost;

class TestKeyButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clickPressesOnRelease();
    void longClickHoldsAsLongAsTheMouse();
    void rightButtonHoldsUntilTheNextClick();
    void middleButtonDoesNothing();
    void ledLevelFollowsPeriod_data();
    void ledLevelFollowsPeriod();
    void blinkingLedGoesOnAndOff();
    void capTakesTheLedsColor_data();
    void capTakesTheLedsColor();
    void unnamedKeyShowsItsNumber();
    void captionIsBrokenOrElided_data();
    void captionIsBrokenOrElided();
    void captionStaysReadable();
};

static QImage picture(KeyButton &button, const KeyState &key, Milliseconds now = 0)
{
    button.setState(key, now);
    button.resize(button.sizeHint());
    return button.grab().toImage();
}

void TestKeyButton::clickPressesOnRelease()
{
    KeyButton button(sampleKey(7, QStringLiteral("AUTO")), nullptr);
    ActionLog log(button);
    QTest::mousePress(&button, Qt::LeftButton);
    QVERIFY(button.isDown());
    QCOMPARE(log.lines, QStringList());
    QTest::mouseRelease(&button, Qt::LeftButton);
    QVERIFY(!button.isDown());
    QCOMPARE(log.lines, QStringList(QStringLiteral("press key=7")));
}

void TestKeyButton::longClickHoldsAsLongAsTheMouse()
{
    KeyButton button(sampleKey(7, QStringLiteral("AUTO")), nullptr);
    ActionLog log(button);
    QTest::mousePress(&button, Qt::LeftButton);
    QTRY_COMPARE(log.lines, QStringList(QStringLiteral("hold key=7")));
    QTest::mouseRelease(&button, Qt::LeftButton);
    QCOMPARE(log.lines, (QStringList{QStringLiteral("hold key=7"), QStringLiteral("release key=7")}));
}

void TestKeyButton::rightButtonHoldsUntilTheNextClick()
{
    KeyState key = sampleKey(7, QStringLiteral("AUTO"));
    KeyButton button(key, nullptr);
    ActionLog log(button);
    QTest::mouseClick(&button, Qt::RightButton);
    QCOMPARE(log.lines, QStringList(QStringLiteral("hold key=7")));
    key.isDown = true;
    button.setState(key, 0);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(log.lines.last(), QStringLiteral("release key=7"));
    QCOMPARE(log.lines.size(), 2);
}

void TestKeyButton::middleButtonDoesNothing()
{
    KeyButton button(sampleKey(7, QStringLiteral("AUTO")), nullptr);
    ActionLog log(button);
    QTest::mouseClick(&button, Qt::MiddleButton);
    QCOMPARE(log.lines, QStringList());
}

void TestKeyButton::ledLevelFollowsPeriod_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("brightness");
    QTest::addColumn<int>("period");
    QTest::addColumn<int>("now");
    QTest::addColumn<int>("level");
    QTest::newRow("steady") << 0 << 70 << 800 << 500 << 70;
    QTest::newRow("first half") << 1 << 100 << 800 << 399 << 100;
    QTest::newRow("second half") << 1 << 100 << 800 << 400 << 0;
    QTest::newRow("next period") << 1 << 100 << 800 << 800 << 100;
    QTest::newRow("other period") << 1 << 100 << 200 << 100 << 0;
    QTest::newRow("dark") << 1 << 0 << 800 << 0 << 0;
    QTest::newRow("no period") << 1 << 50 << 0 << 0 << 50;
    QTest::newRow("negative period") << 1 << 50 << -800 << 3 << 50;
    QTest::newRow("too bright") << 0 << 1000 << 800 << 0 << 100;
    QTest::newRow("below nothing") << 0 << -5 << 800 << 0 << 0;
}

void TestKeyButton::ledLevelFollowsPeriod()
{
    QFETCH(int, mode);
    QFETCH(int, brightness);
    QFETCH(int, period);
    QFETCH(int, now);
    QTEST(ledLevel({2, mode, brightness, period}, now), "level");
}

void TestKeyButton::blinkingLedGoesOnAndOff()
{
    KeyState key = sampleKey(7, QStringLiteral("AUTO"));
    KeyButton button(key, nullptr);
    const QImage dark = picture(button, key);
    key.led = {2, 1, 100, 800};
    QVERIFY(picture(button, key, 0) != dark);
    QCOMPARE(button.level(), 100);
    QCOMPARE(picture(button, key, 400), dark);
    QCOMPARE(button.level(), 0);
}

void TestKeyButton::capTakesTheLedsColor_data()
{
    QTest::addColumn<int>("color");
    QTest::addColumn<QColor>("expected");
    QTest::newRow("red") << 0 << QColor(0xf0, 0x48, 0x3e);
    QTest::newRow("blue") << 1 << QColor(0x3f, 0x8c, 0xff);
    QTest::newRow("green") << 2 << QColor(0x35, 0xd0, 0x6a);
    QTest::newRow("white") << 3 << QColor(0xf4, 0xf7, 0xfa);
    QTest::newRow("unknown is amber") << 99 << QColor(0xff, 0xb0, 0x2e);
}

void TestKeyButton::capTakesTheLedsColor()
{
    QFETCH(int, color);
    QFETCH(QColor, expected);
    KeyState key = sampleKey(7, QStringLiteral("."));
    key.led = {color, 0, 100, 800};
    KeyButton button(key, nullptr);
    const QColor cap = picture(button, key).pixelColor(8, 20);
    QVERIFY2(qAbs(cap.hue() - expected.hue()) < 4 || expected.saturation() < 10, qPrintable(cap.name()));
    QVERIFY2(qAbs(cap.value() - expected.value()) < 32, qPrintable(cap.name()));
}

void TestKeyButton::unnamedKeyShowsItsNumber()
{
    KeyButton unnamed(sampleKey(27, {}), nullptr);
    KeyButton named(sampleKey(5, QStringLiteral("27")), nullptr);
    QCOMPARE(picture(unnamed, sampleKey(27, {})), picture(named, sampleKey(5, QStringLiteral("27"))));
}

void TestKeyButton::captionIsBrokenOrElided_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    QTest::newRow("short") << QStringLiteral("CUT") << QStringLiteral("CUT");
    QTest::newRow("fits") << QStringLiteral("RECORD") << QStringLiteral("RECORD");
    QTest::newRow("two words") << QStringLiteral("PGM MIX 10") << QStringLiteral("PGM\nMIX 10");
    QTest::newRow("one long word") << QStringLiteral("TRANSITION") << QStringLiteral("TRANS…");
    QTest::newRow("long second line") << QStringLiteral("KEY TRANSITION") << QStringLiteral("KEY\nTRANS…");
    QTest::newRow("empty") << QString() << QString();
}

void TestKeyButton::captionIsBrokenOrElided()
{
    QFETCH(QString, name);
    QTEST(keyCaption(name, {48, 40}), "caption");
}

// On a small panel the caption is shorter rather than smaller. What is elided is in the tool tip.
void TestKeyButton::captionStaysReadable()
{
    QCOMPARE(keyCaption(QStringLiteral("RECORD"), {48, 40}, 0.8), QStringLiteral("RECORD"));
    const QString small = keyCaption(QStringLiteral("RECORD"), {48, 40}, 0.5);
    QVERIFY2(small.startsWith(QLatin1Char('R')) && small.endsWith(QChar(0x2026)), qPrintable(small));
    QCOMPARE(keyCaption(QStringLiteral("PGM 12"), {48, 40}, 0.5), QStringLiteral("PGM\n12"));
    QCOMPARE(keyCaption(QStringLiteral("PGM 12"), {48, 20}, 0.5).count(QLatin1Char('\n')), 0);
    KeyButton button(sampleKey(7, QStringLiteral("RECORD")), nullptr);
    QVERIFY(button.toolTip().startsWith(QStringLiteral("RECORD")));
}

QTEST_MAIN(TestKeyButton)
#include "tst_keybutton.moc"
