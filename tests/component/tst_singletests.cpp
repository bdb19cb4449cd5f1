#include "buttonfunctionbiz.h"
#include "buttonlightbiz.h"
#include "netporttestbiz.h"
#include "screenbadpixelbiz.h"
#include "screenbrightnessbiz.h"
#include "singletestsupport.h"
#include "tbartestbiz.h"
#include "usbporttestbiz.h"

#include <atomic>
#include <thread>
#include <type_traits>

using namespace LCD::FactoryModeImpl;

namespace {

// Calls of all public operations of the single tests, which every thread may make.
void stepAll(ScreenBadPixelBiz &biz)
{
    repeat(14, [&] { biz.nextStep(); });
}

void stepAll(ScreenBrightnessBiz &biz)
{
    repeat(12, [&] { biz.nextStep(); });
    biz.restoreBrightnessToNormal();
}

void stepAll(ButtonLightBiz &biz)
{
    repeat(12, [&] { biz.nextStep(); });
}

void stepAll(ButtonFunctionBiz &biz)
{
    repeat(4, [&] { biz.skipCurrentStep(); });
}

void stepAll(TbarTestBiz &biz)
{
    repeat(9, [&] { biz.requestNextStep(); });
    biz.currentStepIndex();
}

template <class LinkBiz>
void stepAll(LinkBiz &biz)
{
    biz.setRecvReport(!biz.isRecvReport());
    biz.setRecvReport(true);
    biz.isAllLinked();
    biz.portCount();
}

template <class Biz>
auto retest(Biz &biz) -> decltype(biz.reTest())
{
    biz.reTest();
}

void retest(ButtonFunctionBiz &biz)
{
    biz.enter();
}

/// Calls all operations of an object that was created with @p host, while the services of the host report.
template <class Biz>
void runAll(RecordingHost &host)
{
    Biz biz;
    for (const bool pass : {true, false}) {
        biz.enter();
        biz.startTest();
        stepAll(biz);
        host.keyboard.press(1);
        host.networkPort.report.fire(RecordingNetworkPort::payload({{0, true}}));
        host.usb.changed.fire(RecordingUsb::payload({{3}}));
        host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration());
        pass ? biz.setPass() : biz.setNotPass();
        QVERIFY(biz.state() == (pass ? 103 : 102));
        retest(biz);
        biz.startTest();
    }
}

/// Which listeners enter() calls, for each of the five tests that have a current requester.
template <class Biz>
void checkFilter()
{
    Session<Biz> session;
    const auto heard = [&session] { return session.take().filter(QStringLiteral("heard by")); };
    for (const char *name : {"A", "B"}) {
        session->registerStateCallback(
            name, [&session, name](int) { session.add(QStringLiteral("heard by ") + QLatin1String(name)); });
    }
    session->enter();
    QCOMPARE(heard(), QStringList());
    QCOMPARE(session->getCurRequester(), std::string());

    session->setCurRequester("A");
    session->enter();
    QCOMPARE(heard(), QStringList{QStringLiteral("heard by A")});

    session->setCurRequester("B");
    QCOMPARE(session.take(), QStringList());
    QCOMPARE(session->getCurRequester(), std::string("B"));
    session->enter();
    QCOMPARE(heard(), QStringList{QStringLiteral("heard by B")});

    session->registerStateCallback("B", nullptr);
    session->enter();
    QCOMPARE(heard(), QStringList{QStringLiteral("heard by B")});

    session->registerStateCallback("B", [&session](int) { session.add(QStringLiteral("heard by B's second")); });
    session->enter();
    QCOMPARE(heard(), QStringList{QStringLiteral("heard by B's second")});
}

/// Returns whether enter() calls a listener with the empty name while there is no current requester.
template <class Biz>
bool hearsUnderTheEmptyName()
{
    Session<Biz> session;
    bool heard = false;
    session->registerStateCallback({}, [&heard](int) { heard = true; });
    session->enter();
    return heard;
}

template <class Biz>
QStringList callsOfEnter()
{
    Session<Biz> session;
    session->enter();
    return session.take();
}

/// A host without services. Unlike the recording host, it may be used on several threads at the same time.
class BareHost final : public mirel::IHost
{
public:
    BareHost() { mirel::api::get().setHost(static_cast<mirel::IHost *>(this)); }
    ~BareHost() { mirel::api::get().setHost(nullptr); }
    void *getComponent(const char *) override { return nullptr; }
};

/// Steps through an object on one thread while another thread does the same, reads its state and registers listeners.
template <class Biz>
void stepOnTwoThreads()
{
    const BareHost host;
    Biz biz;
    std::atomic<int> heard{0};
    std::atomic<int> arrived{0};
    biz.startTest();
    const auto work = [&](const std::string &name) {
        // Together, and at first without a lock of the listeners, which would bring the steps into an order.
        ++arrived;
        while (arrived < 2)
            std::this_thread::yield();
        stepAll(biz);
        repeat(50, [&] {
            biz.registerStateCallback(name, [&heard](int) { ++heard; });
            biz.setCurRequester(name);
            biz.enter();
            biz.startTest();
            stepAll(biz);
            biz.reTest();
            QVERIFY(!biz.getCurRequester().empty());
        });
    };
    std::thread other([&work] { work("a requester with a long name"); });
    work("another one with a long name");
    other.join();
    biz.enter();
    biz.startTest();
    biz.setPass();
    QCOMPARE(biz.state(), 103);
    QVERIFY(heard > 0);
}

