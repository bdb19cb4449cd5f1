#include "buttonfunctionbiz.h"

#include "singletestsupport.h"

using namespace LCD::FactoryModeImpl;

namespace {

using Keys = QList<QPair<int, QString>>;

Keys abc()
{
    return {{1, QStringLiteral("A")}, {2, QStringLiteral("B")}, {3, QStringLiteral("C")}};
}

/// Returns the calls that set the LED of one key.
QStringList led(int halKey, int mode, int color)
{
    return {QStringLiteral("keyboard.setKeyLedUpdating(true)"),
            QStringLiteral("keyboard.setKeyLed(%1, {color %2, mode %3, brightness 100, period 800})")
                .arg(halKey)
                .arg(color)
                .arg(mode),
            QStringLiteral("keyboard.setKeyLedUpdating(false)")};
}

QStringList blinks(int halKey, int color = 2)
{
    return led(halKey, 1, color);
}

QStringList steady(int halKey, int color = 2)
{
    return led(halKey, 0, color);
}

const QString Dark = QStringLiteral("keyboard.setAllButtonBrightness(0)");
const QString Removed = QStringLiteral("keyboard.registerKeyCallback(empty)");

struct ButtonSession : Session<ButtonFunctionBiz>
{
    explicit ButtonSession(const Keys &keys, std::initializer_list<const char *> absent = {})
        : Session(absent), widget(host, keys)
    {
        for (const char *name : absent)
            host.remove(name);
        biz().registerStateCallback("driver", [this](int state, int failCount) {
            add(QStringLiteral("state %1, failed %2").arg(state).arg(failCount));
        });
        log.clear();
    }
    void begin()
    {
        biz().enter();
        biz().startTest();
        take();
        log.clear();
    }
    QStringList callsOfPress(unsigned halKey)
    {
        take();
        host.keyboard.press(halKey);
        return take();
    }
    QStringList callsOfSkip()
    {
        take();
        biz().skipCurrentStep();
        return take();
    }

    KeyListWidget widget;
};

}

class ButtonFunctionBizTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enterListensAndAnnouncesNothing()
    {
        ButtonSession session(abc());
        QCOMPARE(session.host.lookups.mid(0, 1), QStringList{QStringLiteral("lcdKeyboardEvent")});
        session->enter();
        QCOMPARE(session.take(), QStringList{QStringLiteral("keyboard.registerKeyCallback(listener)")});
        QCOMPARE(session->state(), 0);
    }

    void startLetsTheFirstKeyBlink()
    {
        ButtonSession session(abc());
        session->enter();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark} + blinks(1));
        QCOMPARE(session.log.lines(),
                 QStringList{QStringLiteral("debug|[ButtonFunctionBiz] Blinking light: halKey= 1 name= \"A\"")});
        QCOMPARE(session->state(), 0);
    }

    void walkThroughThreeKeys()
    {
        ButtonSession session(abc());
        session.begin();
        QCOMPARE(session.callsOfPress(2), QStringList());
        QCOMPARE(session.callsOfPress(1), steady(1) + blinks(2));
        QCOMPARE(session.callsOfPress(2), steady(2) + blinks(3));
        QCOMPARE(session->state(), 0);
        QCOMPARE(session.callsOfPress(77), steady(3) << QStringLiteral("state 101, failed 0"));
        QCOMPARE(session->state(), 101);
    }

    void pressIsLoggedAndAWrongKeyIsNot()
    {
        ButtonSession session(abc());
        session.begin();
        session.callsOfPress(2);
        QCOMPARE(session.log.lines(), QStringList());
        session.callsOfPress(1);
        QCOMPARE(session.log.lines(),
                 (QStringList{QStringLiteral("debug|[ButtonFunctionBiz] Pressed key: halKey= 1 name= \"A\""),
                              QStringLiteral("debug|[ButtonFunctionBiz] Blinking light: halKey= 2 name= \"B\"")}));
        session.log.clear();
        session.callsOfPress(2);
        session.log.clear();
        session.callsOfPress(3);
        QCOMPARE(session.log.lines(), QStringList());
        QCOMPARE(session->failCount(), 0);
    }

    void singleKeyEndsOnAnyEvent()
    {
        ButtonSession session({{5, QStringLiteral("ONLY")}});
        session.begin();
        QCOMPARE(session.callsOfPress(900), steady(5) << QStringLiteral("state 101, failed 0"));
    }

    void cutHasAColorOfItsOwn()
    {
        ButtonSession session({{8, QStringLiteral("CUT")}, {9, QStringLiteral("cut")}, {10, QStringLiteral("Z")}});
        session->enter();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark} + blinks(8, 0));
        QCOMPARE(session.callsOfPress(8), steady(8, 0) + blinks(9, 2));
        QCOMPARE(session.callsOfPress(9), steady(9, 2) + blinks(10, 2));
    }

    void cutAsTheLastKeyTurnsSteadyInTheColorOfTheOthers()
    {
        ButtonSession session({{1, QStringLiteral("A")}, {8, QStringLiteral("CUT")}});
        session.begin();
        QCOMPARE(session.callsOfPress(1), steady(1) + blinks(8, 0));
        QCOMPARE(session.callsOfPress(8), steady(8, 2) << QStringLiteral("state 101, failed 0"));
    }

    void onlyTheFirstCutCountsForTheSteadyColor()
    {
        ButtonSession session({{8, QStringLiteral("CUT")}, {9, QStringLiteral("CUT")}, {1, QStringLiteral("A")}});
        session.begin();
        QCOMPARE(session.callsOfPress(8), steady(8, 0) + blinks(9, 0));
        QCOMPARE(session.callsOfPress(9), steady(9, 2) + blinks(1));
    }

    void withoutACutTheEarlierCutKeyStays()
    {
        ButtonSession session({{33, QStringLiteral("X")}, {1, QStringLiteral("A")}});
        session.begin();
        QCOMPARE(session.callsOfPress(33), steady(33, 0) + blinks(1));
        session.widget.load({{8, QStringLiteral("CUT")}, {1, QStringLiteral("A")}});
        session.begin();
        session.widget.load({{8, QStringLiteral("X")}, {33, QStringLiteral("Y")}, {1, QStringLiteral("A")}});
        session.begin();
        QCOMPARE(session.callsOfPress(8), steady(8, 0) + blinks(33));
        QCOMPARE(session.callsOfPress(33), steady(33, 2) + blinks(1));
    }

    void firstEntryOfADoubleKeyIsAnOrdinaryStep()
    {
        ButtonSession session({{4, QStringLiteral("A")}, {4, QStringLiteral("B")}});
        session.begin();
        QCOMPARE(session.callsOfPress(9), QStringList());
        QCOMPARE(session.callsOfPress(4), steady(4) + blinks(4));
        QCOMPARE(session.callsOfPress(9), steady(4) << QStringLiteral("state 101, failed 0"));
    }

    void skippedKeyInTheMiddleTurnsSteadyInColor0()
    {
        ButtonSession session(abc());
        session.begin();
        QCOMPARE(session.callsOfSkip(), steady(1, 0) + blinks(2));
        QCOMPARE(session.log.lines().at(0),
                 QStringLiteral("debug|[ButtonFunctionBiz] Skipped key: halKey= 1 name= \"A\""));
        QCOMPARE(session->failCount(), 1);
        QCOMPARE(session->state(), 0);
    }

    void skippedLastKeyKeepsBlinkingAndFails()
    {
        ButtonSession session(abc());
        session.begin();
        session.callsOfPress(1);
        session.callsOfPress(2);
        QCOMPARE(session.callsOfSkip(), QStringList{QStringLiteral("state 102, failed 1")});
        QCOMPARE(session->state(), 102);
    }

    void walkWithASkippedKeyEndsWithItsNumber()
    {
        ButtonSession session(abc());
        session.begin();
        session->skipCurrentStep();
        session.callsOfPress(2);
        QCOMPARE(session.callsOfPress(3), steady(3) << QStringLiteral("state 101, failed 1"));
    }

    void eventsAfterTheEndDoNothing()
    {
        ButtonSession session(abc());
        session.begin();
        for (const unsigned key : {1U, 2U, 3U})
            session.callsOfPress(key);
        QCOMPARE(session.callsOfPress(3), QStringList());
        QCOMPARE(session.callsOfPress(~0U), QStringList());
        QCOMPARE(session->state(), 101);
    }

    void skipAfterTheEndFailsAgain()
    {
        ButtonSession session({{5, QStringLiteral("ONLY")}});
        session.begin();
        session.callsOfPress(5);
        QCOMPARE(session.callsOfSkip(), QStringList{QStringLiteral("state 102, failed 1")});
        QCOMPARE(session.callsOfSkip(), QStringList{QStringLiteral("state 102, failed 2")});
        QCOMPARE(session.log.lines().last(),
                 QStringLiteral("debug|[ButtonFunctionBiz] Skipped key: halKey= -1 name= \"\""));
    }

    void verdictAnnouncesAndStopsListening_data()
    {
        QTest::addColumn<bool>("pass");
        QTest::addColumn<int>("code");
        QTest::newRow("pass") << true << 103;
        QTest::newRow("not pass") << false << 102;
    }

    void verdictAnnouncesAndStopsListening()
    {
        QFETCH(bool, pass);
        QFETCH(int, code);
        ButtonSession session(abc());
        session.begin();
        session->skipCurrentStep();
        session.take();
        pass ? session->setPass() : session->setNotPass();
        QCOMPARE(session.take(), (QStringList{QStringLiteral("state %1, failed 1").arg(code), Removed}));
        QCOMPARE(session->state(), code);
        QCOMPARE(session->failCount(), 1);
        QVERIFY(!session.host.keyboard.press(2));
    }

    void startAfterTheEndWalksAgainAndKeepsTheState()
    {
        ButtonSession session(abc());
        session.begin();
        session->skipCurrentStep();
        session.callsOfPress(2);
        session.callsOfPress(3);
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark} + blinks(1));
        QCOMPARE(session->state(), 101);
        QCOMPARE(session->failCount(), 0);
    }

    void enterForgetsTheWalk()
    {
        ButtonSession session(abc());
        session.begin();
        session->skipCurrentStep();
        session->enter();
        QCOMPARE(session->failCount(), 0);
        QCOMPARE(session.callsOfPress(2), QStringList());
    }

    void enterForgetsTheResult()
    {
        ButtonSession session(abc());
        session.begin();
        for (int key = 0; key < 3; ++key)
            session->skipCurrentStep();
        QCOMPARE(session->state(), 102);
        session->enter();
        QCOMPARE(session->state(), 0);
    }

    void startWithoutEnterHearsNoKey()
    {
        ButtonSession session(abc());
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark} + blinks(1));
        QVERIFY(!session.host.keyboard.press(1));
    }

    void withoutAKeyboardNothingHappensSilently()
    {
        ButtonSession session(abc(), {"lcdKeyboardEvent"});
        session->enter();
        session->startTest();
        session->setPass();
        QCOMPARE(session.take(), QStringList{QStringLiteral("state 103, failed 0")});
        QCOMPARE(session.log.lines(), QStringList());
    }

    void withoutAWidgetItWarnsAndDoesNotStart()
    {
        ButtonSession session(abc(), {"lcdFactoryModeWidget"});
        session->enter();
        session->setNotPass();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList());
        QCOMPARE(session->state(), 102);
        QCOMPARE(session.log.lines(),
                 QStringList{QStringLiteral(
                     "warning|[ButtonFunctionBiz] FactoryModeWidget not found, cannot get key check list")});
    }

    void emptyListLeavesNoKeyUnderTest()
    {
        ButtonSession session(abc());
        session.begin();
        session.widget.load({});
        session->startTest();
        QCOMPARE(session.take().filter(QStringLiteral("keyboard.")), QStringList{Dark});
        QCOMPARE(session.callsOfPress(1), QStringList());
        QCOMPARE(session->state(), 0);
        QCOMPARE(session.callsOfSkip(), QStringList{QStringLiteral("state 102, failed 1")});
    }

    void keyWithTheNumberOfNoKeyNeverBlinks()
    {
        ButtonSession session({{-1, QStringLiteral("A")}, {2, QStringLiteral("B")}});
        session->enter();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark});
        QCOMPARE(session.callsOfPress(~0U), QStringList());
        QCOMPARE(session.callsOfSkip(), blinks(2));
    }

    void negativeKeyIsPressedByItsBits()
    {
        ButtonSession session({{-5, QStringLiteral("A")}, {2, QStringLiteral("B")}});
        session.begin();
        QCOMPARE(session.callsOfPress(static_cast<unsigned>(-5)), steady(-5) + blinks(2));
    }

    void keyUnderTestIsToldBeforeItBlinks()
    {
        ButtonSession session({{1, QStringLiteral("↑")}, {2, QString()}});
        session->registerCurrentKeyUnderTestCallback("first", [](unsigned, const std::string &) { QFAIL("replaced"); });
        session->registerCurrentKeyUnderTestCallback("second", [&](unsigned key, const std::string &name) {
            session.add(QStringLiteral("key %1 %2").arg(key).arg(QString::fromUtf8(name.c_str())));
        });
        session->enter();
        session.take();
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark} + QStringList{QStringLiteral("key 1 ↑")} + blinks(1));
        QCOMPARE(session.callsOfPress(1), steady(1) + QStringList{QStringLiteral("key 2 ")} + blinks(2));
        session->registerCurrentKeyUnderTestCallback("third", nullptr);
        session->startTest();
        QCOMPARE(session.take(), QStringList{Dark} + blinks(1));
    }

    void theListenerForTheKeyKeepsItsState()
    {
        ButtonSession session(abc());
        QList<int> counts;
        session->registerCurrentKeyUnderTestCallback(
            "page", [&counts, n = 0](unsigned, const std::string &) mutable { counts << ++n; });
        session.begin();
        session.callsOfPress(1);
        session.callsOfPress(2);
        QCOMPARE(counts, (QList<int>{1, 2, 3}));
    }

    void theListenerForTheKeyMayReplaceItself()
    {
        ButtonSession session(abc());
        auto own = std::make_shared<int>(5);
        const std::weak_ptr<int> watched = own;
        bool livedOn = false;
        session->registerCurrentKeyUnderTestCallback("page", [&, own](unsigned, const std::string &) {
            session->registerCurrentKeyUnderTestCallback("page", {});
            livedOn = !watched.expired();
        });
        own.reset();
        session.begin();
        QVERIFY(livedOn);
        QVERIFY(watched.expired());
    }

    void everyListenerIsCalledInOrderOfName()
    {
        ButtonSession session(abc());
        for (const char *name : {"z", "", "a"}) {
            session->registerStateCallback(
                name, [&session, name](int, int) { session.add(QStringLiteral("<%1>").arg(QLatin1String(name))); });
        }
        session->registerStateCallback("a", nullptr);
        session.take();
        session->setPass();
        QCOMPARE(session.take(),
                 (QStringList{QStringLiteral("<>"), QStringLiteral("<a>"), QStringLiteral("state 103, failed 0"),
                              QStringLiteral("<z>"), Removed}));
    }

    void destructionStopsListening()
    {
        ButtonSession session(abc());
        session.begin();
        session.destroy();
        QCOMPARE(session.take(), QStringList{Removed});
    }

    void walkOnEveryThread_data() { addOrigins(); }

    void walkOnEveryThread()
    {
        ButtonSession session(abc());
        session.begin();
        runOn(fetchOrigin(), [&] {
            for (const unsigned key : {1U, 2U, 3U})
                session.host.keyboard.press(key);
        });
        QCOMPARE(session.take(),
                 steady(1) + blinks(2) + steady(2) + blinks(3) + steady(3)
                     + QStringList{QStringLiteral("state 101, failed 0")});
    }

    void listenerMayGiveTheVerdictInsideTheEvent()
    {
        // When the service removes its listener, it deletes the function that is running.
        ButtonSession session({{5, QStringLiteral("ONLY")}});
        session->registerStateCallback("verdict", [&](int state, int) {
            if (state == 101)
                session->setPass();
        });
        session.begin();
        QVERIFY(session.host.keyboard.press(5));
        QCOMPARE(session->state(), 103);
        QVERIFY(!session.host.keyboard.press(5));
    }
};

QTEST_MAIN(ButtonFunctionBizTest)
#include "tst_buttonfunctionbiz.moc"
