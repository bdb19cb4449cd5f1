#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

namespace {

QString netResult(const QString &icon)
{
    return QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[FCTestComplete]; leftText=[FCNoPass]; "
                          "rightText=[FCPass]; left; status=%1; statusShown; mode=9")
        .arg(icon);
}

QString usbResult(const QString &icon)
{
    return QStringLiteral("phase title=[USBA]; icon=UsbTest; stepTitle=[TestStep]; steps=[FCUSB30TestStep]; "
                          "leftText=[FCNoPass]; rightText=[FCPass]; left; status=%1; statusShown; mode=9")
        .arg(icon);
}

}

/// The screens that follow a report of the net ports or the USB ports.
class CompleteMachineLinksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNetResult_data()
    {
        QTest::addColumn<Ports>("ports");
        QTest::addColumn<QString>("icon");
        const QString pass = QStringLiteral("NetPass");
        const QString noPass = QStringLiteral("NetNoPass");
        QTest::newRow("both") << Ports{{0, true}, {1, true}} << pass;
        QTest::newRow("the first alone") << Ports{{0, true}, {1, false}} << noPass;
        QTest::newRow("the second alone") << Ports{{0, false}, {1, true}} << noPass;
        QTest::newRow("one entry") << Ports{{0, true}} << noPass;
        QTest::newRow("a third is not looked at") << Ports{{0, true}, {1, true}, {2, false}} << pass;
        QTest::newRow("a gap at the second") << Ports{{0, true}, {2, true}} << noPass;
    }

    void theNetResult()
    {
        QFETCH(const Ports, ports);
        QFETCH(const QString, icon);
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.take();
        fixture.netReport(ports);
        QCOMPARE(fixture.take(), QStringList{netResult(icon)});
        QCOMPARE(fixture.biz->currentPhaseIndex(), 5);
        QCOMPARE(fixture.biz->result(), 0);
    }

    void theUsbResult_data()
    {
        QTest::addColumn<Nodes>("nodes");
        QTest::addColumn<QString>("icon");
        const QString pass = QStringLiteral("UsbPass");
        const QString noPass = QStringLiteral("UsbNoPass");
        QTest::newRow("one entry") << Nodes{{1}} << pass;
        QTest::newRow("one of eight is down") << Nodes{{1}, {2}, {3}, {4}, {5}, {6, 26, 0}, {7}, {8}} << noPass;
        QTest::newRow("one is blocked") << Nodes{{1}, {2, 26, 1, 1}} << noPass;
        QTest::newRow("all") << Nodes{{1}, {2}, {3}} << pass;
    }

    void theUsbResult()
    {
        QFETCH(const Nodes, nodes);
        QFETCH(const QString, icon);
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.usbReport(nodes);
        QCOMPARE(fixture.take(), QStringList{usbResult(icon)});
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        QCOMPARE(fixture.biz->result(), 0);
    }

    void everyReportIsShown()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.usbReport({{1}});
        fixture.usbReport({{1}});
        QCOMPARE(fixture.take(),
                 (QStringList{usbResult(QStringLiteral("UsbPass")), usbResult(QStringLiteral("UsbPass"))}));
    }

    void anEmptyReportLeavesTheScreen()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.take();
        fixture.netReport({});
        QCOMPARE(fixture.take(), QStringList());
        fixture.startAndPassTo(6);
        fixture.usbReport({});
        QCOMPARE(fixture.take(), QStringList());
    }

    void aReportOutsideItsPhaseIsNotShown()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(11);
        for (const int phase : {0, 2, 3, 7, 9, 10, 11}) {
            fixture.startAndPassTo(phase);
            fixture.netReport({{0, true}, {1, true}});
            fixture.usbReport({{1}});
            QCOMPARE(fixture.take(), QStringList());
        }
        fixture.startAndPassTo(5);
        fixture.usbReport({{1}});
        QCOMPARE(fixture.take(), QStringList());
    }

    void theVerdictIsTheOperatorsWhateverTheIcon()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.right();
        fixture.netReport({{0, false}});
        fixture.right();
        QCOMPARE(fixture.biz->currentPhaseIndex(), 6);
        fixture.usbReport({{1}});
        fixture.left();
        QCOMPARE(fixture.biz->result(), 2);
    }

    void aNetReportDuringTheStartIsReplacedAtOnce()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.host.networkPort.answerAtOnce = RecordingNetworkPort::payload({{0, true}, {1, true}});
        fixture.right();
        const QStringList told = fixture.told();
        QCOMPARE(told.size(), 3);
        QCOMPARE(told.at(0), netResult(QStringLiteral("NetPass")));
        QVERIFY(told.at(2).startsWith(QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep];")));
        QVERIFY(!told.at(2).contains(QStringLiteral("status")));
    }

    void aUsbReportDuringTheStartIsReplacedAtOnce()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(5);
        fixture.host.usb.answerAtOnce = RecordingUsb::payload({{1}});
        fixture.right();
        fixture.take();
        fixture.right();
        const QStringList told = fixture.told();
        QCOMPARE(told.size(), 4);
        QCOMPARE(told.at(1), usbResult(QStringLiteral("UsbPass")));
        QVERIFY(told.at(3).contains(QStringLiteral("status=UsbNoPass; mode=9")));
    }

    void theChangedSubscriptionCountsToo()
    {
        MachineTestFixture fixture;
        fixture.startAndPassTo(6);
        fixture.host.usb.changed.fire(RecordingUsb::payload({{1}}));
        QCOMPARE(fixture.take(), QStringList{usbResult(QStringLiteral("UsbPass"))});
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineLinksTest)
#include "tst_completemachinelinks.moc"