template <class Biz>
constexpr bool isOnePointer = sizeof(Biz) == sizeof(void *)
    && !std::is_polymorphic_v<Biz> && !std::is_copy_constructible_v<Biz> && !std::is_copy_assignable_v<Biz>;

static_assert(
    isOnePointer<
        ScreenBadPixelBiz> && isOnePointer<ScreenBrightnessBiz> && isOnePointer<ButtonLightBiz> && isOnePointer<ButtonFunctionBiz> && isOnePointer<TbarTestBiz> && isOnePointer<NetPortTestBiz> && isOnePointer<UsbPortTestBiz>);

const char *const Services[] = {"lcdKeyboardEvent",           "lcdFactoryModeBiz",   "lcdMemoryCacheNetworkPort",
                                "lcdMemoryCacheNodeUSB",      "lcdTBarCalibration",  "lcdConfig",
                                "lcdMemoryCacheScreenDetail", "lcdFactoryModeWidget"};

}

class SingleTestsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listenersAreFilteredByRequester()
    {
        checkFilter<ScreenBadPixelBiz>();
        checkFilter<ScreenBrightnessBiz>();
        checkFilter<ButtonLightBiz>();
        checkFilter<NetPortTestBiz>();
        checkFilter<UsbPortTestBiz>();
    }

    void emptyNameIsANameForAllButTheLinkTests()
    {
        QVERIFY(hearsUnderTheEmptyName<ScreenBadPixelBiz>());
        QVERIFY(hearsUnderTheEmptyName<ScreenBrightnessBiz>());
        QVERIFY(hearsUnderTheEmptyName<ButtonLightBiz>());
        QVERIFY(hearsUnderTheEmptyName<TbarTestBiz>());
        QVERIFY(!hearsUnderTheEmptyName<NetPortTestBiz>());
        QVERIFY(!hearsUnderTheEmptyName<UsbPortTestBiz>());
    }

    void twoThreadsAtOnceReachOnlyWholeMembers()
    {
        const LogCapture quiet;
        stepOnTwoThreads<ScreenBadPixelBiz>();
        stepOnTwoThreads<ScreenBrightnessBiz>();
        stepOnTwoThreads<ButtonLightBiz>();
        stepOnTwoThreads<NetPortTestBiz>();
        stepOnTwoThreads<UsbPortTestBiz>();
    }

    void testTypes()
    {
        const auto type = [](int number) {
            return QStringList{QStringLiteral("factoryBiz.setFactoryTestType(%1)").arg(number)};
        };
        QCOMPARE(callsOfEnter<ScreenBrightnessBiz>(), type(0));
        QCOMPARE(callsOfEnter<ScreenBadPixelBiz>(), type(1));
        QCOMPARE(callsOfEnter<ButtonLightBiz>(), type(2));
        QCOMPARE(callsOfEnter<TbarTestBiz>(), type(6));
        QCOMPARE(callsOfEnter<UsbPortTestBiz>(), type(9));
        QCOMPARE(callsOfEnter<NetPortTestBiz>(), type(10));
        QCOMPARE(callsOfEnter<ButtonFunctionBiz>(),
                 QStringList{QStringLiteral("keyboard.registerKeyCallback(listener)")});
    }

    void twoInstancesDoNotKnowOfEachOther()
    {
        Session<ButtonLightBiz> session;
        ButtonLightBiz other;
        session->startTest();
        QCOMPARE(session->state(), 10);
        QCOMPARE(other.state(), 0);
    }

    void worksWithoutAHost()
    {
        RecordingHost host;
        mirel::api::get().setHost(nullptr);
        const LogCapture quiet;
        runEverything(host);
        QCOMPARE(host.lookups, QStringList());
        QCOMPARE(host.calls.take(), QStringList());
    }

    void worksWithAnyServicesMissing()
    {
        const LogCapture quiet;
        RecordingHost full;
        const KeyListWidget widget(full,
                                   {{1, QStringLiteral("A")}, {2, QStringLiteral("CUT")}, {3, QStringLiteral("C")}});
        void *const widgetObject = full.getComponent("lcdFactoryModeWidget");
        for (unsigned absent = 0; absent < 256; ++absent) {
            RecordingHost host;
            host.offer("lcdFactoryModeWidget", widgetObject);
            for (unsigned bit = 0; bit < 8; ++bit) {
                if (absent & (1U << bit))
                    host.remove(Services[bit]);
            }
            runEverything(host);
        }
    }

private:
    static void runEverything(RecordingHost &host)
    {
        runAll<ScreenBadPixelBiz>(host);
        runAll<ScreenBrightnessBiz>(host);
        runAll<ButtonLightBiz>(host);
        runAll<ButtonFunctionBiz>(host);
        runAll<TbarTestBiz>(host);
        runAll<NetPortTestBiz>(host);
        runAll<UsbPortTestBiz>(host);
        QCoreApplication::sendPostedEvents();
    }
};

QTEST_MAIN(SingleTestsTest)
#include "tst_singletests.moc"
