#include "agetestfixture.h"
#include "completemachinetestwidget.h"
#include "factorymodewidget.h"
#include "failingmemory.h"
#include "linksession.h"
#include "machinepage.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include "buttonfunctionbiz.h"
#include "netporttestbiz.h"
#include "tbartestbiz.h"
#include "usbporttestbiz.h"

#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedLayout>

#include <memory>
#include <optional>
#include <thread>

using namespace LCD;
using namespace LCD::FactoryModeImpl;

namespace {

/// Collects the warnings of Qt's logger in preallocated memory. When a line begins with the text given to startAt(),
/// the allocation with the given number, counted from this line, fails.
class Warnings
{
public:
    Warnings() : m_previous(qInstallMessageHandler(handle))
    {
        lines.clear();
        beginning.clear();
    }
    ~Warnings() { qInstallMessageHandler(m_previous); }
    Warnings(const Warnings &) = delete;
    Warnings &operator=(const Warnings &) = delete;

    static void startAt(const QString &line, const std::function<void()> &start)
    {
        beginning = line;
        atBeginning = start;
    }

    static inline QStringList lines;

private:
    static void handle(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        {
            const FailingMemory::Pause pause;
            if (type == QtWarningMsg)
                lines << text;
        }
        if (!beginning.isEmpty() && text.startsWith(beginning))
            atBeginning();
    }

    static inline QString beginning;
    static inline std::function<void()> atBeginning;
    const QtMessageHandler m_previous;
};

/// One listener that a service calls. `report` and `next` deliver what the service has prepared; `state` tells all that
/// the report changes.
struct Listening
{
    std::shared_ptr<void> objects;
    std::function<void()> report;
    std::function<void()> next;
    std::function<QString()> state;
};

using MakeListening = Listening (*)();

/// Runs @p work on a std::thread that Qt already knows, and waits for it.
template <class Work>
void elsewhere(const Work &work)
{
    std::thread thread([&] {
        QThread::currentThread();
        work();
    });
    thread.join();
}

std::function<void()> delivery(const ListenerSlot<std::any> &subscription, const std::any &payload)
{
    return [listener = subscription.get(), prepared = std::make_shared<std::any>(payload)] {
        listener(std::move(*prepared));
    };
}

std::function<void()> press(const RecordingHost &host, unsigned halKey)
{
    return [listener = host.keyboard.listener(), halKey] { listener(halKey, 1.0F, 0, {}, {}, {}); };
}

/// Allocates and frees a block of memory, as a listener may do. The compiler may remove a pair of new and delete, but
/// not these calls.
void needMemory()
{
    ::operator delete(::operator new(1));
}

template <class Biz>
struct LinkObjects
{
    LinkSession<Biz> session;
    QString heard;

    QString state()
    {
        return QStringLiteral("%1 ports, linked %2, state %3, failed %4, heard %5")
            .arg(session->portCount())
            .arg(session->isAllLinked())
            .arg(session->state())
            .arg(session->failCount())
            .arg(heard);
    }
};

Listening netReport()
{
    auto net = std::make_shared<LinkObjects<NetPortTestBiz>>();
    net->session->registerLinkStatusCallback("driver", [net = net.get()](const std::vector<bool> &links, bool) {
        needMemory();
        net->heard = bitText(links);
    });
    net->session.begin();
    const auto &changed = net->session.host.networkPort.changed;
    delivery(changed, RecordingNetworkPort::payload({{0, true}}))();
    return {net, delivery(changed, RecordingNetworkPort::payload({{0, false}, {1, true}})),
            delivery(changed, RecordingNetworkPort::payload({{0, true}, {1, true}, {2, true}})),
            [net = net.get()] { return net->state(); }};
}

Listening usbReport()
{
    auto usb = std::make_shared<LinkObjects<UsbPortTestBiz>>();
    usb->session->registerLinkStatusCallback("driver", [usb = usb.get()](const std::vector<bool> &links) {
        needMemory();
        usb->heard = bitText(links);
    });
    usb->session.begin();
    const auto &report = usb->session.host.usb.report;
    delivery(report, RecordingUsb::payload({{5}}))();
    return {usb, delivery(report, RecordingUsb::payload({{1}, {2, 26, 0}})),
            delivery(report, RecordingUsb::payload({{3, 26, 0}})), [usb = usb.get()] { return usb->state(); }};
}

struct KeyObjects
{
    Session<ButtonFunctionBiz> session;
    KeyListWidget menu{session.host, MachineOperator::keys()};
    QStringList heard;

