#include "agecalls.h"
#include "agetestfixture.h"
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
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        VirtualTime::advance(10000000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void theReportSubscriptionIsNotHeard()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        QVERIFY(fixture.host.networkPort.report.fire(RecordingNetworkPort::payload({{0, true}})));
        QCOMPARE(fixture.take(), QStringList());
        fixture.netChanged({{0, true}});
        fixture.take();
        QVERIFY(fixture.host.usb.report.fire(RecordingUsb::payload({{1}})));
        QCOMPARE(fixture.take(), QStringList());
    }

    void aPayloadThatCannotBeReadEndsNoStep()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^NetPortTestBiz: need type")));
        fixture.host.networkPort.changed.fire(std::any(42));
        QCOMPARE(fixture.take(), QStringList());
    }

    void anEmptyReportPasses()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.take();
        fixture.netChanged({});
        QCOMPARE(fixture.take(), brightnessStarts(QString()));
    }

    void oneDownPortFailsTheFamily()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        fixture.netChanged({{0, true}, {1, false}, {2, true}});
        QCOMPARE(fixture.take(), usbStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        fixture.usbChanged({{1, 26, 1, 0}, {2, 26, 0, 0}});
        QCOMPARE(fixture.take(), brightnessStarts(QString(), QStringLiteral(" [FCAgeNetNoPass]、[FCAgeUSBNoPass]")));
    }

    void aFailureIsForgottenAtTheNextPass()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.usbChanged({{1}});
        fixture.runToNetStep();
        const QStringList secondRound = fixture.take();
        QCOMPARE(secondRound.mid(secondRound.size() - 3),
                 lines(QStringLiteral("[FCNet]"), QStringLiteral(" [FCAgeNetNoPass]")));
        fixture.netChanged({{0, true}});
        QCOMPARE(fixture.take(), usbStarts());
    }

    void twoFailuresInARowAreOne()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, false}});
        fixture.usbChanged({{1}});
        fixture.runToNetStep();
        fixture.take();
        fixture.netChanged({{0, false}});
        QCOMPARE(fixture.take(), usbStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        fixture.usbChanged({{1}});
        fixture.runToNetStep();
        fixture.netChanged({{0, true}});
        fixture.take();
        fixture.usbChanged({{1}});
        QCOMPARE(fixture.take(), brightnessStarts(QString()));
    }

    void aServiceThatAnswersAtOnceNestsTheSteps()
    {
        AgeTestFixture fixture;
        fixture.host.networkPort.answerAtOnce = RecordingNetworkPort::payload({{0, false}});
        fixture.host.usb.answerAtOnce = RecordingUsb::payload({{7}});
        fixture.biz->start();
        VirtualTime::advance(75999);
        fixture.take();
        VirtualTime::advance(1);
        const QString failed = QStringLiteral(" [FCAgeNetNoPass]");
        QCOMPARE(fixture.take(),
                 (calls({"keyboard.setAllButtonBrightness(0)", "finished"}) + netStarts() + usbStarts(failed)
                  + brightnessStarts(QString(), failed) + lines(QStringLiteral("[FCScreenLight] 10%"), failed)));
        VirtualTime::advance(2000);
        QCOMPARE(fixture.take(), screensAt(30) + lines(QStringLiteral("[FCScreenLight] 30%"), failed));
    }

    void beforeTheFirstNetStepNobodyListensToLinks()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(75999);
        QVERIFY(!fixture.host.networkPort.changed.get());
        QVERIFY(!fixture.host.usb.changed.get());
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
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, true}});
        fixture.usbChanged({{1}});
        VirtualTime::advance(intoTheRound);
        fixture.take();
        if (usb)
            fixture.usbChanged({{1, 26, 0}});
        else
            fixture.netChanged({{0, false}});
        QCOMPARE(fixture.take(), next);
    }

    void aNetChangeEndsTheUsbStep()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({});
        fixture.take();
        fixture.netChanged({{0, false}});
        QCOMPARE(fixture.take(), brightnessStarts(QString(), QStringLiteral(" [FCAgeNetNoPass]")));
    }

    void aStepThatWasCutShortShowsItsLevelAtTheNextStart()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({});
        fixture.usbChanged({});
        VirtualTime::advance(4000);
        fixture.usbChanged({});
        fixture.runBadPixel();
        fixture.runButtonLight();
        fixture.netChanged({});
        fixture.take();
        fixture.usbChanged({});
        QCOMPARE(fixture.take(), brightnessStarts(QStringLiteral(" 50%")));
    }

    void aLinkChangeRevivesAStoppedTest()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.biz->stop();
        fixture.take();
        fixture.netChanged({{0, false}});
        QCOMPARE(fixture.take(), badPixelStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        VirtualTime::advance(3000);
        QCOMPARE(fixture.take(), calls({"keyboard.setLcdTestPattern(1, 2)"}));
        VirtualTime::advance(33000);
        QVERIFY(fixture.take().contains(QStringLiteral("white [FCAging][FCBtnLight] 10%")));
    }

    void aUsbChangeRevivesAStoppedTest()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({});
        fixture.biz->stop();
        fixture.take();
        fixture.usbChanged({{1, 26, 0}});
        QCOMPARE(fixture.take(), badPixelStarts(QStringLiteral(" [FCAgeUSBNoPass]")));
    }

    void anotherStartAndStopDoesNotKeepATestFromBeingRevived()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.biz->stop();
        fixture.biz->start();
        fixture.biz->stop();
        fixture.take();
        fixture.netChanged({});
        QCOMPARE(fixture.take(), badPixelStarts());
    }

    void stoppedBeforeTheFirstNetStepItStaysStopped()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        VirtualTime::advance(75999);
        fixture.biz->stop();
        fixture.take();
        QVERIFY(!fixture.host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, false}})));
        VirtualTime::advance(100000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void aLinkChangeAfterDestructionIsDropped()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        fixture.biz.reset();
        fixture.netChanged({{0, false}});
        VirtualTime::settle();
        QCOMPARE(fixture.take(), QStringList());
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestLinksTest)
#include "tst_agetestlinks.moc"
