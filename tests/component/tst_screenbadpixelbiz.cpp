#include "screenbadpixelbiz.h"

#include "singletestsupport.h"

using namespace LCD::FactoryModeImpl;

namespace {

/// Returns the two calls that show a test pattern.
QStringList shown(int type, int index, int level)
{
    return {QStringLiteral("keyboard.setLcdTestPattern(%1, %2)").arg(type).arg(index),
            QStringLiteral("widget.notifyTestPatternChanged(%1, %2, %3)").arg(type).arg(index).arg(level)};
}

QStringList cleared()
{
    return shown(0, 0, 0);
}

struct BadPixelSession : Session<ScreenBadPixelBiz>
{
    explicit BadPixelSession(std::initializer_list<const char *> absent = {}) : Session(absent), widget(host)
    {
        registerDriverListener();
    }
    /// Returns the calls of one operation.
    template <class Operation>
    QStringList callsOf(const Operation &operation)
    {
        take();
        operation();
        return take();
    }

    RecordingWidget widget;
};

}

class ScreenBadPixelBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looksItsServicesUpOnceInOrder()
    {
        BadPixelSession session;
        QCOMPARE(session.host.lookups,
                 (QStringList{QStringLiteral("lcdFactoryModeBiz"), QStringLiteral("lcdKeyboardEvent"),
                              QStringLiteral("lcdMemoryCacheScreenDetail")}));
    }

    void enterShowsNoPattern()
    {
        BadPixelSession session;
        session->enter();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("factoryBiz.setFactoryTestType(1)"), QStringLiteral("state 0")}));
    }

    void startShowsTheFirstPatternAndThenAnnounces()
    {
        BadPixelSession session;
        session->startTest();
        QCOMPARE(session.take(), shown(1, 1, 0) << QStringLiteral("state 1"));
        QCOMPARE(session->state(), 1);
    }

    void pattern_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("level");
        const int patterns[12][3] = {{1, 1, 0},   {1, 2, 0},   {1, 3, 0},   {1, 4, 0},   {3, 1, 128}, {3, 1, 255},
                                     {3, 2, 128}, {3, 2, 255}, {3, 3, 128}, {3, 3, 255}, {3, 4, 128}, {3, 4, 255}};
        for (int step = 0; step < 12; ++step)
            QTest::addRow("step %d", step) << step << patterns[step][0] << patterns[step][1] << patterns[step][2];
    }

    void pattern()
    {
        QFETCH(int, step);
        QFETCH(int, type);
        QFETCH(int, index);
        QFETCH(int, level);
        BadPixelSession session;
        session->startTest();
        QStringList announced = {QStringLiteral("state 1")};
        repeat(step, [&] {
            session.take();
            announced.clear();
            session->nextStep();
        });
        QCOMPARE(session.take(), shown(type, index, level) + announced);
        QCOMPARE(session->state(), 1);
    }

    void twelfthStepClearsOnceAndThenAnnounces()
    {
        BadPixelSession session;
        session->startTest();
        repeat(11, [&] { session->nextStep(); });
        QCOMPARE(session.callsOf([&] { session->nextStep(); }), cleared() << QStringLiteral("state 101"));
        QCOMPARE(session->state(), 101);
    }

    void stepPastTheEndClearsAndAnnouncesAgain()
    {
        BadPixelSession session;
        session->startTest();
        repeat(12, [&] { session->nextStep(); });
        repeat(2, [&] {
            QCOMPARE(session.callsOf([&] { session->nextStep(); }), cleared() << QStringLiteral("state 101"));
        });
    }

    void verdictInTheMiddleClearsAtOnce_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("pass") << 103;
        QTest::newRow("not pass") << 102;
        QTest::newRow("again") << 0;
    }

    void verdictInTheMiddleClearsAtOnce()
    {
        QFETCH(int, code);
        BadPixelSession session;
        session->startTest();
        repeat(5, [&] { session->nextStep(); });
        session.take();
        giveVerdict(session.biz(), code);
        QCOMPARE(session.take(), cleared() << QStringLiteral("state %1").arg(code));
        QCOMPARE(session->state(), code);
    }

    // The screens stay cleared. After twelve steps the test ends as if the patterns had been shown.
    void stepsAfterAVerdictShowNothing_data() { verdictInTheMiddleClearsAtOnce_data(); }

    void stepsAfterAVerdictShowNothing()
    {
        QFETCH(int, code);
        BadPixelSession session;
        session->startTest();
        repeat(3, [&] { session->nextStep(); });
        giveVerdict(session.biz(), code);
        for (int step = 1; step <= 11; ++step) {
            QCOMPARE(session.callsOf([&] { session->nextStep(); }), cleared());
            QCOMPARE(session->state(), code);
        }
        QCOMPARE(session.callsOf([&] { session->nextStep(); }), cleared() << QStringLiteral("state 101"));
        QCOMPARE(session->state(), 101);
    }

    void startAfterAVerdictBeginsAtTheFirstPattern()
    {
        BadPixelSession session;
        session->startTest();
        repeat(3, [&] { session->nextStep(); });
        session->reTest();
        QCOMPARE(session.callsOf([&] { session->startTest(); }), shown(1, 1, 0) << QStringLiteral("state 1"));
        QCOMPARE(session.callsOf([&] { session->nextStep(); }), shown(1, 2, 0));
    }

    void stepsAfterEnterShowPatternsFromTheSecond()
    {
        BadPixelSession session;
        session->enter();
        QCOMPARE(session.callsOf([&] { session->nextStep(); }), shown(1, 2, 0));
        QCOMPARE(session->state(), 0);
    }

    void keyboardGetsEveryPatternWithoutAWidget()
    {
        BadPixelSession session;
        session.host.remove("lcdFactoryModeWidget");
        QStringList expected = {QStringLiteral("factoryBiz.setFactoryTestType(1)"), QStringLiteral("state 0")};
        for (const char *pattern :
             {"1, 1", "1, 2", "1, 3", "1, 4", "3, 1", "3, 1", "3, 2", "3, 2", "3, 3", "3, 3", "3, 4", "3, 4", "0, 0"})
            expected << QStringLiteral("keyboard.setLcdTestPattern(%1)").arg(QLatin1String(pattern));
        expected.insert(3, QStringLiteral("state 1"));
        QCOMPARE(session.callsOf([&] { walkToTheEnd(session.biz()); }), expected << QStringLiteral("state 101"));
    }

    void screenDetailChangesNothing()
    {
        BadPixelSession with;
        const QStringList calls = with.callsOf([&] { walkToTheEnd(with.biz()); });
        BadPixelSession without{"lcdMemoryCacheScreenDetail"};
        QCOMPARE(without.callsOf([&] { walkToTheEnd(without.biz()); }), calls);
        QCOMPARE(calls.size(), 2 + 13 * 2 + 2);
        QCOMPARE(without.log.lines(), with.log.lines());
    }

    void widgetGetsEveryPatternWithoutAKeyboard()
    {
        BadPixelSession session{"lcdKeyboardEvent", "lcdFactoryModeBiz", "lcdMemoryCacheScreenDetail"};
        session->enter();
        session->startTest();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 0"), QStringLiteral("widget.notifyTestPatternChanged(1, 1, 0)"),
                              QStringLiteral("state 1")}));
        QCOMPARE(session.log.lines(), QStringList());
    }

    void widgetIsLookedUpForEachPattern()
    {
        BadPixelSession session;
        session->startTest();
        session.host.remove("lcdFactoryModeWidget");
        QCOMPARE(session.callsOf([&] { session->nextStep(); }),
                 QStringList{QStringLiteral("keyboard.setLcdTestPattern(1, 2)")});
        const RecordingWidget another(session.host);
        QCOMPARE(session.callsOf([&] { session->nextStep(); }), shown(1, 3, 0));
    }

private:
    static void walkToTheEnd(ScreenBadPixelBiz &biz)
    {
        biz.enter();
        biz.startTest();
        repeat(12, [&biz] { biz.nextStep(); });
    }
    static void giveVerdict(ScreenBadPixelBiz &biz, int code)
    {
        if (code == 103)
            biz.setPass();
        else if (code == 102)
            biz.setNotPass();
        else
            biz.reTest();
    }
};

QTEST_MAIN(ScreenBadPixelBizTest)
#include "tst_screenbadpixelbiz.moc"
