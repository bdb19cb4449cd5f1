#include "buttonlightbiz.h"

#include "singletestsupport.h"

using namespace LCD::FactoryModeImpl;

namespace {

QString keysAt(int level)
{
    return QStringLiteral("keyboard.setAllButtonBrightness(%1)").arg(level);
}

QString lineOf(int level)
{
    return QStringLiteral("debug|updateButtonLightBiz 1111111111111111111111111111: : %1").arg(level);
}

struct LightSession : Session<ButtonLightBiz>
{
    explicit LightSession(std::initializer_list<const char *> absent = {}) : Session(absent)
    {
        registerDriverListener();
    }
    void walk(int steps)
    {
        biz().startTest();
        repeat(steps, [this] { biz().nextStep(); });
        take();
        log.clear();
    }
};

}

class ButtonLightBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enterChangesNoLed()
    {
        LightSession session;
        QCOMPARE(session.host.lookups,
                 (QStringList{QStringLiteral("lcdFactoryModeBiz"), QStringLiteral("lcdKeyboardEvent")}));
        session->enter();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("factoryBiz.setFactoryTestType(2)"), QStringLiteral("state 0")}));
        QCOMPARE(session.log.lines(), QStringList());
    }

    void startLightsTheKeysAndThenAnnounces()
    {
        LightSession session;
        session->startTest();
        QCOMPARE(session.take(), (QStringList{keysAt(10), QStringLiteral("state 10")}));
        QCOMPARE(session.log.lines(), QStringList{lineOf(10)});
    }

    void nineStepsShowTheLevelsTwiceWithALineEach()
    {
        LightSession session;
        session.walk(0);
        for (const int level : {30, 50, 70, 100, 10, 30, 50, 70, 100}) {
            session.log.clear();
            session->nextStep();
            QCOMPARE(session.take(), QStringList{keysAt(level)});
            QCOMPARE(session.log.lines(), QStringList{lineOf(level)});
            QCOMPARE(session->state(), level);
        }
    }

    void tenthStepPutsTheKeysOutWithoutALineAndThenAnnounces()
    {
        LightSession session;
        session.walk(9);
        session->nextStep();
        QCOMPARE(session.take(), (QStringList{keysAt(0), QStringLiteral("state 101")}));
        QCOMPARE(session.log.lines(), QStringList());
        QCOMPARE(session->state(), 101);
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
        LightSession session;
        session.walk(10);
        if (state == 0)
            session->reTest();
        else if (state == 102)
            session->setNotPass();
        else if (state == 103)
            session->setPass();
        session.take();
        session->nextStep();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session.log.lines(), QStringList());
        QCOMPARE(session->state(), state);
    }

    void verdictLeavesTheKeysAtTheirLevel()
    {
        LightSession session;
        session.walk(2);
        session->setNotPass();
        session->setPass();
        session->reTest();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 102"), QStringLiteral("state 103"), QStringLiteral("state 0")}));
        QCOMPARE(session.log.lines(), QStringList());
    }

    void startAfterASecondTripWithoutResetRunsOneTripOnly()
    {
        LightSession session;
        session.walk(6);
        session->setNotPass();
        session.walk(4);
        QCOMPARE(session->state(), 100);
        session->nextStep();
        QCOMPARE(session->state(), 101);
    }

    void endResetsTheTrips()
    {
        LightSession session;
        session.walk(10);
        session.walk(5);
        QCOMPARE(session->state(), 10);
    }

    void resetForgetsTheTrip()
    {
        LightSession session;
        session.walk(6);
        session->reTest();
        session.walk(5);
        QCOMPARE(session->state(), 10);
        session->enter();
        session.walk(5);
        QCOMPARE(session->state(), 10);
    }

    void withoutAKeyboardTheLinesAndTheStatesStay()
    {
        LightSession session{"lcdKeyboardEvent"};
        session->startTest();
        QCOMPARE(session.log.lines(), QStringList{lineOf(10)});
        repeat(9, [&] { session->nextStep(); });
        session.log.clear();
        session->nextStep();
        QCOMPARE(session.log.lines(), QStringList());
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state 10"), QStringLiteral("state 101")}));
    }

    // There is no current requester yet.
    void announcesToNobodyAtFirst()
    {
        Session<ButtonLightBiz> session;
        QStringList heard;
        session->registerStateCallback("driver", [&](int) { heard << QStringLiteral("driver"); });
        session->startTest();
        QCOMPARE(session->state(), 10);
        QCOMPARE(heard, QStringList());
    }
};

QTEST_MAIN(ButtonLightBizTest)
#include "tst_buttonlightbiz.moc"
