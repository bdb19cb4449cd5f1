#include "machinebench.h"
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

using Ports = std::vector<std::pair<int, bool>>;
using Nodes = std::vector<RecordingUsb::Node>;

}

Q_DECLARE_METATYPE(Ports)
Q_DECLARE_METATYPE(Nodes)

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
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        bench.take();
        bench.netReport(ports);
        QCOMPARE(bench.take(), QStringList{netResult(icon)});
        QCOMPARE(bench.biz->currentPhaseIndex(), 5);
        QCOMPARE(bench.biz->result(), 0);
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
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.usbReport(nodes);
        QCOMPARE(bench.take(), QStringList{usbResult(icon)});
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        QCOMPARE(bench.biz->result(), 0);
    }

    void everyReportIsShown()
    {
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.usbReport({{1}});
        bench.usbReport({{1}});
        QCOMPARE(bench.take(),
                 (QStringList{usbResult(QStringLiteral("UsbPass")), usbResult(QStringLiteral("UsbPass"))}));
    }

    void anEmptyReportLeavesTheScreen()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        bench.take();
        bench.netReport({});
        QCOMPARE(bench.take(), QStringList());
        bench.startAndPassTo(6);
        bench.usbReport({});
        QCOMPARE(bench.take(), QStringList());
    }

    void aReportOutsideItsPhaseIsNotShown()
    {
        MachineBench bench;
        bench.startAndPassTo(11);
        for (const int phase : {0, 2, 3, 7, 9, 10, 11}) {
            bench.startAndPassTo(phase);
            bench.netReport({{0, true}, {1, true}});
            bench.usbReport({{1}});
            QCOMPARE(bench.take(), QStringList());
        }
        bench.startAndPassTo(5);
        bench.usbReport({{1}});
        QCOMPARE(bench.take(), QStringList());
    }

    void theVerdictIsTheOperatorsWhateverTheIcon()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.right();
        bench.netReport({{0, false}});
        bench.right();
        QCOMPARE(bench.biz->currentPhaseIndex(), 6);
        bench.usbReport({{1}});
        bench.left();
        QCOMPARE(bench.biz->result(), 2);
    }

    void aNetReportDuringTheStartIsReplacedAtOnce()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.host.networkPort.answerAtOnce = RecordingNetworkPort::payload({{0, true}, {1, true}});
        bench.right();
        const QStringList told = bench.told();
        QCOMPARE(told.size(), 3);
        QCOMPARE(told.at(0), netResult(QStringLiteral("NetPass")));
        QVERIFY(told.at(2).startsWith(QStringLiteral("phase title=[FCNet]; icon=NetTest; stepTitle=[TestStep];")));
        QVERIFY(!told.at(2).contains(QStringLiteral("status")));
    }

    void aUsbReportDuringTheStartIsReplacedAtOnce()
    {
        MachineBench bench;
        bench.startAndPassTo(5);
        bench.host.usb.answerAtOnce = RecordingUsb::payload({{1}});
        bench.right();
        bench.take();
        bench.right();
        const QStringList told = bench.told();
        QCOMPARE(told.size(), 4);
        QCOMPARE(told.at(1), usbResult(QStringLiteral("UsbPass")));
        QVERIFY(told.at(3).contains(QStringLiteral("status=UsbNoPass; mode=9")));
    }

    void theChangedSubscriptionCountsToo()
    {
        MachineBench bench;
        bench.startAndPassTo(6);
        bench.host.usb.changed.fire(RecordingUsb::payload({{1}}));
        QCOMPARE(bench.take(), QStringList{usbResult(QStringLiteral("UsbPass"))});
    }
};

VIRTUAL_TIME_TEST_MAIN(CompleteMachineLinksTest)
#include "tst_completemachinelinks.moc"
