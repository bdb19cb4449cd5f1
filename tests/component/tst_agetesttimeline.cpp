#include "agetestfixture.h"
#include "emulation.h"
#include "virtualtime.h"

#include <QtCore/QElapsedTimer>
#include <QtTest/QtTest>

#include <malloc.h>

namespace {

/// The expected calls, each with its time in seconds.
class Timeline
{
public:
    void at(int second) { m_second = second; }
    int second() const { return m_second; }
    void call(const QString &call) { m_calls << QStringLiteral("%1 %2").arg(m_second).arg(call); }
    void write(const QString &step, const QString &failures)
    {
        call(QStringLiteral("clear"));
        call(QStringLiteral("white [FCAging]") + step);
        call(QStringLiteral("red ") + failures);
    }
    void screens(int level)
    {
        for (int screen = 0; screen < 3; ++screen)
            call(QStringLiteral("keyboard.setScreenBrightness(%1, %2)").arg(screen).arg(level));
    }
    void keys(int level) { call(QStringLiteral("keyboard.setAllButtonBrightness(%1)").arg(level)); }
    void pattern(int type, int index)
    {
        call(QStringLiteral("keyboard.setLcdTestPattern(%1, %2)").arg(type).arg(index));
    }
    void testType(int type) { call(QStringLiteral("factoryBiz.setFactoryTestType(%1)").arg(type)); }
    QStringList calls() const { return m_calls; }

private:
    int m_second = 0;
    QStringList m_calls;
};

const std::vector<int> LevelsAfterTheFirst = {30, 50, 70, 100, 10, 30, 50, 70, 100};

void brightnessStep(Timeline &line, int from, const QString &firstSuffix, const QString &failures)
{
    line.at(from);
    line.write(QStringLiteral("[FCScreenLight]") + firstSuffix, failures);
    line.testType(0);
    line.screens(10);
    for (const int level : LevelsAfterTheFirst) {
        line.at(line.second() + 2);
        line.screens(level);
        line.write(QStringLiteral("[FCScreenLight] %1%").arg(level), failures);
    }
}

void badPixelStep(Timeline &line, int from, const QString &failures)
{
    line.at(from);
    line.write(QStringLiteral("[FCScreenBadPixel]"), failures);
    line.testType(1);
    line.pattern(1, 1);
    line.write(QStringLiteral("[FCScreenBadPixel]"), failures);
    const std::vector<std::pair<int, int>> patterns = {{1, 2}, {1, 3}, {1, 4}, {3, 1}, {3, 1}, {3, 2},
                                                       {3, 2}, {3, 3}, {3, 3}, {3, 4}, {3, 4}};
    for (const auto &[type, index] : patterns) {
        line.at(line.second() + 3);
        line.pattern(type, index);
    }
    line.at(line.second() + 3);
    line.pattern(0, 0);
}

void buttonLightStep(Timeline &line, int from, const QString &firstSuffix, const QString &failures)
{
    line.at(from);
    line.write(QStringLiteral("[FCBtnLight]") + firstSuffix, failures);
    line.testType(2);
    line.keys(10);
    for (const int level : LevelsAfterTheFirst) {
        line.at(line.second() + 2);
        line.keys(level);
        line.write(QStringLiteral("[FCBtnLight] %1%").arg(level), failures);
    }
    line.at(line.second() + 2);
    line.keys(0);
    line.call(QStringLiteral("finished"));
}

void netStep(Timeline &line, int from, const QString &failures)
{
    line.at(from);
    line.write(QStringLiteral("[FCNet]"), failures);
    line.testType(10);
    line.call(QStringLiteral("networkPort.registerReportCallback(NetPortTestBiz, 2)"));
    line.call(QStringLiteral("networkPort.registerChangedCallback(NetPortTestBiz, 2)"));
    line.write(QStringLiteral("[FCNet]"), failures);
}

void usbStep(Timeline &line, int from, const QString &failures)
{
    line.at(from);
    line.write(QStringLiteral("[FCUSB]"), failures);
    line.testType(9);
    line.call(QStringLiteral("usb.registerReportCallback(UsbPortTestBiz, 2)"));
    line.call(QStringLiteral("usb.registerChangedCallback(UsbPortTestBiz, 2)"));
}

struct Round
{
    QString suffix;
    QString before;
    QString afterNet;
};

/// A round from second @p from, with the net report 4 s and the USB report 9 s after the port steps began.
void round(Timeline &line, int from, const Round &texts)
{
    brightnessStep(line, from, texts.suffix, texts.before);
    badPixelStep(line, from + 20, texts.before);
    buttonLightStep(line, from + 56, texts.suffix, texts.before);
    netStep(line, from + 76, texts.before);
    usbStep(line, from + 80, texts.afterNet);
}

QStringList stamped(const QStringList &calls, int second)
{
    QStringList result;
    for (const QString &call : calls)
        result << QStringLiteral("%1 %2").arg(second).arg(call);
    return result;
}

/// Advances the clock second by second and records each call with its time in seconds.
void runSeconds(AgeTestFixture &fixture, int seconds, int &now, QStringList &calls)
{
    for (int i = 0; i < seconds; ++i) {
        VirtualTime::advance(1000);
        calls << stamped(fixture.take(), ++now);
    }
}

std::size_t heapInUse()
{
    return mallinfo2().uordblks;
}

}

