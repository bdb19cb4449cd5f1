#include "agetestwidget.h"
#include "machinepage.h"
#include "modelpayloads.h"
#include "prooflength.h"
#include "virtualtime.h"

#include <QtCore/QDeadlineTimer>

#include <array>
#include <atomic>
#include <random>
#include <thread>

using LCD::FactoryModeImpl::AgeTestWidget;

namespace {

/// A thread of a service that delivers random events as fast as it can. Now and then it keeps the listeners that it
/// finds, and calls them later, as a careless service does.
class ServiceThread
{
public:
    ServiceThread(RecordingHost &host, quint32 seed) : m_host(host), m_random(seed), m_thread([this] { run(); }) {}
    ~ServiceThread()
    {
        m_over = true;
        m_thread.join();
    }
    ServiceThread(const ServiceThread &) = delete;
    ServiceThread &operator=(const ServiceThread &) = delete;

    int delivered() const { return m_delivered; }

private:
    struct Listeners
    {
        explicit Listeners(const RecordingHost &host)
            : ports{{host.networkPort.report.get(), host.networkPort.changed.get(), host.usb.report.get(),
                     host.usb.changed.get()}},
              calibration(host.tbarCalibration.listener.get()), key(host.keyboard.listener())
        {
        }

        std::array<std::function<void(std::any)>, 4> ports;
        std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> calibration;
        LCD::FactoryMode::KeyListener key;
    };

    void run()
    {
        while (!m_over) {
            const Listeners current(m_host);
            deliver(current);
            deliver(m_kept);
            if (m_random() % 100 == 0)
                m_kept = current;
            ++m_delivered;
            std::this_thread::yield();
        }
    }

    void deliver(const Listeners &listeners)
    {
        const auto value = static_cast<quint32>(m_random());
        const auto &port = listeners.ports[value % 4];
        switch (m_random() % 3) {
        case 0:
            if (port)
                port(m_random() % 50 == 0 ? absurdReport()
                         : value % 4 < 2  ? asNetReport(netPayload(value))
                                          : asUsbReport(usbPayload(value)));
            break;
        case 1:
            if (listeners.calibration)
                listeners.calibration({static_cast<int>(value % 4), static_cast<int>(value % 3), 0});
            break;
        default:
            if (listeners.key)
                listeners.key(keyOf(value), 1.0F, 0U, {}, {}, {});
        }
    }

    static std::any absurdReport()
    {
        return RecordingNetworkPort::payload({{-1, true}, {4095, true}, {1000000, true}});
    }

    static unsigned keyOf(quint32 value)
    {
        const auto keys = MachineOperator::keys();
        return value % 5 == 0 ? value : static_cast<unsigned>(keys[static_cast<int>(value % 3)].first);
    }

    RecordingHost &m_host;
    std::mt19937 m_random;
    Listeners m_kept{m_host};
    std::atomic<bool> m_over = false;
    std::atomic<int> m_delivered = 0;
    std::thread m_thread;
};

/// The pages of both tests, which an impatient operator uses while the services report.
class Operator
{
public:
    Operator(MachinePage &machine, quint32 seed) : m_machine(machine), m_random(seed) { makeAgingPage(); }

    void act()
    {
        switch (m_random() % 12) {
        case 0:
            return m_machine.make();
        case 1:
            return makeAgingPage();
        case 2:
            return m_machine.widget->enterWindow();
        case 3:
            return m_aging->enterWindow();
        case 4:
            return m_machine.goBack();
        case 5:
            return Q_EMIT frameOf(*m_aging)->signalBackPrevious();
        case 6:
            return m_machine.clickLeft();
        case 7:
            return Q_EMIT frameOf(*m_aging)->signalRightBtnClicked(false);
        case 8:
            return VirtualTime::advance(static_cast<int>(m_random() % 30000));
        case 9:
            return m_machine.passTo(static_cast<int>(m_random() % 12));
        default:
            return m_machine.clickRight();
        }
    }

private:
    void makeAgingPage() { m_aging = std::make_unique<AgeTestWidget>(nullptr); }

    MachinePage &m_machine;
    std::mt19937 m_random;
    std::unique_ptr<AgeTestWidget> m_aging;
};

/// Removes what the recording services have collected.
void forget(MachinePage &page)
{
    page.take();
    page.log.clear();
    page.host.lookups.clear();
    page.host.tbarCalibration.commands.clear();
    page.host.tbarCalibration.results.clear();
}

/// Returns the calls of a run that passes, from the menu back to the menu.
QStringList completeRun(MachinePage &page)
{
    page.make();
    VirtualTime::settle();
    forget(page);
    page.widget->enterWindow();
    page.clickRight();
    page.passTo(11);
    page.goBack();
    return page.take();
}

}

/// Two threads of services report without a pause, while the operator clicks, starts again and leaves, and while pages
/// are deleted and created again. In the build with the thread sanitizer, no race may be found.
class StressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesWhileServicesReport()
    {
        const qint64 seconds = proofLength(1, 60, 3600);
        const quint32 seed = proofSeed();
        qInfo("LCD_PROOF_SEED=%u", seed);
        QStringList before;
        QStringList after;
        const Figures figures = stress(seconds, seed, &before, &after);
        qInfo("%d actions, %d events of two threads", figures.actions, figures.events);
        QVERIFY(figures.actions > 0);
        QVERIFY(figures.events > 0);
        QCOMPARE(after, before);
    }

private:
    struct Figures
    {
        int actions = 0;
        int events = 0;
    };

    /// Returns what was done. Sets the calls of a complete run before and after it.
    static Figures stress(qint64 seconds, quint32 seed, QStringList *before, QStringList *after)
    {
        Figures figures;
        MachinePage page;
        *before = completeRun(page);
        {
            Operator impatient(page, seed);
            const ServiceThread first(page.host, seed + 1);
            const ServiceThread second(page.host, seed + 2);
            for (const QDeadlineTimer end(seconds * 1000); !end.hasExpired(); ++figures.actions) {
                impatient.act();
                forget(page);
            }
            figures.events = first.delivered() + second.delivered();
        }
        *after = completeRun(page);
        return figures;
    }
};

VIRTUAL_TIME_TEST_MAIN(StressTest)
#include "tst_stress.moc"
