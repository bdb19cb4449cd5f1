#include "callbackguard.h"

#include <QtTest/QtTest>

#include <array>
#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <thread>

using namespace LCD::FactoryModeImpl;

namespace {

/// An object that registers a listener somewhere, as the single tests do.
class Owner
{
public:
    explicit Owner(std::function<void()> event) : m_event(std::move(event)) {}
    std::function<void()> callback()
    {
        return m_callbackGuard.wrap([this] { m_event(); });
    }

private:
    std::function<void()> m_event;
    CallbackGuard m_callbackGuard;
};

constexpr auto Patience = std::chrono::seconds(60);

}

class CallbackGuardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void handsItsArgumentsOn()
    {
        const CallbackGuard guard;
        QString heard;
        const std::function<void(int, const QString &, std::unique_ptr<int>)> call =
            guard.wrap([&heard](int number, const QString &text, std::unique_ptr<int> moved) {
                heard = QStringLiteral("%1 %2 %3").arg(number).arg(text).arg(*moved);
            });
        call(1, QStringLiteral("two"), std::make_unique<int>(3));
        QCOMPARE(heard, QStringLiteral("1 two 3"));
    }

    void refusesOnceTheOwnerIsGone()
    {
        int calls = 0;
        auto owner = std::make_unique<Owner>([&calls] { ++calls; });
        const auto callback = owner->callback();
        callback();
        owner.reset();
        callback();
        std::thread(callback).join();
        QCOMPARE(calls, 1);
    }

    void invalidateWaitsForACallOnAnotherThread()
    {
        std::promise<void> entered;
        std::promise<void> release;
        std::atomic<bool> finished = false;
        CallbackGuard guard;
        std::thread service(guard.wrap([&] {
            entered.set_value();
            release.get_future().wait();
            finished = true;
        }));
        entered.get_future().wait();

        auto invalidated = std::async(std::launch::async, [&] {
            guard.invalidate();
            return finished.load();
        });
        // From now on new calls are refused. The call that is already running continues.
        bool admitted = true;
        const auto probe = guard.wrap([&admitted] { admitted = true; });
        while (std::exchange(admitted, false)) {
            std::this_thread::yield();
            probe();
        }
        QCOMPARE(invalidated.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
        release.set_value();
        QVERIFY(invalidated.get());
        service.join();
    }

    void callsOnTwoThreadsDoNotWaitForEachOther()
    {
        // Each call waits for the other one, so they finish only if both run at the same time.
        std::promise<void> arrived[2];
        std::atomic<int> next = 0;
        Owner owner([&] {
            const int self = next++;
            arrived[self].set_value();
            arrived[1 - self].get_future().wait();
        });
        auto first = std::async(std::launch::async, owner.callback());
        auto second = std::async(std::launch::async, owner.callback());
        QCOMPARE(first.wait_for(Patience), std::future_status::ready);
        QCOMPARE(second.wait_for(Patience), std::future_status::ready);
    }

    void callMayCallAgain()
    {
        int depth = 0;
        std::function<void()> callback;
        Owner owner([&] {
            if (++depth < 3)
                callback();
        });
        callback = owner.callback();
        callback();
        QCOMPARE(depth, 3);
    }

    void callMayDestroyItsOwner()
    {
        std::unique_ptr<Owner> owner;
        std::function<void()> callback;
        int calls = 0;
        owner = std::make_unique<Owner>([&] {
            ++calls;
            owner.reset();
        });
        callback = owner->callback();
        callback();
        callback();
        QCOMPARE(calls, 1);
    }

    void callMayBeDroppedByItsHolderWhileItRuns()
    {
        std::function<void()> held;
        std::array<int, 25> numbers;
        numbers.fill(7);
        std::array<int, 25> seen = {};
        const CallbackGuard guard;
        held = guard.wrap([&held, &seen, numbers] {
            held = nullptr;
            seen = numbers;
        });
        held();
        QVERIFY(seen == numbers);
    }

    void callThatThrowsHasLeft()
    {
        auto guard = std::make_unique<CallbackGuard>();
        const auto throwing = guard->wrap([] { throw 1; });
        std::thread([&] {
            try {
                throwing();
            } catch (int) {
            }
        }).join();
        guard.reset(); // would wait for ever for a call that never left
    }
};

QTEST_APPLESS_MAIN(CallbackGuardTest)
#include "tst_callbackguard.moc"
