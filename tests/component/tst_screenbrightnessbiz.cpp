#include "screenbrightnessbiz.h"

#include "singletestsupport.h"

using namespace LCD::FactoryModeImpl;

namespace {

/// Returns the calls that set the brightness of the three screens.
QStringList screensAt(int level)
{
    QStringList calls;
    for (int screen = 0; screen < 3; ++screen)
        calls << QStringLiteral("keyboard.setScreenBrightness(%1, %2)").arg(screen).arg(level);
    return calls;
}

struct BrightnessSession : Session<ScreenBrightnessBiz>
{
    explicit BrightnessSession(std::initializer_list<const char *> absent = {}) : Session(absent)
    {
        registerDriverListener();
    }
};

}

class ScreenBrightnessBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enterChangesNoBrightness()
    {
        BrightnessSession session;
        QCOMPARE(session.host.lookups,
                 (QStringList{QStringLiteral("lcdFactoryModeBiz"), QStringLiteral("lcdKeyboardEvent")}));
        session->enter();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("factoryBiz.setFactoryTestType(0)"), QStringLiteral("state 0")}));
    }

    void startSetsTheScreensAndThenAnnounces()
    {
        BrightnessSession session;
        session->startTest();
        QCOMPARE(session.take(), screensAt(10) << QStringLiteral("state 10"));
        QCOMPARE(session->state(), 10);
    }

    void nineStepsShowTheLevelsTwiceAndAnnounceNothing()
    {
        BrightnessSession session;
        session->startTest();
        session.take();
        for (const int level : {30, 50, 70, 100, 10, 30, 50, 70, 100}) {
            session->nextStep();
            QCOMPARE(session.take(), screensAt(level));
            QCOMPARE(session->state(), level);
        }
    }

    void tenthStepAnnouncesTheEndAndSetsNothing()
    {
        BrightnessSession session;
        session->startTest();
        repeat(9, [&] { session->nextStep(); });
        session.take();
        session->nextStep();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 101")});
        QCOMPARE(session->state(), 101);
    }

    void secondRunAfterAnEndHasTwoTripsAgain()
    {
        BrightnessSession session;
        repeat(2, [&] {
            session->startTest();
            repeat(9, [&] { session->nextStep(); });
            QCOMPARE(session->state(), 100);
            session->nextStep();
            QCOMPARE(session->state(), 101);
        });
    }

    void stepOutsideAWalkChangesNothing_data()
    {
        QTest::addColumn<int>("state");
        for (const int state : {0, 101, 102, 103})
            QTest::addRow("state %d", state) << state;
    }

    void stepOutsideAWalkChangesNothing()
    {
        QFETCH(int, state);
        BrightnessSession session;
        session->startTest();
        repeat(10, [&] { session->nextStep(); });
        if (state == 0)
            session->reTest();
        else if (state == 102)
            session->setNotPass();
        else if (state == 103)
            session->setPass();
        session.take();
        session->nextStep();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), state);
    }

    void verdictLeavesTheScreensAtTheirLevel()
    {
        BrightnessSession session;
        session->startTest();
        repeat(2, [&] { session->nextStep(); });
        session.take();
        session->setNotPass();
        session->setPass();
        session->reTest();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 102"), QStringLiteral("state 103"), QStringLiteral("state 0")}));
    }

    void startAfterASecondTripWithoutResetRunsOneTripOnly()
    {
        BrightnessSession session;
        session->startTest();
        repeat(6, [&] { session->nextStep(); });
        session->setNotPass();
        session->startTest();
        repeat(4, [&] { session->nextStep(); });
        QCOMPARE(session->state(), 100);
        session->nextStep();
        QCOMPARE(session->state(), 101);
    }

    void resetForgetsTheTrip_data()
    {
        QTest::addColumn<bool>("byEnter");
        QTest::newRow("enter") << true;
        QTest::newRow("reTest") << false;
    }

    void resetForgetsTheTrip()
    {
        QFETCH(bool, byEnter);
        BrightnessSession session;
        session->startTest();
        repeat(6, [&] { session->nextStep(); });
        byEnter ? session->enter() : session->reTest();
        session->startTest();
        repeat(5, [&] { session->nextStep(); });
        QCOMPARE(session->state(), 10);
    }

    void restoringAfterAPassKeepsTheState()
    {
        BrightnessSession session;
        session->startTest();
        session->setPass();
        session.take();
        session->restoreBrightnessToNormal();
        QCOMPARE(session.take(), screensAt(100));
        QCOMPARE(session->state(), 103);
    }

    void restoringInASecondTripKeepsTheTrip()
    {
        BrightnessSession session;
        session->startTest();
        repeat(6, [&] { session->nextStep(); });
        session->restoreBrightnessToNormal();
        QCOMPARE(session->state(), 30);
        repeat(4, [&] { session->nextStep(); });
        QCOMPARE(session->state(), 101);
    }

    void walksOnWithoutAnyService()
    {
        BrightnessSession session{"lcdKeyboardEvent", "lcdFactoryModeBiz"};
        session->enter();
        session->startTest();
        repeat(10, [&] { session->nextStep(); });
        session->restoreBrightnessToNormal();
        session->setPass();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 0"), QStringLiteral("state 10"), QStringLiteral("state 101"),
                              QStringLiteral("state 103")}));
        QCOMPARE(session.log.lines(), QStringList());
    }
};

QTEST_MAIN(ScreenBrightnessBizTest)
#include "tst_screenbrightnessbiz.moc"
