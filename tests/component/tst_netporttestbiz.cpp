#include "netporttestbiz.h"

#include "linksession.h"

#include <limits>
#include <new>
#include <thread>
#include <typeinfo>
#include <utility>

using namespace LCD::FactoryModeImpl;

namespace {

using Records = std::vector<LCD::ProtocolImpl::s_NetworkPortLink>;

struct NetSession : LinkSession<NetPortTestBiz>
{
    explicit NetSession(std::initializer_list<const char *> absent = {}) : LinkSession(absent)
    {
        biz().registerLinkStatusCallback("driver", [this](const std::vector<bool> &links, bool valid) {
            add(linksLine(links) + (valid ? QString() : QStringLiteral(" invalid")));
        });
    }
    QStringList report(const std::any &payload) { return callsOf(host.networkPort.report, payload); }
    QStringList change(const std::any &payload) { return callsOf(host.networkPort.changed, payload); }
};

std::any ports(const std::vector<std::pair<int, bool>> &records)
{
    return RecordingNetworkPort::payload(records);
}

const QStringList Subscriptions = subscriptionsOf(QStringLiteral("networkPort"), QStringLiteral("NetPortTestBiz"));

}

class NetPortTestBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enterTellsTheTypeAndAnnounces()
    {
        NetSession session;
        QCOMPARE(session.host.lookups,
                 (QStringList{QStringLiteral("lcdMemoryCacheNetworkPort"), QStringLiteral("lcdFactoryModeBiz")}));
        session->enter();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("factoryBiz.setFactoryTestType(10)"), QStringLiteral("state 0")}));
    }

    void itAnnouncesWithoutTheFactoryModeService()
    {
        NetSession session{"lcdFactoryModeBiz"};
        session->enter();
        session->startTest();
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state 0"), QStringLiteral("state 1")} + Subscriptions));
    }

    void startAnnouncesAndThenSubscribes()
    {
        NetSession session;
        session->startTest();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 1")} + Subscriptions);
    }

    void links_data()
    {
        QTest::addColumn<std::any>("payload");
        QTest::addColumn<QString>("links");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("all");
        QTest::newRow("a gap is a port that is down")
            << ports({{0, true}, {1, true}, {3, true}}) << QStringLiteral("true, true, false, true") << 4 << false;
        QTest::newRow("all up") << ports({{1, true}, {0, true}}) << QStringLiteral("true, true") << 2 << true;
        QTest::newRow("negative ports are left out")
            << ports({{-1, true}, {std::numeric_limits<int>::min(), true}, {1, true}}) << QStringLiteral("false, true")
            << 2 << false;
        QTest::newRow("only negative ports") << ports({{-1, true}}) << QString() << 0 << false;
        QTest::newRow("no records") << ports({}) << QString() << 0 << false;
        QTest::newRow("one linked record of a port is enough")
            << ports({{0, true}, {0, false}}) << QStringLiteral("true") << 1 << true;
        QTest::newRow("one linked record, later")
            << ports({{0, false}, {0, true}}) << QStringLiteral("true") << 1 << true;
        QTest::newRow("down") << ports({{0, true}, {1, false}}) << QStringLiteral("true, false") << 2 << false;
    }

    void links()
    {
        QFETCH(std::any, payload);
        QFETCH(QString, links);
        NetSession session;
        session.begin();
        QCOMPARE(session.change(payload), (QStringList{QStringLiteral("state 1"), QStringLiteral("links ") + links}));
        QTEST(session->portCount(), "count");
        QTEST(session->isAllLinked(), "all");
        QCOMPARE(session.log.lines(), QStringList());
    }

    void everyNonZeroLinkIsUp()
    {
        NetSession session;
        session.begin();
        auto records = std::make_shared<Records>(2);
        records->at(0).link = -1;
        records->at(1).port = 1;
        records->at(1).link = 1 << 16;
        QCOMPARE(session.change(records).last(), QStringLiteral("links true, true"));
    }

    void changedSubscriptionPassesWhileReportsAreNotReceived()
    {
        NetSession session;
        session.begin();
        QVERIFY(session->isRecvReport());
        session->setRecvReport(false);
        QVERIFY(!session->isRecvReport());
        QCOMPARE(session.report(ports({{0, true}})), QStringList());
        QCOMPARE(session.report(std::any(1)), QStringList());
        QCOMPARE(session.log.lines(), QStringList());
        QCOMPARE(session->portCount(), 0);
        QCOMPARE(session.change(ports({{0, true}})),
                 (QStringList{QStringLiteral("state 1"), QStringLiteral("links true")}));
        session->setRecvReport(true);
        QCOMPARE(session.report(ports({{0, false}})),
                 (QStringList{QStringLiteral("state 1"), QStringLiteral("links false")}));
    }

    void everyReportReplacesTheOneBefore()
    {
        NetSession session;
        session.begin();
        session.report(ports({{0, true}, {1, true}}));
        QVERIFY(session->isAllLinked());
        session.report(ports({{0, false}, {1, true}}));
        QVERIFY(!session->isAllLinked());
        session.report(ports({{0, true}}));
        QCOMPARE(session->portCount(), 1);
        QVERIFY(session->isAllLinked());
    }

    // A report that fails takes back what it has changed, unless another report has arrived since.
    void aReportThatFailsKeepsTheNextOne()
    {
        NetSession session;
        session.begin();
        bool failed = false;
        session->registerLinkStatusCallback("zz fails once", [&](const std::vector<bool> &, bool) {
            if (std::exchange(failed, true))
                return;
            std::thread([&] { session.host.networkPort.report.fire(ports({{0, true}, {1, true}})); }).join();
            throw std::bad_alloc();
        });
        session->setCurRequester("zz fails once");
        const LogCapture log;
        session.report(ports({{0, false}}));
        QVERIFY(failed);
        QCOMPARE(log.warnings(), QStringList{QStringLiteral("NetPortTestBiz: no memory for a report, dropped")});
        QCOMPARE(session->portCount(), 2);
        QVERIFY(session->isAllLinked());
    }

    void everyReportAnnouncesTheStateAgain()
    {
        NetSession session;
        session.begin();
        repeat(3, [&] {
            QCOMPARE(session.report(ports({{0, true}})),
                     (QStringList{QStringLiteral("state 1"), QStringLiteral("links true")}));
        });
    }

    void reportsAreReadAfterTheVerdictToo()
    {
        NetSession session;
        session.begin();
        session->setPass();
        QCOMPARE(session.report(ports({{0, true}})),
                 (QStringList{QStringLiteral("state 103"), QStringLiteral("links true")}));
        QCOMPARE(session->portCount(), 1);
    }

    void badPayload_data()
    {
        QTest::addColumn<std::any>("payload");
        QTest::addColumn<QString>("warning");
        const QString wrongType =
            QStringLiteral("NetPortTestBiz: need type std::shared_ptr<s_NetworkPortLinkArray>, got %1");
        const auto name = [](const std::type_info &type) { return QString::fromLatin1(type.name()); };
        QTest::newRow("nothing") << std::any() << wrongType.arg(name(typeid(void)));
        QTest::newRow("a number") << std::any(1) << wrongType.arg(name(typeid(int)));
        QTest::newRow("the list itself") << std::any(Records()) << wrongType.arg(name(typeid(Records)));
        QTest::newRow("the records of the other test")
            << RecordingUsb::payload({{1}})
            << wrongType.arg(name(typeid(std::shared_ptr<std::vector<LCD::ProtocolImpl::s_NodeUSB>>)));
        QTest::newRow("a null pointer") << std::any(std::shared_ptr<Records>())
                                        << QStringLiteral("NetPortTestBiz: s_NetworkPortLinkArray ptr is nullptr");
    }

    void badPayload()
    {
        QFETCH(std::any, payload);
        QFETCH(QString, warning);
        NetSession session;
        session.begin();
        session.report(ports({{0, true}, {1, true}}));
        QCOMPARE(session.change(payload), QStringList());
        QCOMPARE(session.log.lines(), QStringList{QStringLiteral("warning|") + warning});
        QCOMPARE(session->portCount(), 2);
        QVERIFY(session->isAllLinked());
    }

    void verdictNeedsARunningTest()
    {
        NetSession session;
        session->setPass();
        session->setNotPass();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 0);
        QCOMPARE(session->failCount(), 0);
        session.begin();
        session->setPass();
        session->setNotPass();
        session->setPass();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 103")});
        QCOMPARE(session->failCount(), 0);
    }

    void startNeedsAnIdleTest()
    {
        NetSession session;
        session.begin();
        session->startTest();
        QCOMPARE(session.take(), QStringList());
        session->setNotPass();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 102);
    }

    void againForgetsTheLinksAndSubscribesASecondTime()
    {
        NetSession session;
        session.begin();
        session.report(ports({{0, true}}));
        session.take();
        session->reTest();
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state 0"), QStringLiteral("links ")}));
        QCOMPARE(session->portCount(), 0);
        session->startTest();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 1")} + Subscriptions);
    }

    void failuresCountUntilEnter()
    {
        NetSession session;
        session.begin();
        session->setNotPass();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 102")});
        session->reTest();
        session->startTest();
        session->setNotPass();
        QCOMPARE(session->failCount(), 2);
        session.report(ports({{0, true}}));
        session->enter();
        QCOMPARE(session->failCount(), 0);
        QCOMPARE(session->portCount(), 0);
    }

    void withoutTheServiceItWarnsAndStaysRunning()
    {
        NetSession session{"lcdMemoryCacheNetworkPort"};
        session->startTest();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 1")});
        QCOMPARE(session.log.lines(),
                 QStringList{QStringLiteral("warning|NetPortTestBiz: INetworkPort is null, cannot start test")});
        QCOMPARE(session->state(), 1);
    }

    void serviceMayReportInsideTheSubscription()
    {
        NetSession session;
        session.host.networkPort.answerAtOnce = ports({{0, true}});
        session->startTest();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 1"), Subscriptions[0], QStringLiteral("state 1"),
                              QStringLiteral("links true"), Subscriptions[1], QStringLiteral("state 1"),
                              QStringLiteral("links true")}));
    }

    void onlyTheCurrentRequesterHearsOfLinks()
    {
        NetSession session;
        session->registerLinkStatusCallback(
            "other", [&](const std::vector<bool> &, bool) { session.add(QStringLiteral("other")); });
        session->registerLinkStatusCallback(
            "", [&](const std::vector<bool> &, bool) { session.add(QStringLiteral("nameless")); });
        session->registerLinkStatusCallback("driver", nullptr);
        session.begin();
        QCOMPARE(session.report(ports({{0, true}})).last(), QStringLiteral("links true"));
        session->setCurRequester("other");
        QCOMPARE(session.report(ports({{0, true}})), QStringList{QStringLiteral("other")});
        session->setCurRequester({});
        QCOMPARE(session.report(ports({{0, true}})), QStringList());
    }

    void reportOnEveryThread_data() { addOrigins(); }

    void reportOnEveryThread()
    {
        NetSession session;
        session.begin();
        runOn(fetchOrigin(), [&] {
            session.host.networkPort.report.fire(ports({{0, true}}));
            session.host.networkPort.changed.fire(ports({{0, true}, {1, true}}));
        });
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 1"), QStringLiteral("links true"), QStringLiteral("state 1"),
                              QStringLiteral("links true, true")}));
        QVERIFY(session->isAllLinked());
    }

    void listenersMayAskTheTest()
    {
        NetSession session;
        session->registerLinkStatusCallback("driver", [&](const std::vector<bool> &, bool) {
            session.add(QStringLiteral("%1 ports").arg(session->portCount()));
            session->setPass();
        });
        session.begin();
        QCOMPARE(session.report(ports({{0, true}, {1, true}})),
                 (QStringList{QStringLiteral("state 1"), QStringLiteral("2 ports"), QStringLiteral("state 103")}));
    }
};

QTEST_MAIN(NetPortTestBizTest)
#include "tst_netporttestbiz.moc"