/// Whole rounds of the aging test, call by call.
class AgeTestTimelineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threeRounds()
    {
        const QString none = QStringLiteral(" ");
        const QString net = QStringLiteral(" [FCAgeNetNoPass]");
        Timeline expected;
        round(expected, 0, {QStringLiteral(" 10%"), none, net});
        round(expected, 85, {QString(), net, none});
        round(expected, 170, {QString(), none, none});
        brightnessStep(expected, 255, QString(), none);

        AgeTestFixture fixture;
        QStringList calls;
        int now = 0;
        fixture.biz->start();
        calls << stamped(fixture.take(), now);
        for (const bool netUp : {false, true, true}) {
            runSeconds(fixture, 80, now, calls);
            fixture.netChanged({{0, true}, {1, netUp}});
            calls << stamped(fixture.take(), now);
            runSeconds(fixture, 5, now, calls);
            fixture.usbChanged({{4}});
            calls << stamped(fixture.take(), now);
        }
        runSeconds(fixture, 18, now, calls);

        QCOMPARE(calls, expected.calls());
    }

    void aThousandRounds()
    {
        QElapsedTimer wall;
        wall.start();
        AgeTestFixture fixture;
        fixture.biz->start();
        [[maybe_unused]] std::size_t afterTen = 0;
        for (int rounds = 1; rounds <= 1000; ++rounds) {
            fixture.runToNetStep();
            fixture.netChanged({{0, rounds % 3 != 0}});
            fixture.usbChanged({{4, 26, rounds % 5 != 0}});
            const QStringList calls = fixture.take();
            fixture.host.lookups.clear();
            QCOMPARE(calls.filter(QStringLiteral("white [FCAging][FCUSB]")).size(), 1);
            QCOMPARE(calls.filter(QStringLiteral("finished")).size(), 1);
            if (rounds == 10)
                afterTen = heapInUse();
        }
        QVERIFY2(wall.elapsed() < emulatedLimit(20000), qPrintable(QStringLiteral("%1 ms").arg(wall.elapsed())));
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        const auto growth = static_cast<qint64>(heapInUse()) - static_cast<qint64>(afterTen);
        QVERIFY2(growth < 16 * 1024, qPrintable(QStringLiteral("grown by %1 bytes").arg(growth)));
#endif
        qInfo("1000 rounds, %lld virtual seconds, in %lld ms", VirtualTime::now() / 1000, wall.elapsed());
    }
};

VIRTUAL_TIME_TEST_MAIN(AgeTestTimelineTest)
#include "tst_agetesttimeline.moc"
