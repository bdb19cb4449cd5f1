#include "agetestfixture.h"
#include "failingmemory.h"
#include "machinetestfixture.h"
#include "prooflength.h"
#include "virtualtime.h"

#include <memory>
#include <optional>
#include <thread>

// What remains of a session in which a service or a listener throws, or memory runs out: a new run of the same objects
// is complete, and nothing of the interrupted one is left.

namespace {

struct Interrupted
{
};

/// Carries out one action. The caller is an operator's click, a timer or a service, which survives an exception.
template <class Action>
void attempt(const Action &action)
{
    try {
        action();
    } catch (const Interrupted &) {
    } catch (const std::bad_alloc &) {
    }
}

/// The same on a thread of a service.
template <class Action>
void attemptElsewhere(const Action &action)
{
    {
        const FailingMemory::Pause pause; // for the thread, which is the service's
        std::thread([&action] { attempt(action); }).join();
    }
    attempt([] { VirtualTime::settle(); });
}

// A session ends so that the next run of its object doesn't depend on where this one stopped.

/// A complete machine test that passes, with reports on other threads.
struct MachineSession
{
    MachineTestFixture fixture;
    CallLog &calls = fixture.host.calls;

    void run()
    {
        attempt([this] { fixture.biz->start(); });
        levels();
        repeat(13, [this] { right(); });
        levels();
        for (const unsigned key : {10U, 27U, 33U})
            attemptElsewhere([this, key] { fixture.host.keyboard.press(key); });
        right();
        repeat(8, [this] { right(); });
        right();
        attemptElsewhere([this] { fixture.netReport({{0, true}, {1, true}}); });
        right();
        attemptElsewhere([this] { fixture.usbReport({{1}, {2}}); });
        repeat(4, [this] { right(); });
    }
    void end() {}
    bool isComplete() const { return fixture.biz->result() == 1 && fixture.biz->currentPhaseIndex() == 11; }

private:
    void levels()
    {
        for (int tick = 0; tick < 10; ++tick)
            attempt([] { VirtualTime::advance(2000); });
        right();
    }
    void right()
    {
        attempt([this] { fixture.right(); });
    }
};

/// Two rounds of the aging test, with results on other threads.
struct AgingSession
{
    AgeTestFixture fixture;
    CallLog &calls = fixture.host.calls;

    void run()
    {
        attempt([this] { fixture.biz->start(); });
        for (const bool linked : {false, true}) {
            for (int second = 0; second < 76; ++second)
                attempt([] { VirtualTime::advance(1000); });
            attemptElsewhere([this, linked] { fixture.netChanged({{0, linked}}); });
            attempt([this] { fixture.biz->recount(); });
            attemptElsewhere([this] { fixture.usbChanged({{1}}); });
        }
    }
    void end() { fixture.biz->stop(); }
    bool isComplete() const { return true; }
};

/// Throws at one call of a service or a listener.
class ThrowingCall
{
public:
    ThrowingCall(CallLog &calls, int number) : m_calls(calls)
    {
        m_calls.afterCall = [this, number] {
            if (++m_count == number)
                throw Interrupted();
        };
    }
    ~ThrowingCall() { end(); }
    ThrowingCall(const ThrowingCall &) = delete;
    ThrowingCall &operator=(const ThrowingCall &) = delete;

    template <class Session>
    static void prepare(Session &)
    {
    }
    void end() { m_calls.afterCall = nullptr; }
    static bool leaks() { return false; }

private:
    CallLog &m_calls;
    int m_count = 0;
};

/// Lets one allocation fail.
class FailingAllocation
{
public:
    FailingAllocation(CallLog &, int number) : m_memory(number) {}
    // A run before, because Qt never removes a timer if memory runs out while it is started for the first time.
    template <class Session>
    static void prepare(Session &session)
    {
        session.run();
        session.end();
    }
    void end() { m_memory.end(); }
    static bool leaks() { return FailingMemory::blocksLeft() > 0; }

private:
    FailingMemory m_memory;
};

/// Returns how many times an interruption can take place in a session.
template <class Session>
int countCalls()
{
    Session session;
    session.calls.clear();
    session.run();
    return session.calls.take().size();
}

template <class Session>
int countAllocations()
{
    Session session;
    FailingAllocation::prepare(session);
    FailingMemory memory(-1);
    session.run();
    memory.end();
    return FailingMemory::count();
}

/// Runs a session that is interrupted at @p number, and a second one. Returns what is wrong with the second one.
template <class Session, class Interruption>
QString interruptedAt(int number, const QStringList &undisturbed)
{
    auto session = std::make_unique<Session>();
    Interruption::prepare(*session);
    {
        std::optional<Interruption> interruption(std::in_place, session->calls, number);
        session->run();
        interruption->end();
    }
    session->end();
    session->calls.clear();
    session->run();
    const QStringList calls = session->calls.take();
    const bool complete = session->isComplete();
    session.reset();
    VirtualTime::settle();
    if (Interruption::leaks())
        return QStringLiteral("%1 blocks are leaked").arg(FailingMemory::blocksLeft());
    if (!complete)
        return QStringLiteral("the next run doesn't pass");
    for (int i = 0; i < std::max(calls.size(), undisturbed.size()); ++i) {
        if (calls.value(i) != undisturbed.value(i))
            return QStringLiteral("call %1 is %2, expected %3").arg(i).arg(calls.value(i), undisturbed.value(i));
    }
    return {};
}

/// Returns the calls of the second run of a session.
template <class Session>
QStringList undisturbedRun()
{
    Session session;
    session.run();
    session.end();
    session.calls.clear();
    session.run();
    return session.isComplete() ? session.calls.take() : QStringList();
}

template <class Session, class Interruption>
void interruptEverywhere(int count, int stride)
{
    const QStringList undisturbed = undisturbedRun<Session>();
    QVERIFY(undisturbed.size() > 100);
    QVERIFY(count > 100);
    const int first = 1 + static_cast<int>(proofSeed() % static_cast<quint32>(stride));
    for (int number = first; number <= count; number += stride) {
        const QString fault = interruptedAt<Session, Interruption>(number, undisturbed);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("interrupted at %1: %2").arg(number).arg(fault)));
    }
}

}

class InterruptedSessionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    }
    void cleanupTestCase() { qInstallMessageHandler(nullptr); }

    void aCallOfTheMachineTestThrows()
    {
        interruptEverywhere<MachineSession, ThrowingCall>(countCalls<MachineSession>(), proofLength(7, 1, 1));
    }
    void aCallOfTheAgingTestThrows()
    {
        interruptEverywhere<AgingSession, ThrowingCall>(countCalls<AgingSession>(), proofLength(7, 1, 1));
    }
    void anAllocationOfTheMachineTestFails()
    {
        interruptEverywhere<MachineSession, FailingAllocation>(countAllocations<MachineSession>(),
                                                               proofLength(61, 3, 1));
    }
    void anAllocationOfTheAgingTestFails()
    {
        interruptEverywhere<AgingSession, FailingAllocation>(countAllocations<AgingSession>(), proofLength(61, 3, 1));
    }
};

VIRTUAL_TIME_TEST_MAIN(InterruptedSessionsTest)
#include "tst_interruptedsessions.moc"
