#include "agebench.h"
#include "agecalls.h"
#include "calls.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

/// Link changes: which step they end, which failures they record, and how they restart a stopped test.
class AgeTestLinksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

VIRTUAL_TIME_TEST_MAIN(AgeTestLinksTest)
#include "tst_agetestlinks.moc"
