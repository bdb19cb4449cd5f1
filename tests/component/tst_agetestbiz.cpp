#include "agecalls.h"
#include "agetestfixture.h"
#include "calls.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

using LCD::FactoryModeImpl::AgeTestBiz;

namespace {

const QStringList BrightnessReset{QStringLiteral("keyboard.setScreenBrightness(0, 100)"),
                                  QStringLiteral("keyboard.setScreenBrightness(1, 100)"),
                                  QStringLiteral("keyboard.setScreenBrightness(2, 100)")};

}

/// The sequence of the aging test: which event starts which step.
class AgeTestBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingStartsOnItsOwn()
    {
        AgeTestFixture fixture;
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void servicesAreLookedUpInTheOrderOfTheSingleTests()
    {
        const AgeTestFixture fixture;
        QCOMPARE(
            fixture.host.lookups,
            calls({"lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdKeyboardEvent",
                   "lcdMemoryCacheScreenDetail", "lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdMemoryCacheNetworkPort",
                   "lcdFactoryModeBiz", "lcdMemoryCacheNodeUSB", "lcdFactoryModeBiz"}));
    }

    void startBeginsWithTheText()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        QCOMPARE(fixture.take(), brightnessStarts(QStringLiteral(" 10%")));
    }

    void startOfARunningTestBeginsAgain_data()
    {
        QTest::addColumn<int>("intoTheRound");
        QTest::addColumn<bool>("netChanges");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("brightness") << 3000 << false << QStringLiteral(" 30%");
        QTest::newRow("bad pixel") << 24000 << false << QString();
        QTest::newRow("button light") << 61000 << false << QString();
        QTest::newRow("net") << 80000 << false << QString();
        QTest::newRow("USB") << 80000 << true << QString();
    }

    void startOfARunningTestBeginsAgain()
    {
        QFETCH(const int, intoTheRound);
        QFETCH(const bool, netChanges);
        QFETCH(const QString, suffix);
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(intoTheRound);
        if (netChanges)
            fixture.netChanged({{0, false}});
        fixture.take();

        fixture.biz->start();

        QCOMPARE(fixture.take(), brightnessStarts(suffix));
        VirtualTime::advance(3000);
        QCOMPARE(fixture.take(), screensAt(30) + lines(QStringLiteral("[FCScreenLight] 30%")));
    }

    void stepsFollowEachOther()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(19999);
        fixture.take();

        VirtualTime::advance(1);
        QCOMPARE(fixture.take(), badPixelStarts() + lines(QStringLiteral("[FCScreenBadPixel]")));
        VirtualTime::advance(35999);
        fixture.take();
        VirtualTime::advance(1);
        QCOMPARE(fixture.take(),
                 calls({"keyboard.setLcdTestPattern(0, 0)"}) + buttonLightStarts(QStringLiteral(" 10%")));
        VirtualTime::advance(19999);
        fixture.take();
        VirtualTime::advance(1);
        QCOMPARE(fixture.take(),
                 (calls({"keyboard.setAllButtonBrightness(0)", "finished"}) + netStarts()
                  + lines(QStringLiteral("[FCNet]"))));
        fixture.netChanged({{0, true}});
        QCOMPARE(fixture.take(), usbStarts());
        fixture.usbChanged({{1}});
        QCOMPARE(fixture.take(), brightnessStarts(QString()));
    }

    void theEndOfTheButtonLightStepNeedsNoListener()
    {
        AgeTestFixture fixture;
        fixture.biz->registerOnButtonLightFinishedCallback({});
        fixture.biz->start();
        fixture.runBrightness();
        fixture.runBadPixel();
        fixture.take();
        fixture.runButtonLight();
        const QStringList made = fixture.take();
        QVERIFY(!made.contains(QStringLiteral("finished")));
        QCOMPARE(made.mid(made.size() - 3), lines(QStringLiteral("[FCNet]")));
    }

    void aLaterListenerTakesThePlaceOfAnEarlierOne()
    {
        AgeTestFixture fixture;
        fixture.biz->registerOnButtonLightFinishedCallback([&] { fixture.host.calls.add(QStringLiteral("second")); });
        fixture.biz->start();
        fixture.runToNetStep();
        const QStringList made = fixture.take();
        QVERIFY(!made.contains(QStringLiteral("finished")));
        QCOMPARE(made.count(QStringLiteral("second")), 1);
    }

    void stopWhenIdleRunsAllItsSteps()
    {
        AgeTestFixture fixture;
        fixture.biz->stop();
        QCOMPARE(fixture.take(), lines(QStringLiteral("[FCScreenLight] 10%")) + BrightnessReset);
    }

    void stopAtEachStep_data()
    {
        QTest::addColumn<int>("after");
        QTest::addColumn<QStringList>("expected");
        const QStringList clear = calls({"keyboard.setLcdTestPattern(0, 0)"});
        QTest::newRow("brightness") << 6000 << lines(QStringLiteral("[FCScreenLight] 70%")) + BrightnessReset;
        QTest::newRow("bad pixel") << 30000 << lines(QStringLiteral("[FCScreenBadPixel]")) + clear + BrightnessReset;
        QTest::newRow("button light") << 58000 << lines(QStringLiteral("[FCBtnLight] 30%")) + BrightnessReset;
        QTest::newRow("net") << 80000 << lines(QStringLiteral("[FCNet]")) + BrightnessReset;
    }

    void stopAtEachStep()
    {
        QFETCH(const int, after);
        QFETCH(const QStringList, expected);
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(after);
        fixture.take();
        fixture.biz->stop();
        QCOMPARE(fixture.take(), expected);
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void stopAtTheUsbStepTouchesNoPortTest()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.take();
        fixture.biz->stop();
        QCOMPARE(fixture.take(),
                 lines(QStringLiteral("[FCUSB]"), QStringLiteral(" [FCAgeNetNoPass]")) + BrightnessReset);
    }

    void aNewRunAfterAStopBeginsAtTenPercentWithoutFailures()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.biz->stop();
        fixture.take();
        fixture.biz->start();
        QCOMPARE(fixture.take(), brightnessStarts(QStringLiteral(" 10%")));
    }

    void theBadPixelWalkNeedsNoScreenDetail()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runBrightness();
        fixture.runBadPixel();
        const QStringList expected = fixture.take();
        fixture.biz.reset();
        fixture.host.remove("lcdMemoryCacheScreenDetail");
        fixture.make();
        fixture.biz->start();
        fixture.runBrightness();
        fixture.runBadPixel();
        QCOMPARE(fixture.take(), expected);
        QCOMPARE(expected.filter(QStringLiteral("setLcdTestPattern")).size(), 13);
    }

    void destructionStopsNothing()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runBrightness();
        fixture.take();
        fixture.biz.reset();
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void withoutAnyServiceTheVisualStepsStillRun()
    {
        AgeTestFixture fixture;
        fixture.biz.reset();
        for (const char *name : {"lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdMemoryCacheNetworkPort",
                                 "lcdMemoryCacheNodeUSB", "lcdMemoryCacheScreenDetail"})
            fixture.host.remove(name);
        AgeTestBiz alone;
        QStringList texts;
        alone.registerSetAgeTextInfoCallBack([&](const QString &text, const QColor &) { texts << text; });
        alone.start();
        QTest::ignoreMessage(QtWarningMsg, "NetPortTestBiz: INetworkPort is null, cannot start test");
        fixture.runToNetStep();
        QCOMPARE(texts.last(), QStringLiteral(" "));
        QCOMPARE(texts.at(texts.size() - 2), QStringLiteral("[FCAging][FCNet]"));
        alone.stop();
        QCOMPARE(texts.at(texts.size() - 2), QStringLiteral("[FCAging][FCNet]"));
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestBizTest)
#include "tst_agetestbiz.moc"
