#include "agebench.h"
#include "calls.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

using LCD::FactoryModeImpl::AgeTestBiz;

namespace {

const QStringList BrightnessReset{QStringLiteral("keyboard.setScreenBrightness(0, 100)"),
                                  QStringLiteral("keyboard.setScreenBrightness(1, 100)"),
                                  QStringLiteral("keyboard.setScreenBrightness(2, 100)")};

QStringList screensAt(int level)
{
    QStringList calls;
    for (int screen = 0; screen < 3; ++screen)
        calls << QStringLiteral("keyboard.setScreenBrightness(%1, %2)").arg(screen).arg(level);
    return calls;
}

QStringList subscriptions(const QString &service, const QString &subscriber)
{
    return {QStringLiteral("%1.registerReportCallback(%2, 2)").arg(service, subscriber),
            QStringLiteral("%1.registerChangedCallback(%2, 2)").arg(service, subscriber)};
}

QStringList brightnessStarts(const QString &suffix, const QString &failures = QStringLiteral(" "))
{
    return lines(QStringLiteral("[FCScreenLight]") + suffix, failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(0)") << screensAt(10);
}

QStringList badPixelStarts(const QString &failures = QStringLiteral(" "))
{
    return lines(QStringLiteral("[FCScreenBadPixel]"), failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(1)") << QStringLiteral("keyboard.setLcdTestPattern(1, 1)");
}

QStringList buttonLightStarts(const QString &suffix, const QString &failures = QStringLiteral(" "))
{
    return lines(QStringLiteral("[FCBtnLight]") + suffix, failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(2)") << QStringLiteral("keyboard.setAllButtonBrightness(10)");
}

QStringList netStarts(const QString &failures = QStringLiteral(" "))
{
    return lines(QStringLiteral("[FCNet]"), failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(10)")
        << subscriptions(QStringLiteral("networkPort"), QStringLiteral("NetPortTestBiz"));
}

QStringList usbStarts(const QString &failures = QStringLiteral(" "))
{
    return lines(QStringLiteral("[FCUSB]"), failures)
        << QStringLiteral("factoryBiz.setFactoryTestType(9)")
        << subscriptions(QStringLiteral("usb"), QStringLiteral("UsbPortTestBiz"));
}

}

/// The sequence of the aging test: which event leads to which step.
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

    void servicesAreLookedUpInTheOrderOfTheTestObjects()
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

    void aPortStepWaitsForEver()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        VirtualTime::advance(10000000);
        QCOMPARE(bench.take(), QStringList());
    }

    void theReportSubscriptionIsNotHeard()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        QVERIFY(bench.host.networkPort.report.fire(RecordingNetworkPort::payload({{0, true}})));
        QCOMPARE(bench.take(), QStringList());
        bench.netChanged({{0, true}});
        bench.take();
        QVERIFY(bench.host.usb.report.fire(RecordingUsb::payload({{1}})));
        QCOMPARE(bench.take(), QStringList());
    }

    void aPayloadThatCannotBeReadEndsNoStep()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^NetPortTestBiz: need type")));
        bench.host.networkPort.changed.fire(std::any(42));
        QCOMPARE(bench.take(), QStringList());
    }