    KeyObjects()
    {
        session->registerStateCallback("driver", [this](int state, int failures) {
            needMemory();
            heard << QStringLiteral("state %1, %2").arg(state).arg(failures);
        });
        session->registerCurrentKeyUnderTestCallback("driver", [this](unsigned key, const std::string &) {
            needMemory();
            heard << QStringLiteral("key %1").arg(key);
        });
        session->enter();
        session->startTest();
        press(session.host, 99)();
    }
    QString state()
    {
        return QStringLiteral("%1, state %2, failed %3")
            .arg(heard.join(QStringLiteral(", ")))
            .arg(session->state())
            .arg(session->failCount());
    }
};

Listening keyPress()
{
    auto keys = std::make_shared<KeyObjects>();
    const auto press10 = press(keys->session.host, 10);
    return {keys, press10, press10, [keys = keys.get()] { return keys->state(); }};
}

Listening lastKeyPress()
{
    auto keys = std::make_shared<KeyObjects>();
    press(keys->session.host, 10)();
    press(keys->session.host, 27)();
    const auto press33 = press(keys->session.host, 33);
    return {keys, press33, press33, [keys = keys.get()] { return keys->state(); }};
}

// The right button passes the phase only while its verdict screen is shown.
Listening lastKeyPressOfTheMachineTest()
{
    auto fixture = std::make_shared<MachineTestFixture>();
    fixture->startAndPassTo(3);
    fixture->biz->registerPhaseCallback("with memory", [](const CompleteMachinePhaseInfo &) { needMemory(); });
    press(fixture->host, 10)();
    press(fixture->host, 27)();
    const auto press33 = press(fixture->host, 33);
    return {fixture, press33, press33, [fixture = fixture.get()] {
                fixture->right();
                return QStringLiteral("phase %1").arg(fixture->biz->currentPhaseIndex());
            }};
}

/// Returns the phase, the result, and whether the next tick shows a level.
QString runOf(MachineTestFixture &fixture)
{
    VirtualTime::settle();
    fixture.take();
    VirtualTime::advance(2000);
    const bool walks = !fixture.told().filter(QRegularExpression(QStringLiteral("^phase title=.*%"))).isEmpty();
    return QStringLiteral("phase %1, result %2, levels walk %3")
        .arg(fixture.biz->currentPhaseIndex())
        .arg(fixture.biz->result())
        .arg(walks);
}

// The net test announces with its report that it failed in the previous run.
Listening failureOfTheMachineTest()
{
    auto fixture = std::make_shared<MachineTestFixture>();
    fixture->startAndPassTo(5);
    fixture->right();
    fixture->left();
    fixture->biz->registerLogCallback("with memory", [](const QString &) { needMemory(); });
    elsewhere([&] { fixture->netReport({{0, true}}); });
    fixture->startAndPassTo(0);
    const auto report = delivery(fixture->host.networkPort.report, RecordingNetworkPort::payload({{0, true}}));
    const auto again = delivery(fixture->host.networkPort.report, RecordingNetworkPort::payload({{0, true}}));
    return {fixture, report, again, [fixture = fixture.get()] { return runOf(*fixture); }};
}

// The net test announces with its report that it passed in the previous run. In the pattern phase, this goes on to the
// phase of the key lights.
Listening nextPhaseOfTheMachineTest()
{
    auto fixture = std::make_shared<MachineTestFixture>();
    fixture->startAndPassTo(11);
    elsewhere([&] { fixture->netReport({{0, true}}); });
    fixture->startAndPassTo(1);
    const auto report = delivery(fixture->host.networkPort.report, RecordingNetworkPort::payload({{0, true}}));
    const auto again = delivery(fixture->host.networkPort.report, RecordingNetworkPort::payload({{0, true}}));
    return {fixture, report, again, [fixture = fixture.get()] { return runOf(*fixture); }};
}

Listening pageOfTheMachineTest()
{
    auto page = std::make_shared<MachinePage>();
    page->startAndPassTo(5);
    page->clickRight();
    const auto &changed = page->host.networkPort.changed;
    elsewhere(delivery(changed, RecordingNetworkPort::payload({{0, true}})));
    VirtualTime::settle();
    page->take();
    return {page, delivery(changed, RecordingNetworkPort::payload({{0, true}})),
            delivery(changed, RecordingNetworkPort::payload({{0, true}, {1, true}})), [page = page.get()] {
                VirtualTime::settle();
                return page->host.calls.all().join(QLatin1Char('\n'));
            }};
}

// The text of the next step would show the failure of the net ports.
Listening agingTest()
{
    auto fixture = std::make_shared<AgeTestFixture>();
    fixture->biz->start();
    fixture->runToNetStep();
    elsewhere([&] { fixture->netChanged({{0, true}}); });
    VirtualTime::settle();
    fixture->take();
    return {fixture, delivery(fixture->host.networkPort.changed, RecordingNetworkPort::payload({{0, false}})),
            delivery(fixture->host.usb.changed, RecordingUsb::payload({{1}})), [fixture = fixture.get()] {
                VirtualTime::settle();
                return fixture->host.calls.all().join(QLatin1Char('\n'));
            }};
}

struct BarObjects
{
    Session<TbarTestBiz> session;

