#include "usbporttestbiz.h"

#include "linksession.h"

#include <limits>
#include <new>
#include <thread>
#include <typeinfo>
#include <utility>

using namespace LCD::FactoryModeImpl;

namespace {

using Records = std::vector<LCD::ProtocolImpl::s_NodeUSB>;
using Nodes = std::vector<RecordingUsb::Node>;

struct UsbSession : LinkSession<UsbPortTestBiz>
{
    explicit UsbSession(std::initializer_list<const char *> absent = {}) : LinkSession(absent)
    {
        biz().registerLinkStatusCallback("driver", [this](const std::vector<bool> &links) { add(linksLine(links)); });
    }
    QStringList report(const Nodes &nodes) { return callsOf(host.usb.report, RecordingUsb::payload(nodes)); }
    QStringList change(const std::any &payload) { return callsOf(host.usb.changed, payload); }
};

QStringList heard(const char *links)
{
    return {QStringLiteral("links %1").arg(QLatin1String(links))};
}

constexpr int Port = 26;

const QStringList Subscriptions = subscriptionsOf(QStringLiteral("usb"), QStringLiteral("UsbPortTestBiz"));

}

class UsbPortTestBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enterTellsTheTypeAndAnnounces()
    {
        UsbSession session;
        QCOMPARE(session.host.lookups,
                 (QStringList{QStringLiteral("lcdMemoryCacheNodeUSB"), QStringLiteral("lcdFactoryModeBiz")}));
        session->enter();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("factoryBiz.setFactoryTestType(9)"), QStringLiteral("state 0")}));
    }

    void itAnnouncesWithoutTheFactoryModeService()
    {
        UsbSession session{"lcdFactoryModeBiz"};
        session->enter();
        session->startTest();
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state 0"), QStringLiteral("state 1")} + Subscriptions));
    }

    void startAnnouncesAndThenSubscribes()
    {
        UsbSession session;
        session->startTest();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 1")} + Subscriptions);
    }

    void record_data()
    {
        QTest::addColumn<int>("nodeType");
        QTest::addColumn<int>("active");
        QTest::addColumn<int>("blocked");
        QTest::addColumn<QString>("links");
        QTest::newRow("linked") << Port << 1 << 0 << QStringLiteral("true");
        QTest::newRow("linked, another number") << Port << -7 << 0 << QStringLiteral("true");
        QTest::newRow("not active") << Port << 0 << 0 << QStringLiteral("false");
        QTest::newRow("blocked") << Port << 1 << 1 << QStringLiteral("false");
        QTest::newRow("blocked, another number") << Port << 1 << -1 << QStringLiteral("false");
        QTest::newRow("type 25") << 25 << 1 << 0 << QString();
        QTest::newRow("type 27") << 27 << 1 << 0 << QString();
        QTest::newRow("type 0") << 0 << 1 << 0 << QString();
    }

    void record()
    {
        QFETCH(int, nodeType);
        QFETCH(int, active);
        QFETCH(int, blocked);
        QFETCH(QString, links);
        UsbSession session;
        session.begin();
        // A report doesn't announce a state in this test.
        QCOMPARE(session.report({{5, nodeType, active, blocked}}), QStringList{QStringLiteral("links ") + links});
        QCOMPARE(session->portCount(), links.isEmpty() ? 0 : 1);
        QCOMPARE(session->isAllLinked(), links == QLatin1String("true"));
    }

    void otherNodesChangeNothing()
    {
        UsbSession session;
        session.begin();
        session.report({{5}});
        QCOMPARE(session.report({{5, 25}, {1, 27}}), heard("false"));
        QCOMPARE(session->portCount(), 1);
        QVERIFY(session->isAllLinked());
    }

    void linkedOnceIsLinkedWhileTheListenerHearsTheReport()
    {
        UsbSession session;
        session.begin();
        QCOMPARE(session.report({{5}}), heard("true"));
        QCOMPARE(session.report({{7}}), heard("false, true"));
        QCOMPARE(session->portCount(), 2);
        QVERIFY(session->isAllLinked());
        QCOMPARE(session.report({{5, Port, 0}, {7, Port, 0}}), heard("false, false"));
        QVERIFY(session->isAllLinked());
    }

    // The first entry is true because of port 7. Port 5 takes over this entry, and port 7 starts again.
    void bitsStayAtTheirPlaceWhenAPortComesBefore()
    {
        UsbSession session;
        session.begin();
        session.report({{7}});
        QCOMPARE(session.report({{5, Port, 0}}), heard("false, false"));
        QCOMPARE(session->portCount(), 2);
        QVERIFY(!session->isAllLinked());
        // If entries followed their ports, this report would change nothing, and port 5 would still be missing.
        QCOMPARE(session.report({{7}}), heard("false, true"));
        QVERIFY(session->isAllLinked());
    }

    void linkOfAPortThatCameBeforeDoesNotFillTheNewPlace()
    {
        UsbSession session;
        session.begin();
        session.report({{7}});
        // If entries followed their ports, all ports would be linked now.
        QCOMPARE(session.report({{5}}), heard("true, false"));
        QVERIFY(!session->isAllLinked());
    }

    void portsAreOrderedByIdentifier()
    {
        UsbSession session;
        session.begin();
        QCOMPARE(session.report({{9, Port, 1},
                                 {std::numeric_limits<int>::max(), Port, 0},
                                 {-3, Port, 1},
                                 {std::numeric_limits<int>::min(), Port, 0},
                                 {0, Port, 0}}),
                 heard("false, true, false, true, false"));
        QCOMPARE(session->portCount(), 5);
    }

    void oneLinkedRecordOfAPortIsEnough()
    {
        UsbSession session;
        session.begin();
        QCOMPARE(session.report({{5, Port, 1}, {5, Port, 0}, {5, Port, 1, 1}}), heard("true"));
        QCOMPARE(session->portCount(), 1);
    }

    void reportWithoutPortsGivesNothingToBeLinked()
    {
        UsbSession session;
        session.begin();
        QVERIFY(!session->isAllLinked());
        QCOMPARE(session.report({}), heard(""));
        QCOMPARE(session.report({{1, 25}}), heard(""));
        QVERIFY(!session->isAllLinked());
    }

    // A report that fails takes back what it has changed, unless another report has arrived since.
    void aReportThatFailsKeepsTheNextOne()
    {
        UsbSession session;
        session.begin();
        bool failed = false;
        session->registerLinkStatusCallback("zz fails once", [&](const std::vector<bool> &) {
            if (std::exchange(failed, true))
                return;
            std::thread([&] { session.host.usb.report.fire(RecordingUsb::payload({{1}, {9}})); }).join();
            throw std::bad_alloc();
        });
        session->setCurRequester("zz fails once");
        const LogCapture log;
        session.report({{5, Port, 0}});
        QVERIFY(failed);
        QCOMPARE(log.warnings(), QStringList{QStringLiteral("UsbPortTestBiz: no memory for a report, dropped")});
        QCOMPARE(session->portCount(), 3);
        QVERIFY(!session->isAllLinked());
    }

    void againForgetsAllPorts()
    {
        UsbSession session;
        session.begin();
        session.report({{5}, {7}});
        session->reTest();
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state 0"), QStringLiteral("links ")}));
        QCOMPARE(session->portCount(), 0);
        QVERIFY(!session->isAllLinked());
        QCOMPARE(session.report({{7}}), heard("true"));
        session->enter();
        QCOMPARE(session->portCount(), 0);
        QVERIFY(!session->isAllLinked());
        session->startTest();
        session.take();
        QCOMPARE(session.report({{7, Port, 0}}), heard("false"));
        QVERIFY(!session->isAllLinked());
    }

    void changedSubscriptionPassesWhileReportsAreNotReceived()
    {
        UsbSession session;
        session.begin();
        QVERIFY(session->isRecvReport());
        session->setRecvReport(false);
        QVERIFY(!session->isRecvReport());
        QCOMPARE(session.report({{5}}), QStringList());
        QCOMPARE(session->portCount(), 0);
        QCOMPARE(session.change(RecordingUsb::payload({{5}})), heard("true"));
    }

    void badPayload_data()
    {
        QTest::addColumn<std::any>("payload");
        QTest::addColumn<QString>("warning");
        const QString wrongType = QStringLiteral("UsbPortTestBiz: need type std::shared_ptr<s_NodeUSBArray>, got %1");
        QTest::newRow("nothing") << std::any() << wrongType.arg(QString::fromLatin1(typeid(void).name()));
        QTest::newRow("a number") << std::any(1) << wrongType.arg(QString::fromLatin1(typeid(int).name()));
        QTest::newRow("a null pointer") << std::any(std::shared_ptr<Records>())
                                        << QStringLiteral("UsbPortTestBiz: s_NodeUSBArray ptr is nullptr");
    }

    void badPayload()
    {
        QFETCH(std::any, payload);
        QFETCH(QString, warning);
        UsbSession session;
        session.begin();
        session.report({{5}});
        QCOMPARE(session.change(payload), QStringList());
        QCOMPARE(session.log.lines(), QStringList{QStringLiteral("warning|") + warning});
        QCOMPARE(session->portCount(), 1);
        QVERIFY(session->isAllLinked());
    }

    void startAndVerdictAreGuarded()
    {
        UsbSession session;
        session->setPass();
        session->setNotPass();
        QCOMPARE(session.take(), QStringList());
        session.begin();
        session->startTest();
        QCOMPARE(session.take(), QStringList());
        session->setNotPass();
        session->setPass();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 102")});
        session->reTest();
        session->startTest();
        session->setNotPass();
        QCOMPARE(session->failCount(), 2);
        session->enter();
        QCOMPARE(session->failCount(), 0);
    }

    void withoutTheServiceItWarnsAndStaysRunning()
    {
        UsbSession session{"lcdMemoryCacheNodeUSB"};
        session->startTest();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 1")});
        QCOMPARE(session.log.lines(),
                 QStringList{QStringLiteral("warning|UsbPortTestBiz: IUSB is null, cannot start test")});
    }

    void reportOnEveryThread_data() { addOrigins(); }

    void reportOnEveryThread()
    {
        UsbSession session;
        session.begin();
        runOn(fetchOrigin(), [&] {
            session.host.usb.report.fire(RecordingUsb::payload({{5}}));
            session.host.usb.changed.fire(RecordingUsb::payload({{7}}));
        });
        QCOMPARE(session.take(), heard("true") + heard("false, true"));
        QCOMPARE(session->portCount(), 2);
    }
};

QTEST_MAIN(UsbPortTestBizTest)
#include "tst_usbporttestbiz.moc"