    void anEmptyReportPasses()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.take();
        bench.netChanged({});
        QCOMPARE(bench.take(), brightnessStarts(QString()));
    }

    void oneDownPortFailsTheFamily()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        bench.netChanged({{0, true}, {1, false}, {2, true}});
        QCOMPARE(bench.take(), usbStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        bench.usbChanged({{1, 26, 1, 0}, {2, 26, 0, 0}});
        QCOMPARE(bench.take(), brightnessStarts(QString(), QStringLiteral(" [FCAgeNetNoPass]、[FCAgeUSBNoPass]")));
    }

    void aFailureIsForgottenAtTheNextPass()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.usbChanged({{1}});
        bench.runToNetStep();
        const QStringList secondRound = bench.take();
        QCOMPARE(secondRound.mid(secondRound.size() - 3),
                 lines(QStringLiteral("[FCNet]"), QStringLiteral(" [FCAgeNetNoPass]")));
        bench.netChanged({{0, true}});
        QCOMPARE(bench.take(), usbStarts());
    }

    void twoFailuresInARowAreOne()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, false}});
        bench.usbChanged({{1}});
        bench.runToNetStep();
        bench.take();
        bench.netChanged({{0, false}});
        QCOMPARE(bench.take(), usbStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        bench.usbChanged({{1}});
        bench.runToNetStep();
        bench.netChanged({{0, true}});
        bench.take();
        bench.usbChanged({{1}});
        QCOMPARE(bench.take(), brightnessStarts(QString()));
    }

    void aServiceThatAnswersAtOnceNestsTheSteps()
    {
        AgeBench bench;
        bench.host.networkPort.answerAtOnce = RecordingNetworkPort::payload({{0, false}});
        bench.host.usb.answerAtOnce = RecordingUsb::payload({{7}});
        bench.biz->start();
        VirtualTime::advance(75999);
        bench.take();
        VirtualTime::advance(1);
        const QString failed = QStringLiteral(" [FCAgeNetNoPass]");
        QCOMPARE(bench.take(),
                 (calls({"keyboard.setAllButtonBrightness(0)", "finished"}) + netStarts() + usbStarts(failed)
                  + brightnessStarts(QString(), failed) + lines(QStringLiteral("[FCScreenLight] 10%"), failed)));
        VirtualTime::advance(2000);
        QCOMPARE(bench.take(), screensAt(30) + lines(QStringLiteral("[FCScreenLight] 30%"), failed));
    }

    void beforeTheFirstNetStepNobodyListensToLinks()
    {
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(75999);
        QVERIFY(!bench.host.networkPort.changed.get());
        QVERIFY(!bench.host.usb.changed.get());
    }

    void aLinkChangeEndsWhateverStepItMeets_data()
    {
        QTest::addColumn<bool>("usb");
        QTest::addColumn<int>("intoTheRound");
        QTest::addColumn<QStringList>("next");
        const QString net = QStringLiteral(" [FCAgeNetNoPass]");
        const QString usb = QStringLiteral(" [FCAgeUSBNoPass]");
        QTest::newRow("net in the brightness step") << false << 3000 << badPixelStarts(net);
        QTest::newRow("net in the bad pixel step") << false << 21000 << buttonLightStarts(QString(), net);
        QTest::newRow("net in the button light step") << false << 57000 << netStarts(net);
        QTest::newRow("net in the net step") << false << 76000 << usbStarts(net);
        QTest::newRow("USB in the brightness step") << true << 3000 << badPixelStarts(usb);
        QTest::newRow("USB in the bad pixel step") << true << 21000 << buttonLightStarts(QString(), usb);
        QTest::newRow("USB in the button light step") << true << 57000 << netStarts(usb);
        QTest::newRow("USB in the net step") << true << 76000 << usbStarts(usb);
    }

    void aLinkChangeEndsWhateverStepItMeets()
    {
        QFETCH(const bool, usb);
        QFETCH(const int, intoTheRound);
        QFETCH(const QStringList, next);
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, true}});
        bench.usbChanged({{1}});
        VirtualTime::advance(intoTheRound);
        bench.take();
        if (usb)
            bench.usbChanged({{1, 26, 0}});
        else
            bench.netChanged({{0, false}});
        QCOMPARE(bench.take(), next);
    }

    void aNetChangeEndsTheUsbStep()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({});
        bench.take();
        bench.netChanged({{0, false}});
        QCOMPARE(bench.take(), brightnessStarts(QString(), QStringLiteral(" [FCAgeNetNoPass]")));
    }

    void aStepThatWasCutShortShowsItsLevelAtTheNextStart()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({});
        bench.usbChanged({});
        VirtualTime::advance(4000);
        bench.usbChanged({});
        bench.runBadPixel();
        bench.runButtonLight();
        bench.netChanged({});
        bench.take();
        bench.usbChanged({});
        QCOMPARE(bench.take(), brightnessStarts(QStringLiteral(" 50%")));
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

    void aLinkChangeRevivesAStoppedTest()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.biz->stop();
        bench.take();
        bench.netChanged({{0, false}});
        QCOMPARE(bench.take(), badPixelStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        VirtualTime::advance(3000);
        QCOMPARE(bench.take(), calls({"keyboard.setLcdTestPattern(1, 2)"}));
        VirtualTime::advance(33000);
        QVERIFY(bench.take().contains(QStringLiteral("white [FCAging][FCBtnLight] 10%")));
    }

    void aUsbChangeRevivesAStoppedTest()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({});
        bench.biz->stop();
        bench.take();
        bench.usbChanged({{1, 26, 0}});
        QCOMPARE(bench.take(), badPixelStarts(QStringLiteral(" [FCAgeUSBNoPass]")));
    }

    void anotherStartAndStopDoesNotKeepATestFromBeingRevived()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.biz->stop();
        bench.biz->start();
        bench.biz->stop();
        bench.take();
        bench.netChanged({});
        QCOMPARE(bench.take(), badPixelStarts());
    }

    void stoppedBeforeTheFirstNetStepItStaysStopped()
    {
        AgeBench bench;
        bench.biz->start();
        VirtualTime::advance(75999);
        bench.biz->stop();
        bench.take();
        QVERIFY(!bench.host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, false}})));
        VirtualTime::advance(100000);
        QCOMPARE(bench.take(), QStringList());
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

    void aLinkChangeAfterDestructionIsDropped()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        bench.biz.reset();
        bench.netChanged({{0, false}});
        VirtualTime::settle();
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