    BarObjects()
    {
        session->enter();
        session->startTest();
    }
    QString state()
    {
        VirtualTime::settle();
        return QStringLiteral("state %1, step %2").arg(session->state()).arg(session->currentStepIndex());
    }
};

Listening calibrationReport()
{
    auto bar = std::make_shared<BarObjects>();
    const auto report = [listener = bar->session.host.tbarCalibration.listener.get()] { listener({}); };
    report();
    return {bar, report, report, [bar = bar.get()] { return bar->state(); }};
}

Listening calibrationResult()
{
    auto bar = std::make_shared<BarObjects>();
    repeat(7, [&] { bar->session->requestNextStep(); });
    const auto result = [answer = bar->session.host.tbarCalibration.results.back()] { answer(true, {}); };
    result();
    return {bar, result, result, [bar = bar.get()] { return bar->state(); }};
}

/// The calls of a listener for the report that follows the dropped one.
QString stateAfterNext(MakeListening make)
{
    const Listening listening = make();
    elsewhere(listening.next);
    return listening.state();
}

/// A menu of a submenu and the machine test, loaded from a file.
class Menu
{
public:
    Menu()
    {
        recordFrameCalls(&host.calls);
        QFile file(m_directory.filePath(QStringLiteral("factorymenu.xml")));
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.errorString()));
        file.write(R"(<LCD><MenuBar><MenuItem Key="em.factorytest.RepairMode"><MenuItem Key="em.factorytest.Net"/>
                      </MenuItem><MenuItem Key="em.factorytest.completemachine"/></MenuBar></LCD>)");
        file.close();
        load();
    }
    ~Menu() { recordFrameCalls(nullptr); }
    Menu(const Menu &) = delete;
    Menu &operator=(const Menu &) = delete;

    void load() { widget.setFactoryModeData(QStringLiteral("menuConfigPath"), m_directory.path()); }
    void openMachineTest() { Q_EMIT level1->itemClicked(level1->item(1)); }

    RecordingHost host;
    FactoryModeWidget widget{nullptr};
    QListWidget *level1 = widget.findChildren<QListWidget *>().at(0);
    QListWidget *level2 = widget.findChildren<QListWidget *>().at(1);

private:
    QTemporaryDir m_directory;
};

/// Does something once, just before the menu has added the page of the machine test: at this time the page is complete,
/// and it is hidden before it can be shown.
class BeforeThePageIsIn : public QObject
{
public:
    explicit BeforeThePageIsIn(std::function<void()> action) : m_action(std::move(action))
    {
        qApp->installEventFilter(this);
    }
    bool done() const { return m_done; }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!m_done && event->type() == QEvent::HideToParent && qobject_cast<CompleteMachineTestWidget *>(watched)) {
            m_done = true;
            m_action();
        }
        return false;
    }

private:
    const std::function<void()> m_action;
    bool m_done = false;
};

}

Q_DECLARE_METATYPE(MakeListening)

