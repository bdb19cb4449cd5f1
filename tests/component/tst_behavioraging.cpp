#include "agecalls.h"
#include "agetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

namespace {

const QString UsbFailed = QStringLiteral(" [FCAgeUSBNoPass]");

void runToUsbStep(AgeTestFixture &fixture)
{
    fixture.runToNetStep();
    fixture.netChanged({{0, true}});
}

}

/// Statements of docs/behavior.md about the aging test that no other test covers.
class BehaviorAgingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theUsbStepWaitsForEver()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.take();
        VirtualTime::advance(10000000);
        QCOMPARE(fixture.take(), QStringList());
    }

    void beforeTheFirstUsbStepNobodyListensToUsbLinks()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        QVERIFY(!fixture.host.usb.changed.get());
        fixture.netChanged({});
        QVERIFY(fixture.host.usb.changed.get());
    }

    void thePageDoesNotShowWhichPortFailed_data()
    {
        QTest::addColumn<int>("port");
        for (const int port : {0, 1, 7})
            QTest::addRow("port %d", port) << port;
    }

    void thePageDoesNotShowWhichPortFailed()
    {
        QFETCH(const int, port);
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.take();
        fixture.netChanged({{port, false}});
        QCOMPARE(fixture.take(), usbStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        fixture.usbChanged({{port, 26, 0}});
        QCOMPARE(fixture.take(), brightnessStarts(QString(), QStringLiteral(" [FCAgeNetNoPass]、[FCAgeUSBNoPass]")));
    }

    void anEmptyUsbEventPassesWhileNoPortIsKnown()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.take();
        fixture.usbChanged({});
        QCOMPARE(fixture.take(), brightnessStarts(QString()));
    }

    void anEmptyUsbEventFailsOnceAPortIsKnown()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.usbChanged({{1}});
        fixture.take();
        fixture.usbChanged({});
        QCOMPARE(fixture.take(), badPixelStarts(UsbFailed));
    }

    void aUsbEventFailsWithoutAPortThatIsKnown()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.usbChanged({{1}, {2}});
        fixture.take();
        fixture.usbChanged({{1}});
        QCOMPARE(fixture.take(), badPixelStarts(UsbFailed));
    }

    void theUsbStepForgetsThePortsWhenItStarts()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.usbChanged({{1}});
        runToUsbStep(fixture);
        fixture.take();
        fixture.usbChanged({});
        QCOMPARE(fixture.take(), brightnessStarts(QString()));
    }

    void anEmptyNetEventPassesAlsoWhenPortsWereSeen()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        fixture.runToNetStep();
        fixture.netChanged({{0, true}, {1, true}});
        fixture.take();
        fixture.netChanged({});
        QCOMPARE(fixture.take(), brightnessStarts(QString()));
    }

    void everyUpdateWritesAWhiteAndARedLine()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.usbChanged({{1}});
        fixture.biz->stop();
        const QStringList written = fixture.take().filter(QRegularExpression(QStringLiteral("^(clear|white|red)")));
        QVERIFY(written.size() >= 3 * 27);
        QCOMPARE(written.size() % 3, 0);
        for (int i = 0; i < written.size(); i += 3) {
            QCOMPARE(written.at(i), QStringLiteral("clear"));
            QVERIFY(written.at(i + 1).startsWith(QStringLiteral("white [FCAging][")));
            QCOMPARE(written.at(i + 2), QStringLiteral("red  "));
        }
    }

    void aKeyLightStepThatWasCutShortShowsItsLevelAtTheNextStart()
    {
        AgeTestFixture fixture;
        fixture.biz->start();
        runToUsbStep(fixture);
        fixture.usbChanged({});
        fixture.runBrightness();
        fixture.runBadPixel();
        VirtualTime::advance(4000);
        fixture.netChanged({});
        fixture.netChanged({});
        fixture.usbChanged({});
        fixture.runBrightness();
        fixture.take();
        fixture.runBadPixel();
        const QStringList made = fixture.take();
        QCOMPARE(made.mid(made.size() - 5), buttonLightStarts(QStringLiteral(" 50%")));
    }
};

VIRTUAL_TIME_TEST_MAIN(BehaviorAgingTest)
#include "tst_behavioraging.moc"
