#include "hosttest.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <atomic>
#include <thread>

using namespace panelhost;

/// The clock: order, instants, the two threads, and how it runs by the wall clock.
class tst_VirtualClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clock.setObserver({});
        clock.restart();
        seen.clear();
    }

    void timersAndDeviceWorkRunInOneOrder()
    {
        note(30, QStringLiteral("timer 30"));
        clock.schedule(10, [this] { see(QStringLiteral("device 10")); });
        note(10, QStringLiteral("timer 10"));
        clock.schedule(30, [this] { see(QStringLiteral("device 30")); });

        clock.advance(100);

        QCOMPARE(seen,
                 (QStringList{QStringLiteral("10 device 10"), QStringLiteral("10 timer 10"),
                              QStringLiteral("30 timer 30"), QStringLiteral("30 device 30")}));
        QCOMPARE(clock.now(), Milliseconds(100));
    }

    void aRepeatingTimerKeepsItsBeat()
    {
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [this] { see(QStringLiteral("beat")); });
        timer.start(2000);

        clock.advance(7000);

        QCOMPARE(seen,
                 (QStringList{QStringLiteral("2000 beat"), QStringLiteral("4000 beat"), QStringLiteral("6000 beat")}));
    }

    void zeroTimersFireAtTheirInstant()
    {
        note(0, QStringLiteral("single shot"));
        QTimer repeating;
        connect(&repeating, &QTimer::timeout, this, [this] { see(QStringLiteral("repeat")); });
        repeating.start(0);

        clock.settle();
        repeating.stop();

        QCOMPARE(seen, (QStringList{QStringLiteral("0 single shot"), QStringLiteral("0 repeat")}));
        QCOMPARE(clock.now(), Milliseconds(0));
    }

    void settlingDeliversWhatOneThreadAsksOfTheOther()
    {
        clock.schedule(0, [this] {
            see(QStringLiteral("device"));
            QTimer::singleShot(0, this, [this] {
                see(QStringLiteral("gui"));
                clock.schedule(0, [this] { see(QStringLiteral("device again")); });
            });
        });

        clock.settle();

        QCOMPARE(seen,
                 (QStringList{QStringLiteral("0 device"), QStringLiteral("0 gui"), QStringLiteral("0 device again")}));
    }

    void eachKindOfThreadKnowsItself()
    {
        QCOMPARE(clock.currentThread(), ThreadKind::Gui);
        ThreadKind onDevice = ThreadKind::Gui;
        clock.runOnDevice([&] { onDevice = clock.currentThread(); });
        QCOMPARE(onDevice, ThreadKind::Device);
        ThreadKind elsewhere = ThreadKind::Gui;
        std::thread([&] { elsewhere = clock.currentThread(); }).join();
        QCOMPARE(elsewhere, ThreadKind::Other);
    }

    void workFromTheDeviceThreadInPlace()
    {
        QString order;
        clock.runOnDevice([&] {
            order += QLatin1Char('a');
            clock.runOnDevice([&] { order += QLatin1Char('b'); });
            order += QLatin1Char('c');
        });
        QCOMPARE(order, QStringLiteral("abc"));
    }

    void advanceUntilStopsAtTheInstantThatAnswers()
    {
        int beats = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&beats] { ++beats; });
        timer.start(100);

        QVERIFY(clock.advanceUntil(10'000, [&beats] { return beats == 3; }));
        QCOMPARE(clock.now(), Milliseconds(300));
        QVERIFY(!clock.advanceUntil(1'000, [] { return false; }));
        QCOMPARE(clock.now(), Milliseconds(1300));
    }

    void theObserverLooksOnceForEachInstant()
    {
        note(10, QStringLiteral("first"));
        note(10, QStringLiteral("second"));
        note(20, QStringLiteral("third"));
        QStringList looks;
        clock.setObserver(
            [&] { looks << QString::number(clock.now()) + QLatin1Char(':') + QString::number(seen.size()); });

        clock.advance(50);

        QCOMPARE(looks, (QStringList{QStringLiteral("0:0"), QStringLiteral("10:2"), QStringLiteral("20:3")}));
    }

    void stoppedTimeStandsStillWhileTheLoopRuns()
    {
        QTimer timer;
        timer.start(1);
        QSignalSpy fired(&timer, &QTimer::timeout);
        QElapsedTimer wall;
        wall.start();
        while (wall.elapsed() < 30)
            QCoreApplication::processEvents();
        QCOMPARE(fired.count(), 0);
        QCOMPARE(clock.now(), Milliseconds(0));
    }

    void pacedTimeFollowsTheWallClock()
    {
        QElapsedTimer wall;
        wall.start();
        QEventLoop loop;
        QTimer::singleShot(2000, &loop, &QEventLoop::quit);
        clock.run(20);
        loop.exec();
        clock.stop();
        QVERIFY(wall.elapsed() >= 90);
        QVERIFY(clock.now() >= 2000);
    }

    void fastTimeDoesNotWait()
    {
        QElapsedTimer wall;
        wall.start();
        QEventLoop loop;
        QTimer::singleShot(3'600'000, &loop, &QEventLoop::quit);
        clock.run(0);
        loop.exec();
        clock.stop();
        QCOMPARE(clock.now(), Milliseconds(3'600'000));
        QVERIFY(wall.elapsed() < 10'000);
    }

    void workFromAnotherThreadWakesTheLoop()
    {
        QEventLoop loop;
        clock.run(1);
        std::thread other(
            [&] { clock.schedule(0, [&] { QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection); }); });
        loop.exec();
        other.join();
        clock.stop();
        QCOMPARE(clock.currentThread(), ThreadKind::Gui);
    }

    void seventySixThousandSecondsInAWink()
    {
        int beats = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&beats] { ++beats; });
        timer.start(2000);
        QElapsedTimer wall;
        wall.start();

        clock.advance(76'000'000);

        QCOMPARE(beats, 38'000);
        qInfo("76,000 s of a 2 s timer in %lld ms", wall.elapsed());
        QVERIFY(wall.elapsed() < 60'000); // usually less than a second
    }

    void aTimerMayEndItselfAndItsObject()
    {
        auto *timer = new QTimer;
        connect(timer, &QTimer::timeout, this, [this, timer] {
            see(QStringLiteral("last"));
            timer->deleteLater();
        });
        timer->start(10);
        clock.advance(100);
        QCOMPARE(seen, (QStringList{QStringLiteral("10 last")}));
    }

    void restartDropsTheDevicesWorkAndKeepsTimers()
    {
        clock.advance(1000);
        note(500, QStringLiteral("timer"));
        clock.schedule(100, [this] { see(QStringLiteral("dropped")); });

        clock.restart();
        QCOMPARE(clock.now(), Milliseconds(0));
        clock.advance(1000);

        QCOMPARE(seen, (QStringList{QStringLiteral("500 timer")}));
    }

    void inputGetsTheTimeAtWhichItIsTaken()
    {
        note(40, QStringLiteral("timer 40"));
        note(100000, QStringLiteral("never"));
        clock.run(1);
        QElapsedTimer elapsed;
        elapsed.start();
        std::thread other([this, &elapsed] {
            while (elapsed.elapsed() < 60)
                std::this_thread::yield();
            clock.post([this] { see(QStringLiteral("input")); });
        });
        while (seen.size() < 2)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        other.join();
        const qint64 passed = elapsed.elapsed();
        clock.stop();

        QCOMPARE(seen.first(), QStringLiteral("40 timer 40"));
        // Not the time of the timer before it, at which the clock last stood.
        QVERIFY2(seen.last().endsWith(QLatin1String("input")), qPrintable(seen.last()));
        const qint64 at = seen.last().section(QLatin1Char(' '), 0, 0).toLongLong();
        QVERIFY2(at >= 60 && at <= passed, qPrintable(QString::number(at)));
    }

    void inputIsTakenInOrderByTheEventLoopOnly()
    {
        for (const char *name : {"a", "b", "c"})
            clock.post([this, name] { see(QString::fromLatin1(name)); });
        clock.settle();
        clock.advance(10);
        QCOMPARE(seen, QStringList());
        QCoreApplication::processEvents();
        QCOMPARE(seen, (QStringList{QStringLiteral("10 a"), QStringLiteral("10 b"), QStringLiteral("10 c")}));
    }

    void inputWaitsForTheInputBeforeIt()
    {
        clock.post([this] {
            QCoreApplication::processEvents();
            see(QStringLiteral("first"));
        });
        clock.post([this] { see(QStringLiteral("second")); });
        QCoreApplication::processEvents();
        QCOMPARE(seen, (QStringList{QStringLiteral("0 first"), QStringLiteral("0 second")}));
    }

    void restartDropsInput()
    {
        clock.post([this] { see(QStringLiteral("dropped")); });
        clock.restart();
        QCoreApplication::processEvents();
        QCOMPARE(seen, QStringList());
    }

private:
    void see(const QString &what) { seen << QString::number(clock.now()) + QLatin1Char(' ') + what; }
    void note(int delay, const QString &what)
    {
        QTimer::singleShot(delay, this, [this, what] { see(what); });
    }

    VirtualClock &clock = VirtualClock::instance();
    QStringList seen;
};

PANELHOST_TEST_MAIN(tst_VirtualClock)
#include "tst_virtualclock.moc"
