#include "tbartestbiz.h"

#include "singletestsupport.h"

namespace LCD::FactoryModeImpl {

void completeStep(TbarTestBiz &biz, int stepIndex);

// Declares a member of the private class that no code of the component calls, so that this test can call it.
class TbarTestBiz::Impl
{
public:
    void onStepComplete(int stepIndex, int);
    static void complete(TbarTestBiz &biz, int stepIndex) { biz.d->onStepComplete(stepIndex, 0); }
    friend void completeStep(TbarTestBiz &biz, int stepIndex) { complete(biz, stepIndex); }
};

}

using namespace LCD::FactoryModeImpl;

namespace {

QString caption(bool last)
{
    return last ? QStringLiteral("caption last") : QStringLiteral("caption next");
}

QString command(int code)
{
    return QStringLiteral("tbar.setBarCalibration(0, %1, 0)").arg(code);
}

struct TbarSession : Session<TbarTestBiz>
{
    explicit TbarSession(std::initializer_list<const char *> absent = {}) : Session(absent)
    {
        biz().registerStateCallback("driver", [this](int state) { add(QStringLiteral("state %1").arg(state)); });
        biz().registerRightBtnTextCallback("driver", [this](bool last) { add(caption(last)); });
    }
    void begin()
    {
        biz().enter();
        biz().startTest();
        take();
        log.clear();
    }
    void press(int times)
    {
        repeat(times, [this] { biz().requestNextStep(); });
        take();
        log.clear();
    }
    QStringList callsOfPress()
    {
        take();
        biz().requestNextStep();
        return take();
    }
};

const QString Completed = QStringLiteral("debug|[TbarTestBiz] T-Bar calibration completed");
const QString Failed = QStringLiteral("warning|[TbarTestBiz] T-Bar calibration end failed");

}

class TbarTestBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enterTellsTheTypeAndAnnounces()
    {
        TbarSession session;
        QCOMPARE(session.host.lookups,
                 (QStringList{QStringLiteral("lcdFactoryModeBiz"), QStringLiteral("lcdKeyboardEvent"),
                              QStringLiteral("lcdTBarCalibration")}));
        session->enter();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("factoryBiz.setFactoryTestType(6)"), QStringLiteral("state 0")}));
    }

    void startAnnouncesThenTellsTheCaptionThenListens()
    {
        TbarSession session;
        session->startTest();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 1"), caption(false),
                              QStringLiteral("tbar.registerBarCalibrationCallback(TbarTestBiz)")}));
        QCOMPARE(session->currentStepIndex(), 0);
    }

    void step_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("next");
        QTest::addColumn<bool>("last");
        QTest::newRow("0") << 0 << 2 << 1 << false;
        QTest::newRow("1") << 1 << 1 << 2 << false;
        QTest::newRow("2") << 2 << 0 << 3 << false;
        QTest::newRow("3") << 3 << 1 << 4 << false;
        QTest::newRow("4") << 4 << 0 << 5 << false;
        QTest::newRow("5") << 5 << 1 << 6 << true;
    }

    void step()
    {
        QFETCH(int, step);
        QFETCH(int, code);
        QFETCH(int, next);
        QFETCH(bool, last);
        TbarSession session;
        session.begin();
        session.press(step);
        QCOMPARE(session.callsOfPress(), (QStringList{caption(last), command(code)}));
        QCOMPARE(session.log.lines(),
                 QStringList{QStringLiteral("debug|[TbarTestBiz] requestNextStep: cur= %1").arg(step)});
        QCOMPARE(session->currentStepIndex(), next);
        QCOMPARE(session->state(), 1);
    }

    void lastStepPassesSilently()
    {
        TbarSession session;
        session.begin();
        session.press(6);
        QCOMPARE(session.callsOfPress(), (QStringList{caption(true), QStringLiteral("state 1"), command(4)}));
        QCOMPARE(session->currentStepIndex(), 0);
        QCOMPARE(session->state(), 103);
    }

    void lastStepGoesInOrder()
    {
        TbarSession session;
        QStringList seen;
        const auto note = [&](const char *where) {
            seen << QStringLiteral("%1: step %2, state %3")
                        .arg(QLatin1String(where))
                        .arg(session->currentStepIndex())
                        .arg(session->state());
        };
        session.begin();
        session.press(6);
        session->registerRightBtnTextCallback("driver", [&](bool) { note("caption"); });
        session->registerStateCallback("driver", [&](int) { note("state"); });
        session->requestNextStep();
        note("after");
        QCOMPARE(seen,
                 (QStringList{QStringLiteral("caption: step 7, state 1"), QStringLiteral("state: step 7, state 1"),
                              QStringLiteral("after: step 0, state 103")}));
    }

    void stepIsStoredBeforeTheCaption()
    {
        TbarSession session;
        session.begin();
        int seen = -1;
        session->registerRightBtnTextCallback("driver", [&](bool) { seen = session->currentStepIndex(); });
        session->requestNextStep();
        QCOMPARE(seen, 1);
    }

    void eighthPressBeginsAgain()
    {
        TbarSession session;
        session.begin();
        session.press(7);
        QCOMPARE(session.callsOfPress(), (QStringList{caption(false), command(2)}));
        QCOMPARE(session->state(), 103);
        QCOMPARE(session->currentStepIndex(), 1);
    }

    void stepPastTheEndIsLoggedAndSendsNothing()
    {
        TbarSession session;
        session.begin();
        session.press(6);
        completeStep(session.biz(), 6);
        QCOMPARE(session->currentStepIndex(), 7);
        QCOMPARE(session.callsOfPress(), QStringList());
        QCOMPARE(session.log.lines(),
                 (QStringList{QStringLiteral("debug|[TbarTestBiz] requestNextStep: cur= 7"),
                              QStringLiteral("debug|[TbarTestBiz] requestNextStep: cur= 7  -> default, no op")}));
        QCOMPARE(session->currentStepIndex(), 7);
    }

    void pressesNeedNoStart()
    {
        TbarSession session;
        session->enter();
        QCOMPARE(session.callsOfPress(), (QStringList{caption(false), command(2)}));
        QCOMPARE(session->state(), 0);
    }

    void completion_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("lines");
        for (int step = 0; step < 7; ++step) {
            for (const bool ok : {true, false}) {
                const QStringList lines = step < 6 ? QStringList() : QStringList{ok ? Completed : Failed};
                QTest::addRow("step %d, %s", step, ok ? "ok" : "failed") << step << ok << lines;
            }
        }
    }

    void completion()
    {
        QFETCH(int, step);
        QFETCH(bool, ok);
        TbarSession session;
        session.begin();
        session.press(7);
        session.host.tbarCalibration.results.at(static_cast<std::size_t>(step))(ok, "message");
        QTEST(session.log.lines(), "lines");
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 103);
        QCOMPARE(session->currentStepIndex(), 0);
    }

    void completionOnEveryThread_data() { addOrigins(); }

    void completionOnEveryThread()
    {
        TbarSession session;
        session.begin();
        session.press(7);
        const auto result = session.host.tbarCalibration.results.at(6);
        runOn(fetchOrigin(), [&] {
            result(true, {});
            result(false, {});
        });
        QCOMPARE(session.log.lines(), (QStringList{Completed, Failed}));
    }

    // A report is queued to the object's thread and changes nothing there.
    void reportOnEveryThread_data() { addOrigins(); }

    void reportOnEveryThread()
    {
        TbarSession session;
        session.begin();
        LCD::ProtocolImpl::s_BarCalibration record;
        record.command = 4;
        runOn(fetchOrigin(), [&] { QVERIFY(session.host.tbarCalibration.listener.fire(record)); });
        QCoreApplication::sendPostedEvents();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 1);
        QCOMPARE(session->currentStepIndex(), 0);
        QCOMPARE(session.log.lines(), QStringList());
    }

    void reportWaitingForTheThreadIsDroppedWithTheObject()
    {
        TbarSession session;
        session.begin();
        session.host.tbarCalibration.listener.fire(LCD::ProtocolImpl::s_BarCalibration());
        session.destroy();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(session.take(), QStringList());
    }

    void stepCompletesOnlyWhileRunningAndInTurn()
    {
        TbarSession session;
        completeStep(session.biz(), 0);
        QCOMPARE(session->currentStepIndex(), 0);
        session.begin();
        completeStep(session.biz(), 1);
        QCOMPARE(session->currentStepIndex(), 0);
        completeStep(session.biz(), 0);
        QCOMPARE(session->currentStepIndex(), 1);
        session->setNotPass();
        completeStep(session.biz(), 1);
        QCOMPARE(session->currentStepIndex(), 1);
    }

    void sixthCompletedStepIsTheEnd()
    {
        TbarSession session{"lcdTBarCalibration"};
        session.begin();
        for (int step = 0; step < 5; ++step)
            completeStep(session.biz(), step);
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 1);
        completeStep(session.biz(), 5);
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 101")});
        QCOMPARE(session->currentStepIndex(), 6);
    }

    void withoutAKeyboardItWarnsAndChangesNothing()
    {
        TbarSession session{"lcdKeyboardEvent"};
        session->setNotPass();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 102);
        QCOMPARE(session.log.lines(), QStringList{QStringLiteral("warning|[TbarTestBiz] KeyboardEvent not found")});
    }

    void withoutACalibrationServiceItRunsAndStepsNowhere()
    {
        TbarSession session{"lcdTBarCalibration"};
        session->startTest();
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state 1"), caption(false)}));
        QCOMPARE(session.callsOfPress(), QStringList());
        QCOMPARE(session->currentStepIndex(), 0);
        QCOMPARE(session.log.lines(), QStringList());
    }

    void verdictsAndAgain()
    {
        TbarSession session;
        session.begin();
        session.press(3);
        session->setNotPass();
        QCOMPARE(session->failCount(), 0);
        QCOMPARE(session->state(), 102);
        session->setPass();
        QCOMPARE(session->state(), 103);
        QCOMPARE(session->currentStepIndex(), 3);
        session->reTest();
        QCOMPARE(session->currentStepIndex(), 0);
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("state 102"), QStringLiteral("state 103"), QStringLiteral("state 0")}));
    }

    void everyListenerOfBothTablesIsCalled()
    {
        TbarSession session;
        session->registerStateCallback("", [&](int) { session.add(QStringLiteral("<>")); });
        session->registerRightBtnTextCallback("z", [&](bool) { session.add(QStringLiteral("<z>")); });
        session->registerRightBtnTextCallback("z", nullptr);
        session->startTest();
        QCOMPARE(session.take().mid(0, 4),
                 (QStringList{QStringLiteral("<>"), QStringLiteral("state 1"), caption(false), QStringLiteral("<z>")}));
    }
};

QTEST_MAIN(TbarTestBizTest)
#include "tst_tbartestbiz.moc"
