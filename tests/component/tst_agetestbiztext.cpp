#include "agetestfixture.h"
#include "keytranslation.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <functional>
#include <memory>

using LCD::FactoryModeImpl::AgeTestBiz;

namespace {

/// Returns all lines that name a step, in order.
QStringList stepLines(const QStringList &calls)
{
    return calls.filter(QRegularExpression(QStringLiteral("^white ")));
}

}

/// The text lines of the aging test.
class AgeTestBizTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        setTestLanguage(QString());
        setTestEnding(QString());
    }

    void theFirstRoundNamesTheLevelFromTheStart()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(19999);
        QStringList expected;
        for (const int level : {10, 30, 50, 70, 100, 10, 30, 50, 70, 100})
            expected << QStringLiteral("white [FCAging][FCScreenLight] %1%").arg(level);
        QCOMPARE(stepLines(fixture.take()), expected);
    }

    void laterRoundsNameNoLevelUntilTheFirstTick()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({});
        fixture.take();
        fixture.usbChanged({});
        VirtualTime::advance(2000);
        QCOMPARE(stepLines(fixture.take()),
                 (QStringList{QStringLiteral("white [FCAging][FCScreenLight]"),
                              QStringLiteral("white [FCAging][FCScreenLight] 30%")}));
    }

    void afterAStopTheFirstLineNamesTenPercentAgain()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runBrightness();
        fixture.biz->stop();
        fixture.take();
        fixture.biz->start();
        QCOMPARE(stepLines(fixture.take()), QStringList{QStringLiteral("white [FCAging][FCScreenLight] 10%")});
    }

    void theEndOfTheWalkIsNeverShownAsALevel()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        const QStringList written = fixture.take();
        QVERIFY(written.filter(QStringLiteral("101")).isEmpty());
        QCOMPARE(stepLines(written).last(), QStringLiteral("white [FCAging][FCNet]"));
    }

    void noTickOfTheBadPixelStepWrites()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runBrightness();
        fixture.take();
        VirtualTime::advance(35999);
        const QStringList written = fixture.take();
        QCOMPARE(written.size(), 11);
        QCOMPARE(written.filter(QStringLiteral("keyboard.setLcdTestPattern")).size(), 11);
    }

    void failuresStandInTheRedLine_data()
    {
        QTest::addColumn<bool>("netUp");
        QTest::addColumn<bool>("usbUp");
        QTest::addColumn<QString>("red");
        QTest::newRow("none") << true << true << QStringLiteral("red  ");
        QTest::newRow("net") << false << true << QStringLiteral("red  [FCAgeNetNoPass]");
        QTest::newRow("usb") << true << false << QStringLiteral("red  [FCAgeUSBNoPass]");
        QTest::newRow("both") << false << false << QStringLiteral("red  [FCAgeNetNoPass]、[FCAgeUSBNoPass]");
    }

    void failuresStandInTheRedLine()
    {
        QFETCH(const bool, netUp);
        QFETCH(const bool, usbUp);
        QFETCH(const QString, red);
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, netUp}});
        fixture.usbChanged({{3, 26, usbUp ? 1 : 0}});
        fixture.runBrightness();
        const QStringList written = fixture.take();
        QCOMPARE(written.last(), red);
        QVERIFY(written.contains(QStringLiteral("white [FCAging][FCScreenBadPixel]")));
    }

    void recountForgetsTheFailuresAndWritesNoRedLine()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.usbChanged({});
        fixture.take();
        fixture.biz->recount();
        QCOMPARE(fixture.take(),
                 (QStringList{QStringLiteral("clear"), QStringLiteral("white [FCAging][FCScreenLight] 10%")}));
        VirtualTime::advance(2000);
        QCOMPARE(fixture.take().last(), QStringLiteral("red  "));
    }

    void recountAtEachStepLeavesTheStepAlone_data()
    {
        QTest::addColumn<int>("after");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("next");
        const QString screen = QStringLiteral("keyboard.setScreenBrightness(0, 50)");
        QTest::newRow("brightness") << 3000 << QStringLiteral("white [FCAging][FCScreenLight] 30%") << screen;
        QTest::newRow("bad pixel") << 24000 << QStringLiteral("white [FCAging][FCScreenBadPixel]")
                                   << QStringLiteral("keyboard.setLcdTestPattern(1, 3)");
        QTest::newRow("button light") << 63000 << QStringLiteral("white [FCAging][FCBtnLight] 70%")
                                      << QStringLiteral("keyboard.setAllButtonBrightness(100)");
    }

    void recountAtEachStepLeavesTheStepAlone()
    {
        QFETCH(const int, after);
        QFETCH(const QString, line);
        QFETCH(const QString, next);
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(after);
        fixture.take();
        fixture.biz->recount();
        QCOMPARE(fixture.take(), (QStringList{QStringLiteral("clear"), line}));
        VirtualTime::advance(3000);
        QCOMPARE(fixture.take().first(), next);
    }

    void recountAtAPortStepLeavesItWaiting()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        fixture.biz->recount();
        QCOMPARE(fixture.take(), (QStringList{QStringLiteral("clear"), QStringLiteral("white [FCAging][FCNet]")}));
        fixture.netChanged({});
        QVERIFY(fixture.take().contains(QStringLiteral("white [FCAging][FCUSB]")));
    }

    void recountAtTheUsbStepLeavesItWaitingAndForgetsTheNetFailure()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.take();
        fixture.biz->recount();
        QCOMPARE(fixture.take(), (QStringList{QStringLiteral("clear"), QStringLiteral("white [FCAging][FCUSB]")}));
        fixture.usbChanged({{1}});
        QCOMPARE(fixture.take().mid(0, 3), lines(QStringLiteral("[FCScreenLight]")));
    }

    void aNewLanguageShowsAtTheNextUpdate()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.take();
        setTestLanguage(QStringLiteral("de"));
        QCOMPARE(fixture.take(), QStringList());
        VirtualTime::advance(2000);
        QCOMPARE(stepLines(fixture.take()), QStringList{QStringLiteral("white [de:FCAging][de:FCScreenLight] 30%")});
    }

    void aTranslationThatEndsInTheSeparatorKeepsIt()
    {
        AgeTestFixture fixture;
        setTestEnding(QStringLiteral("、"));
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        fixture.netChanged({{0, false}});
        QVERIFY(fixture.take().contains(QStringLiteral("red  [FCAgeNetNoPass]、")));
    }

    void theListenerForTheTextMayReplaceItself()
    {
        AgeTestFixture fixture;
        const auto own = std::make_shared<int>(1);
        QStringList first;
        QStringList second;
        fixture.biz->registerSetAgeTextInfoCallBack([&, own](const QString &, const QColor &) {
            fixture.biz->registerSetAgeTextInfoCallBack([&](const QString &text, const QColor &) { second << text; });
            first << QString::number(*own);
        });
        fixture.biz->start();
        QCOMPARE(first, QStringList{QStringLiteral("1")});
        QCOMPARE(second, (QStringList{QStringLiteral("[FCAging][FCScreenLight] 10%"), QStringLiteral(" ")}));
    }

    void theListenerForTheButtonLightMayReplaceItself()
    {
        AgeTestFixture fixture;
        const auto own = std::make_shared<int>(1);
        fixture.biz->registerOnButtonLightFinishedCallback([&, own] {
            fixture.biz->registerOnButtonLightFinishedCallback({});
            fixture.host.calls.add(QStringLiteral("own %1").arg(*own));
        });
        fixture.biz->start();
        fixture.runToNetStep();
        QCOMPARE(fixture.take().filter(QRegularExpression(QStringLiteral("^(own|finished)"))),
                 QStringList{QStringLiteral("own 1")});
    }

    void theListenersKeepTheirState()
    {
        AgeTestFixture fixture;
        QList<int> texts;
        QList<int> ends;
        fixture.biz->registerSetAgeTextInfoCallBack(
            [&texts, n = 0](const QString &, const QColor &) mutable { texts << ++n; });
        fixture.biz->registerOnButtonLightFinishedCallback([&ends, n = 0]() mutable { ends << ++n; });
        fixture.biz->start();
        QCOMPARE(texts, (QList<int>{1, 2, 3}));
        for (int round = 1; round <= 2; ++round) {
            fixture.runToNetStep();
            QCOMPARE(ends.size(), round);
            QCOMPARE(ends.last(), round);
            fixture.netChanged({});
            fixture.usbChanged({});
        }
    }

    void withoutAListenerForTheTextNothingCanStart_data()
    {
        QTest::addColumn<std::function<void(AgeTestBiz &)>>("operation");
        QTest::newRow("start") << std::function<void(AgeTestBiz &)>([](AgeTestBiz &biz) { biz.start(); });
        QTest::newRow("stop") << std::function<void(AgeTestBiz &)>([](AgeTestBiz &biz) { biz.stop(); });
        QTest::newRow("recount") << std::function<void(AgeTestBiz &)>([](AgeTestBiz &biz) { biz.recount(); });
    }

    void withoutAListenerForTheTextNothingCanStart()
    {
        QFETCH(const std::function<void(AgeTestBiz &)>, operation);
        AgeTestBiz biz;
        QVERIFY_EXCEPTION_THROWN(operation(biz), std::bad_function_call);
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestBizTextTest)
#include "tst_agetestbiztext.moc"
