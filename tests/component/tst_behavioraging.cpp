#include "agebench.h"
#include "agecalls.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

namespace {

const QString UsbFailed = QStringLiteral(" [FCAgeUSBNoPass]");

void runToUsbStep(AgeBench &bench)
{
    bench.runToNetStep();
    bench.netChanged({{0, true}});
}

}

/// Statements of docs/behavior.md about the aging test that no other test covers.
class BehaviorAgingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theUsbStepWaitsForEver()
    {
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.take();
        VirtualTime::advance(10000000);
        QCOMPARE(bench.take(), QStringList());
    }

    void beforeTheFirstUsbStepNobodyListensToUsbLinks()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        QVERIFY(!bench.host.usb.changed.get());
        bench.netChanged({});
        QVERIFY(bench.host.usb.changed.get());
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
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.take();
        bench.netChanged({{port, false}});
        QCOMPARE(bench.take(), usbStarts(QStringLiteral(" [FCAgeNetNoPass]")));
        bench.usbChanged({{port, 26, 0}});
        QCOMPARE(bench.take(), brightnessStarts(QString(), QStringLiteral(" [FCAgeNetNoPass]、[FCAgeUSBNoPass]")));
    }

    void anEmptyUsbEventPassesWhileNoPortIsKnown()
    {
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.take();
        bench.usbChanged({});
        QCOMPARE(bench.take(), brightnessStarts(QString()));
    }

    void anEmptyUsbEventFailsOnceAPortIsKnown()
    {
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.usbChanged({{1}});
        bench.take();
        bench.usbChanged({});
        QCOMPARE(bench.take(), badPixelStarts(UsbFailed));
    }

    void aUsbEventFailsWithoutAPortThatIsKnown()
    {
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.usbChanged({{1}, {2}});
        bench.take();
        bench.usbChanged({{1}});
        QCOMPARE(bench.take(), badPixelStarts(UsbFailed));
    }

    void theUsbStepForgetsThePortsWhenItStarts()
    {
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.usbChanged({{1}});
        runToUsbStep(bench);
        bench.take();
        bench.usbChanged({});
        QCOMPARE(bench.take(), brightnessStarts(QString()));
    }

    void anEmptyNetEventPassesAlsoWhenPortsWereSeen()
    {
        AgeBench bench;
        bench.biz->start();
        bench.runToNetStep();
        bench.netChanged({{0, true}, {1, true}});
        bench.take();
        bench.netChanged({});
        QCOMPARE(bench.take(), brightnessStarts(QString()));
    }

    void everyUpdateWritesAWhiteAndARedLine()
    {
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.usbChanged({{1}});
        bench.biz->stop();
        const QStringList written = bench.take().filter(QRegularExpression(QStringLiteral("^(clear|white|red)")));
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
        AgeBench bench;
        bench.biz->start();
        runToUsbStep(bench);
        bench.usbChanged({});
        bench.runBrightness();
        bench.runBadPixel();
        VirtualTime::advance(4000);
        bench.netChanged({});
        bench.netChanged({});
        bench.usbChanged({});
        bench.runBrightness();
        bench.take();
        bench.runBadPixel();
        const QStringList made = bench.take();
        QCOMPARE(made.mid(made.size() - 5), buttonLightStarts(QStringLiteral(" 50%")));
    }
};

VIRTUAL_TIME_TEST_MAIN(BehaviorAgingTest)
#include "tst_behavioraging.moc"
