#include "device/board/sliderinput.h"
#include "mockinput.h"
#include "pump.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <linux/iio/events.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

using namespace panelhost;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

const char *const Thresholds = "/sys/devices/adc/iio:device0/events/in_voltage1_thresh_";

QStringList synced; // what fsync() was called for, with the files that were in the directory then

}

// Stands in for that of the C library.
extern "C" int fsync(int descriptor)
{
    const QString path = QFile::symLinkTarget(q("/proc/self/fd/%1").arg(descriptor));
    const QFileInfo file(path);
    const QDir directory = file.isDir() ? QDir(path) : file.dir();
    synced << q("%1: %2").arg(file.isDir() ? q("directory") : file.fileName(),
                              directory.entryList(QDir::Files, QDir::Name).join(QLatin1Char(' ')));
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

/// The T-Bar of a board: positions, calibration, and a channel of a mock IIO device.
class tst_BoardSlider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        events.clear();
        synced.clear();
        directory = std::make_unique<QTemporaryDir>();
        configuration = {};
        configuration.stateFile = directory->filePath(q("tbar.json"));
    }

    void cleanup()
    {
        slider.reset();
        bed.reset();
        if (ioctls)
            g_object_unref(std::exchange(ioctls, nullptr));
        for (int &end : eventPipe) {
            if (end >= 0)
                ::close(std::exchange(end, -1));
        }
        eventFd = -1;
        isEventFdBusy = false;
        usesEvents = true;
        hidden.clear();
    }

    void positions_data()
    {
        QTest::addColumn<int>("bottom");
        QTest::addColumn<int>("top");
        QTest::addColumn<int>("value");
        QTest::addColumn<double>("position");
        QTest::newRow("bottom") << 10 << 110 << 10 << 0.0;
        QTest::newRow("middle") << 10 << 110 << 60 << 0.5;
        QTest::newRow("top") << 10 << 110 << 110 << 1.0;
        QTest::newRow("below") << 10 << 110 << -5 << 0.0;
        QTest::newRow("above") << 10 << 110 << 9999 << 1.0;
        QTest::newRow("counts downwards") << 4000 << 0 << 1000 << 0.75;
        QTest::newRow("no travel") << 7 << 7 << 7 << 0.0;
        QTest::newRow("huge") << -2'000'000'000 << 2'000'000'000 << 0 << 0.5;
    }
    void positions()
    {
        QFETCH(int, bottom);
        QFETCH(int, top);
        QFETCH(int, value);
        QTEST(sliderPosition({bottom, top}, value), "position");
    }

    // Small movements are noise; the ends are always reported.
    void movementsAreReported()
    {
        start();
        for (const int value : {0, 500, 505, 512, 998, 1000, 1000, 4, 0})
            slider->setRaw(value, 0, 1000);
        QCOMPARE(events, (QStringList{q("0"), q("0.5"), q("0.512"), q("0.998"), q("1"), q("0.004"), q("0")}));
    }

    // The bar moves between 30 and 930 only.
    void calibrationFindsTheEnds()
    {
        start();
        calibrate({930, 931, 30, 929, 32, 931, 31});
        QCOMPARE(failures, QStringList());
        events.clear();
        slider->setRaw(31, 0, 1000);
        slider->setRaw(481, 0, 1000);
        slider->setRaw(931, 0, 1000);
        QCOMPARE(events, (QStringList{q("0.499"), q("1")}));
    }

    void calibrationSurvivesTheProcess()
    {
        start();
        calibrate({930, 931, 30, 929, 32, 931, 32});
        QString error;
        QCOMPARE(*loadSliderEnds(configuration.stateFile, &error), (SliderEnds{32, 931}));
        start();
        slider->setRaw(931, 0, 1000);
        QCOMPARE(events.last(), q("1"));
    }

    void barThatCountsDownwardsIsCalibrated()
    {
        configuration.range = SliderEnds{1000, 0};
        start();
        calibrate({40, 41, 960, 41, 960, 41, 960});
        QCOMPARE(failures, QStringList());
        QString error;
        QCOMPARE(*loadSliderEnds(configuration.stateFile, &error), (SliderEnds{960, 41}));
    }

    void calibrationFails_data()
    {
        QTest::addColumn<QList<int>>("values");
        QTest::addColumn<QStringList>("problems");
        QTest::newRow("not at the top")
            << QList<int>{0, 500, 0, 1000, 0, 1000, 0}
            << QStringList{q("1: the T-Bar is at 50 % of its range, it must be at the top (75 % to 100 %)")};
        QTest::newRow("not at the bottom")
            << QList<int>{0, 1000, 300, 1000, 0, 1000, 0}
            << QStringList{q("0: the T-Bar is at 30 % of its range, it must be at the bottom (0 % to 25 %)")};
        QTest::newRow("ends that wander") << QList<int>{0, 1000, 0, 900, 0, 1000, 0}
                                          << QStringList{q("1: the top was measured at 1000 and is at 900 now")};
        QTest::newRow("left the bottom")
            << QList<int>{0, 1000, 0, 1000, 0, 1000, 100}
            << QStringList{q("4: the T-Bar has left the bottom: it was measured at 0 and is at 100 now")};
        QTest::newRow("never at the top")
            << QList<int>{0, 0, 0, 0, 0, 0, 0}
            << QStringList{q("1: the T-Bar is at 0 % of its range, it must be at the top (75 % to 100 %)"),
                           q("1: the T-Bar is at 0 % of its range, it must be at the top (75 % to 100 %)"),
                           q("1: the T-Bar is at 0 % of its range, it must be at the top (75 % to 100 %)"),
                           q("4: the top was not measured")};
    }
    void calibrationFails()
    {
        QFETCH(QList<int>, values);
        start();
        calibrate(values);
        QTEST(failures, "problems");
        const bool isStored = QFile::exists(configuration.stateFile);
        QCOMPARE(isStored, failures.size() == 1 && !failures.first().startsWith(q("4")));
    }

    void calibrationNeedsABar()
    {
        start();
        QCOMPARE(slider->calibrate(2), q("the T-Bar is missing"));
        slider->setRaw(5, 0, 0);
        QCOMPARE(slider->calibrate(2), q("the driver states no range for the T-Bar; add \"range\" to the profile"));
        slider->setRaw(5, 0, 10);
        QCOMPARE(slider->calibrate(2), QString());
        slider->setMissing(q("gone"));
        QCOMPARE(slider->calibrate(1), q("the T-Bar is missing"));
        QCOMPARE(events.last(), q("status gone"));
    }

    // The new content is on the disk before it replaces the old one, and then the directory is.
    void storingIsAtomic()
    {
        write("old");
        start();
        calibrate({930, 931, 30, 929, 32, 931, 31});
        QCOMPARE(synced, (QStringList{q("tbar.json.part: tbar.json tbar.json.part"), q("directory: tbar.json")}));
    }

    void fullDiskKeepsTheOldCalibration()
    {
        QString error;
        QVERIFY(saveSliderEnds(configuration.stateFile, {100, 900}, &error));
        start();
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before = {};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit none = {0, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
        calibrate({930, 931, 30, 929, 32, 931, 31});
        setrlimit(RLIMIT_FSIZE, &before);
        QCOMPARE(failures.size(), 1);
        QVERIFY2(failures.first().startsWith(q("4: the calibration can't be stored: ") + configuration.stateFile),
                 qPrintable(failures.first()));
        QCOMPARE(*loadSliderEnds(configuration.stateFile, &error), (SliderEnds{100, 900}));
        slider->setRaw(900, 0, 1000);
        QCOMPARE(events.last(), q("1"));
    }

    void badFileIsNamed_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("half") << QByteArray("{\"bottom\": 3, \"to");
        QTest::newRow("text") << QByteArray("{\"bottom\": \"3\", \"top\": 100}");
        QTest::newRow("no travel") << QByteArray("{\"bottom\": 3, \"top\": 3}");
        QTest::newRow("fraction") << QByteArray("{\"bottom\": 3.5, \"top\": 100}");
        QTest::newRow("huge") << QByteArray("{\"bottom\": 1e300, \"top\": 100}");
    }
    void badFileIsNamed()
    {
        QFETCH(QByteArray, content);
        write(content);
        start();
        QCOMPARE(warning,
                 configuration.stateFile
                     + q(": expected {\"bottom\": NUMBER, \"top\": NUMBER} with two different whole numbers. "
                         "Calibrate the T-Bar to write the file anew."));
        slider->setRaw(500, 0, 1000);
        QCOMPARE(events, (QStringList{q("0.5")}));
        calibrate({930, 931, 30, 929, 32, 931, 31});
        QCOMPARE(failures, QStringList());
        start();
        QCOMPARE(warning, QString());
    }

    void directoryThatCanNotBeMadeIsNamed()
    {
        write("a file");
        configuration.stateFile += q("/below/tbar.json");
        start();
        calibrate({930, 931, 30, 929, 32, 931, 31});
        QCOMPARE(failures.size(), 1);
        QVERIFY2(failures.first().contains(directory->filePath(q("tbar.json/below"))), qPrintable(failures.first()));
    }

    void channelIsRead()
    {
        useBed();
        startChannel("2048\n");
        QCOMPARE(events, (QStringList{q("0.5")}));
        setChannel("4095\n");
        waitFor(q("1"));
    }

    void missingChannelIsNamed()
    {
        useBed();
        configuration.iio = SliderInput::IioChannel{q("other"), q("voltage1"), 1000};
        start();
        QCOMPARE(events,
                 (QStringList{q("status There is no IIO device named \"other\". "
                                "\"panelhost probe\" lists those that there are.")}));
        QCOMPARE(slider->calibrate(2), q("the T-Bar is missing"));
    }

    void garbageInTheChannelIsNamed()
    {
        useBed();
        startChannel("0\n");
        for (const char *garbage : {"", "12x\n", "99999999999\n", "\n\n"}) {
            setChannel(garbage);
            waitFor(q("status /sys/devices/adc/iio:device0/in_voltage1_raw: found \"%1\", expected a whole number.")
                        .arg(q(garbage).trimmed()));
            setChannel("0\n");
            waitFor(q("status "));
            events.clear();
        }
    }

    void channelDisappearsAndReturns()
    {
        useBed();
        startChannel("0\n");
        bed->uevent(q("/sys/devices/adc/iio:device0"), "remove");
        bed->remove(q("/sys/devices/adc/iio:device0"));
        QVERIFY(pump(slider->sources(), [&] { return events.size() >= 2; }));
        QVERIFY2(events.last().startsWith(q("status ")) && events.last() != q("status "), qPrintable(events.last()));
        QCOMPARE(slider->calibrate(2), q("the T-Bar is missing"));
        itimerspec timer = {};
        QCOMPARE(timerfd_gettime(slider->sources().first()->fd(), &timer), 0);
        QCOMPARE(timer.it_value.tv_sec, 0); // nothing is read as long as it is missing
        QCOMPARE(timer.it_value.tv_nsec, 0);
        addChannel(3, "4095\n");
        bed->uevent(q("/sys/devices/adc/iio:device3"), "add");
        waitFor(q("1"));
        QCOMPARE(events.at(events.size() - 2), q("status "));
    }

    // Nothing is read as long as the value stays in the range that the thresholds are set to.
    void eventsSayWhenToRead()
    {
        useBed();
        useEvents();
        startChannel("2000\n");
        QCOMPARE(events, (QStringList{q("0.488")}));
        QCOMPARE(slider->sources().first()->fd(), eventFd);
        QCOMPARE(threshold("falling_value"), q("1960"));
        QCOMPARE(threshold("rising_value"), q("2040"));
        QCOMPARE(threshold("falling_en") + threshold("rising_en"), q("11"));
        setChannel("4095\n");
        drain(slider->sources());
        QCOMPARE(events.size(), 1);

        sendEvent();
        waitFor(q("1"));
        QCOMPARE(threshold("falling_value"), q("4055"));
        QCOMPARE(threshold("rising_value"), q("4095")); // no driver takes more than its highest value
    }

    void thresholdsAreRestored()
    {
        useBed();
        useEvents();
        startChannel("2000\n");
        slider.reset();
        QCOMPARE(threshold("falling_value"), q("5"));
        QCOMPARE(threshold("rising_value"), q("4000"));
        QCOMPARE(threshold("falling_en") + threshold("rising_en"), q("00"));
    }

    // With the wrong permissions, if another program has the events, or if the driver refuses the thresholds.
    void channelWithoutUsableEventsIsReadAtTheRate_data()
    {
        QTest::addColumn<QString>("obstacle");
        for (const char *obstacle : {"busy", "refused", "switched off", "one threshold"})
            QTest::newRow(obstacle) << q(obstacle);
    }
    void channelWithoutUsableEventsIsReadAtTheRate()
    {
        QFETCH(QString, obstacle);
        useBed();
        useEvents();
        isEventFdBusy = obstacle == q("busy");
        usesEvents = obstacle != q("switched off");
        if (obstacle == q("refused") || obstacle == q("one threshold")) {
            gchar *root = umockdev_testbed_get_root_dir(bed->get());
            hidden = QString::fromLocal8Bit(root) + q(Thresholds) + q("rising_value");
            g_free(root);
        }
        startChannel("2000\n", [&] {
            if (!hidden.isEmpty() && QFile::remove(hidden) && obstacle == q("refused"))
                QVERIFY(QFile::link(q("/dev/full"), hidden));
        });
        QVERIFY(slider->sources().first()->fd() != eventFd);
        setChannel("4095\n");
        waitFor(q("1"));
    }

    // While the T-Bar moves it is read at the rate: the value is elsewhere already when the thresholds are set.
    void movingBarIsReadAtTheRate()
    {
        useBed();
        useEvents();
        startChannel("2000\n");
        const QList<EventSource *> sources = slider->sources();
        gchar *root = umockdev_testbed_get_root_dir(bed->get());
        const QByteArray path = QByteArray(root) + "/sys/devices/adc/iio:device0/in_voltage1_raw";
        g_free(root);
        QCOMPARE(::unlink(path.constData()), 0);
        QCOMPARE(mkfifo(path.constData(), 0666), 0);
        // Each reading waits for the next value.
        const int end = ::open(path.constData(), O_RDWR | O_CLOEXEC);
        const auto mover = std::async(std::launch::async, [end] {
            for (const char *value : {"3000\n", "3500\n", "4000\n", "4000\n"}) {
                if (::write(end, value, 5) != 5)
                    qFatal("The value can't be written.");
                for (int unread = 5; unread > 0; ioctl(end, FIONREAD, &unread))
                    std::this_thread::yield();
            }
        });
        sendEvent();
        QVERIFY(pump(sources, [&] { return events.contains(q("0.977")); }));
        mover.wait();
        ::close(end);
        QCOMPARE(slider->sources().first()->fd(), eventFd); // at rest again
        QCOMPARE(threshold("rising_value"), q("4040"));
    }

    void garbageAfterAnEventIsReadAgain()
    {
        useBed();
        useEvents();
        startChannel("2000\n");
        setChannel("12x\n");
        sendEvent();
        waitFor(q("status /sys/devices/adc/iio:device0/in_voltage1_raw: found \"12x\", expected a whole number."));
        setChannel("4095\n");
        waitFor(q("1"));
        QCOMPARE(events.at(events.size() - 2), q("status "));
    }

    // The descriptor has ended although the device is there.
    void channelWhoseEventsEndIsReadAtTheRate()
    {
        useBed();
        useEvents();
        startChannel("2000\n");
        hangUp();
        QVERIFY(pump(slider->sources(), [&] { return slider->sources().first()->fd() != eventFd; }));
        setChannel("4095\n");
        waitFor(q("1"));
    }

    void deviceThatDisappearsWithItsEventsReturns()
    {
        useBed();
        useEvents();
        startChannel("2000\n");
        bed->uevent(q("/sys/devices/adc/iio:device0"), "remove");
        bed->remove(q("/sys/devices/adc/iio:device0"));
        hangUp();
        QVERIFY(pump(slider->sources(), [&] { return events.size() >= 2; }));
        QVERIFY2(events.last().startsWith(q("status There is no IIO device")), qPrintable(events.last()));
        addChannel(3, "4095\n");
        bed->uevent(q("/sys/devices/adc/iio:device3"), "add");
        waitFor(q("1"));
    }