/// Each allocation of a report, a menu row or a test page fails once.
class AllocationFailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReportWithoutMemoryIsDropped_data()
    {
        QTest::addColumn<MakeListening>("make");
        QTest::addColumn<QString>("listener");
        QTest::addColumn<bool>("changes");
        QTest::newRow("net") << &netReport << "NetPortTestBiz:" << true;
        QTest::newRow("usb") << &usbReport << "UsbPortTestBiz:" << true;
        QTest::newRow("key") << &keyPress << "[ButtonFunctionBiz]:" << true;
        QTest::newRow("last key") << &lastKeyPress << "[ButtonFunctionBiz]:" << true;
        QTest::newRow("last key, machine test") << &lastKeyPressOfTheMachineTest << "[ButtonFunctionBiz]:" << true;
        QTest::newRow("net, failure of the machine test") << &failureOfTheMachineTest << "NetPortTestBiz:" << true;
        QTest::newRow("net, next phase of the machine test") << &nextPhaseOfTheMachineTest << "NetPortTestBiz:" << true;
        QTest::newRow("net, machine test's page") << &pageOfTheMachineTest << "NetPortTestBiz:" << true;
        QTest::newRow("net, aging test") << &agingTest << "NetPortTestBiz:" << true;
        QTest::newRow("calibration") << &calibrationReport << "[TbarTestBiz]:" << false;
        QTest::newRow("calibration result") << &calibrationResult << "[TbarTestBiz]:" << false;
    }
    void aReportWithoutMemoryIsDropped()
    {
        QFETCH(const MakeListening, make);
        QFETCH(const QString, listener);
        QFETCH(const bool, changes);
        const QString after = stateAfterNext(make);

        for (int number = 1;; ++number) {
            const Listening listening = make();
            const QString before = listening.state();
            const Warnings warnings;
            bool escaped = false;
            elsewhere([&] {
                FailingMemory memory(number);
                try {
                    listening.report();
                } catch (...) {
                    escaped = true;
                }
            });
            if (!FailingMemory::failed()) {
                QVERIFY2(number > 1, "the report needs no memory");
                QCOMPARE(listening.state() != before, changes);
                return;
            }
            const QByteArray place = QByteArray("allocation ") + QByteArray::number(number);
            QVERIFY2(!escaped, place);
            QVERIFY2(Warnings::lines.size() == 1, place + qPrintable(Warnings::lines.join(QLatin1Char('\n'))));
            QVERIFY(Warnings::lines.first().startsWith(listener + QStringLiteral(" no memory for ")));
            QCOMPARE(listening.state(), before);
            // Checked only now, because an event is queued until the state is read.
            QCOMPARE(FailingMemory::blocksLeft(), 0);
            elsewhere(listening.next);
            QCOMPARE(listening.state(), after);
        }
    }

    // A listener has no memory, and in the end the warning about it hasn't either.
    void aReportWithoutMemoryForItsWarningIsDropped()
    {
        LinkSession<NetPortTestBiz> net;
        net->registerLinkStatusCallback("driver", [](const std::vector<bool> &, bool) { throw std::bad_alloc(); });
        net.begin();
        int withoutWarning = 0;
        for (int number = 1;; ++number) {
            const auto report = delivery(net.host.networkPort.changed, RecordingNetworkPort::payload({{0, true}}));
            const Warnings warnings;
            bool escaped = false;
            FailingMemory memory(number);
            try {
                report();
            } catch (...) {
                escaped = true;
            }
            memory.end();
            QVERIFY(!escaped);
            if (!FailingMemory::failed()) {
                QCOMPARE(Warnings::lines,
                         QStringList{QStringLiteral("NetPortTestBiz: no memory for a report, dropped")});
                QVERIFY2(withoutWarning > 0, "the warning needs no memory");
                return;
            }
            withoutWarning += Warnings::lines.isEmpty() ? 1 : 0;
        }
    }

    void aMenuRowWithoutMemoryIsNotLeft_data()
    {
        QTest::addColumn<int>("level");
        QTest::newRow("level 1") << 1;
        QTest::newRow("level 2") << 2;
    }
    void aMenuRowWithoutMemoryIsNotLeft()
    {
        QFETCH(const int, level);
        for (int number = 1;; ++number) {
            Menu menu;
            auto *list = level == 1 ? menu.level1 : menu.level2;
            std::optional<FailingMemory> memory;
            // The list owns the row once it is inserted.
            const QMetaObject::Connection end =
                connect(list->model(), &QAbstractItemModel::rowsAboutToBeInserted, list, [&memory] { memory.reset(); });
            const Warnings warnings;
            if (level == 1)
                Warnings::startAt(QStringLiteral("[FactoryModeWidget] buildLevel1List: Starting"),
                                  [&] { memory.emplace(number); });
            bool escaped = false;
            try {
                if (level == 1) {
                    menu.load();
                } else {
                    memory.emplace(number);
                    Q_EMIT menu.level1->itemClicked(menu.level1->item(0));
                }
            } catch (const std::bad_alloc &) {
                escaped = true;
            }
            memory.reset();
            disconnect(end);
            QCOMPARE(escaped, FailingMemory::failed());
            if (!escaped) {
                QVERIFY(number > 2);
                return;
            }
            QCOMPARE(list->count(), 0);
            QCOMPARE(FailingMemory::blocksLeft(), 0);
        }
    }

    void aTestPageWithoutMemoryIsMadeAtTheNextClick()
    {
        for (int number = 1;; ++number) {
            Menu menu;
            std::optional<FailingMemory> memory;
            BeforeThePageIsIn beginning([&] { memory.emplace(number); });
            bool failed = false;
            try {
                menu.openMachineTest();
            } catch (const std::bad_alloc &) {
                failed = true;
            }
            memory.reset();
            QVERIFY(beginning.done());
            if (!failed) {
                QVERIFY(number > 3);
                return;
            }
            menu.openMachineTest();
            const auto pages = menu.widget.findChildren<CompleteMachineTestWidget *>();
            QCOMPARE(pages.size(), 1);
            const auto *layout = qobject_cast<QStackedLayout *>(menu.widget.layout());
            QCOMPARE(layout->currentWidget(), pages.first());
            Q_EMIT frameOf(*pages.first())->signalBackPrevious();
            QCOMPARE(layout->currentIndex(), 0);
        }
    }
};

VIRTUAL_TIME_TEST_MAIN(AllocationFailuresTest)
#include "tst_allocationfailures.moc"
