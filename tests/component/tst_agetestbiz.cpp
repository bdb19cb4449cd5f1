#include "agebench.h"
#include "agecalls.h"
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
        AgeBench bench;
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), QStringList());
    }

    void servicesAreLookedUpInTheOrderOfTheSingleTests()
    {
        const AgeBench bench;
        QCOMPARE(
            bench.host.lookups,
            calls({"lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdKeyboardEvent",
                   "lcdMemoryCacheScreenDetail", "lcdFactoryModeBiz", "lcdKeyboardEvent", "lcdMemoryCacheNetworkPort",
                   "lcdFactoryModeBiz", "lcdMemoryCacheNodeUSB", "lcdFactoryModeBiz"}));
    }

    void startBeginsWithTheText()
    {
        AgeBench bench;
        bench.biz->start();
        QCOMPARE(bench.take(), brightnessStarts(QStringLiteral(" 10%")));
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
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(intoTheRound);
        if (netChanges)
            bench.netChanged({{0, false}});
        bench.take();

        bench.biz->start();

        QCOMPARE(bench.take(), brightnessStarts(suffix));
        VirtualTime::advance(3000);
        QCOMPARE(bench.take(), screensAt(30) + lines(QStringLiteral("[FCScreenLight] 30%")));
    }

    void stepsFollowEachOther()
    {
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(19999);
        bench.take();

        VirtualTime::advance(1);
        QCOMPARE(bench.take(), badPixelStarts() + lines(QStringLiteral("[FCScreenBadPixel]")));
        VirtualTime::advance(35999);
        bench.take();
        VirtualTime::advance(1);
        QCOMPARE(bench.take(), calls({"keyboard.setLcdTestPattern(0, 0)"}) + buttonLightStarts(QStringLiteral(" 10%")));
        VirtualTime::advance(19999);
        bench.take();
        VirtualTime::advance(1);
        QCOMPARE(bench.take(),
                 (calls({"keyboard.setAllButtonBrightness(0)", "finished"}) + netStarts()
                  + lines(QStringLiteral("[FCNet]"))));
        bench.netChanged({{0, true}});
        QCOMPARE(bench.take(), usbStarts());
        bench.usbChanged({{1}});
        QCOMPARE(bench.take(), brightnessStarts(QString()));
    }

    void theEndOfTheButtonLightStepNeedsNoListener()
    {
        AgeBench bench;
        bench.biz->registerOnButtonLightFinishedCallback({});
        bench.biz->start();
        bench.runBrightness();
        bench.runBadPixel();
        bench.take();
        bench.runButtonLight();
        const QStringList made = bench.take();
        QVERIFY(!made.contains(QStringLiteral("finished")));
        QCOMPARE(made.mid(made.size() - 3), lines(QStringLiteral("[FCNet]")));
    }

    void aLaterListenerTakesThePlaceOfAnEarlierOne()
    {
        AgeBench bench;
        bench.biz->registerOnButtonLightFinishedCallback([&] { bench.host.calls.add(QStringLiteral("second")); });
        bench.biz->start();
        bench.runToNetStep();
        const QStringList made = bench.take();
        QVERIFY(!made.contains(QStringLiteral("finished")));
        QCOMPARE(made.count(QStringLiteral("second")), 1);
    }

    void stopWhenIdleRunsAllItsSteps()
    {
        AgeBench bench;
        bench.biz->stop();
        QCOMPARE(bench.take(), lines(QStringLiteral("[FCScreenLight] 10%")) + BrightnessReset);
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
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(after);
        bench.take();
        bench.biz->stop();
        QCOMPARE(bench.take(), expected);
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), QStringList());
    }

    void stopAtTheUsbStepTouchesNoPortTest()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.take();
        bench.biz->stop();
        QCOMPARE(bench.take(), lines(QStringLiteral("[FCUSB]"), QStringLiteral(" [FCAgeNetNoPass]")) + BrightnessReset);
    }

    void aNewRunAfterAStopBeginsAtTenPercentWithoutFailures()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.biz->stop();
        bench.take();
        bench.biz->start();
        QCOMPARE(bench.take(), brightnessStarts(QStringLiteral(" 10%")));
    }

    void theBadPixelWalkNeedsNoScreenDetail()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runBrightness();
        bench.runBadPixel();
        const QStringList expected = bench.take();
        bench.biz.reset();
        bench.host.remove("lcdMemoryCacheScreenDetail");
        bench.make();
        bench.biz->start();
        bench.runBrightness();
        bench.runBadPixel();
        QCOMPARE(bench.take(), expected);
        QCOMPARE(expected.filter(QStringLiteral("setLcdTestPattern")).size(), 13);
    }

    void destructionStopsNothing()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runBrightness();
        bench.take();
        bench.biz.reset();
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), QStringList());
    }

    void withoutAnyServiceTheVisualStepsStillRun()
    {
        AgeBench bench;
        bench.biz.reset();
        for (const char *name : {"lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdMemoryCacheNetworkPort",
                                 "lcdMemoryCacheNodeUSB", "lcdMemoryCacheScreenDetail"})
            bench.host.remove(name);
        AgeTestBiz alone;
        QStringList texts;
        alone.registerSetAgeTextInfoCallBack([&](const QString &text, const QColor &) { texts << text; });
        alone.start();
        QTest::ignoreMessage(QtWarningMsg, "NetPortTestBiz: INetworkPort is null, cannot start test");
        bench.runToNetStep();
        QCOMPARE(texts.last(), QStringLiteral(" "));
        QCOMPARE(texts.at(texts.size() - 2), QStringLiteral("[FCAging][FCNet]"));
        alone.stop();
        QCOMPARE(texts.at(texts.size() - 2), QStringLiteral("[FCAging][FCNet]"));
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestBizTest)
#include "tst_agetestbiz.moc"