private:
    void start()
    {
        events.clear();
        warning.clear();
        slider = std::make_unique<SliderInput>(
            configuration,
            SliderInput::Callbacks{[this](double position) { events << QString::number(position); },
                                   [this](const QString &problem) { events << q("status ") + problem; }});
        slider->start(&warning);
    }

    // The values at the seven steps of a calibration.
    void calibrate(const QList<int> &values)
    {
        failures.clear();
        const QList<int> commands = {2, 1, 0, 1, 0, 1, 4};
        for (int step = 0; step < commands.size(); ++step) {
            slider->setRaw(values[step], 0, 1000);
            const QString problem = slider->calibrate(commands[step]);
            if (!problem.isEmpty())
                failures << q("%1: %2").arg(commands[step]).arg(problem);
        }
    }

    void write(const QByteArray &content)
    {
        QFile file(configuration.stateFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void useBed()
    {
        if (!canMock())
            QSKIP("Run this test under umockdev-wrapper.");
        bed = std::make_unique<MockBed>();
    }

    void addChannel(int number, const char *value)
    {
        const QString node = q("N: iio:device%1\nE: DEVNAME=/dev/iio:device%1\nA: dev=251:%1\n"
                               "A: events/in_voltage1_thresh_falling_value=5\\n\n"
                               "A: events/in_voltage1_thresh_rising_value=4000\\n\n"
                               "A: events/in_voltage1_thresh_falling_en=0\\n\n"
                               "A: events/in_voltage1_thresh_rising_en=0\\n\n")
                                 .arg(number);
        bed->add(q("P: /devices/adc/iio:device%1\n%2E: SUBSYSTEM=iio\nE: DEVTYPE=iio_device\nA: name=ads1015\\n\n\n")
                     .arg(QString::number(number), ioctls ? node : QString()));
        if (ioctls)
            bed->attachIoctls(q("/dev/iio:device%1").arg(number), ioctls);
        bed->set(q("/sys/devices/adc/iio:device%1").arg(number), "in_voltage1_raw", value);
    }

    void setChannel(const char *value) { bed->set(q("/sys/devices/adc/iio:device0"), "in_voltage1_raw", value); }

    void startChannel(const char *value, const std::function<void()> &prepare = {})
    {
        addChannel(0, value);
        if (prepare)
            prepare();
        configuration.iio = SliderInput::IioChannel{q("ads1015"), q("voltage1"), 1000, usesEvents};
        configuration.range = SliderEnds{0, 4095};
        start();
    }

    // The channel has threshold events.
    void useEvents()
    {
        QCOMPARE(pipe(eventPipe), 0);
        ioctls = umockdev_ioctl_base_new();
        g_signal_connect(ioctls, "handle-ioctl", G_CALLBACK(&tst_BoardSlider::onIoctl), this);
    }

    // The kernel opens a descriptor for the events.
    static gboolean onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *self)
    {
        auto &test = *static_cast<tst_BoardSlider *>(self);
        const bool isKnown = umockdev_ioctl_client_get_request(client) == IIO_GET_EVENT_FD_IOCTL;
        if (!isKnown || test.isEventFdBusy) {
            umockdev_ioctl_client_complete(client, -1, isKnown ? EBUSY : ENOTTY);
            return TRUE;
        }
        int descriptor = dup(test.eventPipe[0]);
        test.eventFd = descriptor;
        UMockdevIoctlData *argument = umockdev_ioctl_client_get_arg(client);
        UMockdevIoctlData *target = umockdev_ioctl_data_resolve(argument, 0, sizeof descriptor, nullptr);
        umockdev_ioctl_data_update(target, 0, reinterpret_cast<guint8 *>(&descriptor), sizeof descriptor);
        umockdev_ioctl_data_unref(target);
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }

    void sendEvent()
    {
        const iio_event_data event = {};
        QCOMPARE(::write(eventPipe[1], &event, sizeof event), ssize_t(sizeof event));
    }

    void hangUp() { ::close(std::exchange(eventPipe[1], -1)); }

    static QString threshold(const char *name)
    {
        QFile file(q(Thresholds) + q(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : q("unreadable");
    }

    void waitFor(const QString &event)
    {
        QVERIFY2(pump(slider->sources(), [&] { return events.contains(event); }), qPrintable(events.join(q(", "))));
    }

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<MockBed> bed;
    SliderInput::Configuration configuration;
    std::unique_ptr<SliderInput> slider;
    UMockdevIoctlBase *ioctls = nullptr;
    int eventPipe[2] = {-1, -1};
    std::atomic<int> eventFd = -1; // that the kernel has given
    std::atomic<bool> isEventFdBusy = false;
    bool usesEvents = true;
    QString hidden; // an attribute that can't be used
    QString warning;
    QStringList failures;
    QStringList events;
};

QTEST_GUILESS_MAIN(tst_BoardSlider)
#include "tst_boardslider.moc"
