#include "device/device.h"
#include "device/faults.h"
#include "hosttest.h"
#include "journal/journal.h"
#include "lcd/screenreader.h"
#include "session/session.h"

#include <QtWidgets/QWidget>

using namespace panelhost;

namespace {

// How far a visit goes before it is left.
const QStringList visits = {q("idle"), q("running"), q("judging"), q("passed"), q("failed"), q("again")};

// These pages judge by themselves.
const QStringList judgingPages = {q("T-Bar"), q("Net ports"), q("USB ports")};

// Values for the arguments of faults. The first key of the walk, so that it is hit in each run.
QVariantMap faultArguments(const FaultInfo &info, const QString &value)
{
    QVariantMap arguments;
    for (const QString &name : info.arguments)
        arguments.insert(name, value);
    return arguments;
}

QStringList faultValues(const FaultInfo &info)
{
    if (info.arguments.isEmpty())
        return {QString()};
    const QStringList allowed = Faults::allowedValues(info.arguments.first());
    return allowed.isEmpty() ? QStringList{q("PGM 1")} : allowed;
}

}

/// Each page on the whole device: entered and left in each state, with each fault and without each service.
class tst_RepairPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open({}); }
    void cleanup() { session.reset(); }

    void everyKeyOpensItsPage_data() { eachPage(); }
    void everyKeyOpensItsPage()
    {
        QFETCH(QString, key);
        QFETCH(QString, title);
        enter(key);
        QCOMPARE(screen("page"), q("repair"));
        QCOMPARE(screen("title"), title);
        QCOMPARE(screen("right"), q("Start test"));
        leave();
        QCOMPARE(screen("page"), q("menu"));
    }

    void theHardwareIsRestoredFromEachState_data() { eachPage(); }
    void theHardwareIsRestoredFromEachState()
    {
        QFETCH(QString, key);
        for (const QString &visit : visits) {
            enter(key);
            const QString reached = go(visit);
            const bool isJudged = visit == q("judging") && judgingPages.contains(screen("title"));
            QVERIFY2(reached == (isJudged ? q("passed") : visit), qPrintable(visit + q(" -> ") + reached));
            leave();
            QCOMPARE(troubles(), QStringList());
            QCOMPARE(afterLateEvents(), QStringList());
        }
    }

    void noFaultKeepsTheHardware_data() { eachPage(); }
    void noFaultKeepsTheHardware()
    {
        QFETCH(QString, key);
        for (const FaultInfo &info : Faults::all()) {
            for (const QString &value : faultValues(info)) {
                // A LED that is stuck can't be put back.
                if (info.name == q("led-stuck"))
                    continue;
                for (const QString &visit : {q("running"), q("failed"), q("again")})
                    visitWithFault(key, info, value, visit);
            }
        }
    }

    // The service goes while the page is open: the hardware is restored all the same.
    void aServiceMayGoDuringATest_data() { eachPage(); }
    void aServiceMayGoDuringATest()
    {
        QFETCH(QString, key);
        const FaultInfo &absent = *Faults::find(q("service-absent"));
        for (const QString &service : Faults::allowedValues(q("service"))) {
            for (const QString &visit : {q("running"), q("judging"), q("passed")}) {
                enter(key);
                go(visit);
                setFault(absent, service, true);
                leave();
                setFault(absent, service, false);
                QCOMPARE(troubles(), QStringList());
            }
        }
    }

    void withoutItsServicesATestDoesNotStart_data() { eachPage(); }
    void withoutItsServicesATestDoesNotStart()
    {
        QFETCH(QString, key);
        QFETCH(QStringList, services);
        for (const QString &service : qAsConst(services)) {
            setFault(*Faults::find(q("service-absent")), service, true);
            enter(key);
            soft("right");
            QCOMPARE(screen("right"), q("Start test"));
            QVERIFY2(steps().contains(q("The device doesn't offer what this test needs.")), qPrintable(service));
            setFault(*Faults::find(q("service-absent")), service, false);
            soft("right");
            QVERIFY2(!steps().contains(q("The device doesn't offer what this test needs.")), qPrintable(service));
            QVERIFY(screen("right") != q("Start test"));
            leave();
            QCOMPARE(troubles(), QStringList());
        }
    }

    void theHostMayLeaveAtAnyTime_data() { eachPage(); }
    void theHostMayLeaveAtAnyTime()
    {
        QFETCH(QString, key);
        for (const QString &visit : visits) {
            enter(key);
            go(visit);
            perform({OperatorAction::Kind::ExitFactoryMode, {}});
            QCOMPARE(screen("page"), q("hidden"));
            QCOMPARE(troubles(), QStringList());
            perform({OperatorAction::Kind::EnterFactoryMode, {}});
            QCOMPARE(screen("page"), q("menu"));
        }
    }

    void theSessionMayEndAtAnyTime_data() { eachPage(); }
    void theSessionMayEndAtAnyTime()
    {
        QFETCH(QString, key);
        for (const QString &visit : visits) {
            enter(key);
            go(visit);
            open({});
        }
    }

    void anotherPageLeavesTheFirst()
    {
        enter(q("container.factorytest.repairmode.screenlight"));
        soft("right");
        QCOMPARE(session->device().state().screenBrightness[0], 10);
        show(q("container.factorytest.repairmode.screenbadpixel"));
        QCOMPARE(screen("titleIcon"), q("ScreenBadPixel"));
        QCOMPARE(session->device().state().screenBrightness[0], 100);
        session->clock().advance(10000);
        QCOMPARE(session->device().state().screenBrightness[0], 100);
        leave();
        QCOMPARE(troubles(), QStringList());
    }

    // A failed step says where the bar must be, and the other faults that the calibration doesn't go on.
    void theTBarPageTellsWhyAStepFailed_data()
    {
        QTest::addColumn<int>("failingStep");
        QTest::addColumn<double>("position");
        QTest::addColumn<QString>("hint");
        const QString top = q("The step failed. The T-Bar must be at the very top before the next step.");
        const QString bottom = q("The step failed. The T-Bar must be at the very bottom before the next step.");
        const QString stuck = q("The calibration didn't finish the step. Check how the T-Bar is connected.");
        QTest::newRow("begin") << 1 << 0.0 << stuck;
        QTest::newRow("not at the top") << 0 << 0.5 << top;
        QTest::newRow("at the top, broken") << 2 << 1.0 << stuck;
        QTest::newRow("not at the bottom") << 0 << 1.0 << bottom;
    }
    void theTBarPageTellsWhyAStepFailed()
    {
        QFETCH(int, failingStep);
        QFETCH(double, position);
        QFETCH(QString, hint);
        const FaultInfo &broken = *Faults::find(q("calibration-fails"));
        if (failingStep > 0)
            setFault(broken, QString::number(failingStep), true);
        enter(q("container.factorytest.repairmode.tbar"));
        soft("right");
        QCOMPARE(screen("stepTitle"), q("Calibrating: don't move the T-Bar"));
        QCOMPARE(screen("right"), QString());
        session->clock().advance(2500);
        perform({OperatorAction::Kind::TBar, {{q("position"), position}}});
        for (int press = 0; press < 2 && pageState() == q("running"); ++press) {
            soft("right");
            session->clock().advance(2500);
        }
        QCOMPARE(steps().first(), q("Fail (1)"));
        QCOMPARE(steps().last(), hint);
        if (failingStep > 0)
            setFault(broken, QString::number(failingStep), false);
        QCOMPARE(go(q("passed")), q("passed"));
        leave();
        QCOMPARE(troubles(), QStringList());
    }

    void theTBarPageKnowsBothKinds()
    {
        for (const TBarType type : {TBarType::Slider, TBarType::Fader}) {
            Session::Options options;
            options.tbarType = type;
            open(options);
            enter(q("container.factorytest.repairmode.tbar"));
            QCOMPARE(screen("titleIcon"), type == TBarType::Slider ? q("fc_tbar_slider") : q("fc_tbar_fader"));
            QCOMPARE(go(q("passed")), q("passed"));
        }
    }

    // A report of a million ports leaves the page usable.
    void thePortPageShowsSixteenPorts()
    {
        setFault(*Faults::find(q("garbage-ports")), {}, true);
        enter(q("container.factorytest.repairmode.net"));
        soft("right");
        session->clock().advance(500);
        QCOMPARE(steps().size(), 1 + 16 + 1);
        QCOMPARE(steps().at(1), q("Net port 1: not linked"));
        QCOMPARE(steps().last(), q("999985 more ports"));
        leave();
    }

    void aPortThatIsPluggedLaterPasses()
    {
        enter(q("container.factorytest.repairmode.usb"));
        soft("right");
        for (const char *port : {"usb1", "usb2", "usb3"})
            perform({OperatorAction::Kind::Plug, {{q("port"), q(port)}}});
        perform({OperatorAction::Kind::Block, {{q("port"), q("usb4")}}});
        perform({OperatorAction::Kind::Plug, {{q("port"), q("usb4")}}});
        session->clock().advance(500);
        QCOMPARE(steps().mid(1),
                 QStringList({q("USB port 1: linked"), q("USB port 2: linked"), q("USB port 3: linked"),
                              q("USB port 4: not linked")}));
        perform({OperatorAction::Kind::Unblock, {{q("port"), q("usb4")}}});
        session->clock().advance(500);
        QCOMPARE(pageState(), q("passed"));
        leave();
    }

    void theFocusStaysWithinAState()
    {
        enter(q("container.factorytest.repairmode.buttonlight"));
        go(q("judging"));
        QCOMPARE(screen("focus"), q("right"));
        perform({OperatorAction::Kind::Navigate, {{q("key"), q("left")}}});
        QCOMPARE(screen("focus"), q("left"));
        perform({OperatorAction::Kind::Navigate, {{q("key"), q("enter")}}});
        QCOMPARE(steps().first(), q("Fail (1)"));
    }

    void everyLanguageHasItsTexts_data() { eachPage(); }
    void everyLanguageHasItsTexts()
    {
        QFETCH(QString, key);
        QStringList seen;
        for (const QString &language : session->languages()) {
            perform({OperatorAction::Kind::Language, {{q("code"), language}}});
            enter(key);
            seen << steps().join(QLatin1Char('|')) + screen("right");
            leave();
        }
        perform({OperatorAction::Kind::Language, {{q("code"), q("en")}}});
        QCOMPARE(QSet<QString>(seen.begin(), seen.end()).size(), session->languages().size());
    }

    void noTwoEntriesOfTheMenuLookTheSame()
    {
        QStringList titles = readScreen(session->lcd()).value(q("menu.items")).toStringList();
        openLastEntry();
        titles << readScreen(session->lcd()).value(q("menu.items")).toStringList();
        QCOMPARE(titles.size(), 15);
        titles.removeDuplicates();
        QCOMPARE(titles.size(), 15);
    }

    // The example has entries without a page: these are the host's.
    void theExampleMenuOpensEachEntry()
    {
        Session::Options options;
        options.share = q(LCD_BUILD_DIR "/share/examples/full");
        open(options);
        openLastEntry();
        const QStringList titles = readScreen(session->lcd()).value(q("menu.items")).toStringList();
        QCOMPARE(titles.size(), 25);
        QMap<QString, QStringList> pages;
        for (const QString &title : titles) {
            QCOMPARE(screen("menu.current"), title);
            perform({OperatorAction::Kind::Navigate, {{q("key"), q("enter")}}});
            pages[screen("page")] << title;
            back();
            perform({OperatorAction::Kind::Navigate, {{q("key"), q("down")}}});
        }
        QCOMPARE(pages.keys(), QStringList({q("container"), q("repair")}));
        QVERIFY(pages.value(q("container")).contains(q("Genlock")));
        QCOMPARE(pages.value(q("repair")).count(q("Screen Bad Pixel")), 2);
    }

    void withoutPagesTheHostShowsItsOwn()
    {
        Session::Options options;
        options.pages = Session::noPages;
        open(options);
        QVERIFY(!session->pagesLibrary());
        show(q("container.factorytest.repairmode.screenlight"));
        QCOMPARE(screen("page"), q("container"));
        QCOMPARE(screen("container"), q("container.factorytest.repairmode.screenlight"));
        back();
        QCOMPARE(screen("page"), q("menu"));
    }

    void aContainerWithoutAPageIsTheHosts()
    {
        show(q("container.factorytest.repairmode.genlock"));
        QCOMPARE(screen("page"), q("container"));
    }

private:
    void eachPage()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("services");
        const auto row = [](const char *tail, const char *title, const char *services) {
            QTest::newRow(tail) << q("container.factorytest.repairmode.") + q(tail) << q(title)
                                << q(services).split(QLatin1Char(' '));
        };
        row("screenlight", "Screen brightness", "lcdKeyboardEvent");
        row("screenbadpixel", "Screen pixels", "lcdKeyboardEvent");
        row("screenbadpixels", "Screen pixels", "lcdKeyboardEvent");
        row("buttonlight", "Key lights", "lcdKeyboardEvent");
        row("buttonfunction", "Key function", "lcdKeyboardEvent lcdFactoryModeWidget");
        row("tbar", "T-Bar", "lcdKeyboardEvent lcdTBarCalibration");
        row("net", "Net ports", "lcdMemoryCacheNetworkPort");
        row("usb", "USB ports", "lcdMemoryCacheNodeUSB");
    }

    void open(const Session::Options &options)
    {
        session.reset();
        QString error;
        session = Session::open(options, &error);
        QVERIFY2(session, qPrintable(error));
        session->lcd()->show();
        session->clock().settle();
    }

    void perform(const OperatorAction &what)
    {
        QString error;
        QVERIFY2(session->panelOperator().perform(what, &error), qPrintable(error));
    }

    // As if the menu had such an entry.
    void show(const QString &key)
    {
        QVERIFY(QMetaObject::invokeMethod(session->library().widget(), "requestShowContainer", Q_ARG(QString, key)));
        session->clock().settle();
    }

    void enter(const QString &key)
    {
        show(key);
        QCOMPARE(screen("page"), q("repair"));
    }

    // The last entry of the first level is the submenu.
    void openLastEntry()
    {
        const int rows = readScreen(session->lcd()).value(q("menu.items")).toStringList().size();
        for (int row = 1; row < rows; ++row)
            perform({OperatorAction::Kind::Navigate, {{q("key"), q("down")}}});
        perform({OperatorAction::Kind::Navigate, {{q("key"), q("enter")}}});
        QCOMPARE(screen("menu.level"), q("2"));
    }

    QString screen(const char *key) const { return readScreen(session->lcd()).value(q(key)).toString(); }

    QStringList steps() const
    {
        QStringList texts;
        for (const QVariant &step : readScreen(session->lcd()).value(q("steps")).toList())
            texts << step.toMap().value(q("text")).toString();
        return texts;
    }

    void soft(const char *side)
    {
        if (!screen(side).isEmpty())
            perform({OperatorAction::Kind::Soft, {{q("side"), q(side)}}});
    }

    void back() { perform({OperatorAction::Kind::Navigate, {{q("key"), q("back")}}}); }

    // While the keys belong to the test, it is stopped first.
    void leave()
    {
        if (screen("left") == q("Stop test"))
            soft("left");
        back();
        QCOMPARE(screen("page"), q("menu"));
    }

    void setFault(const FaultInfo &info, const QString &value, bool on)
    {
        QVariantMap arguments = faultArguments(info, value);
        arguments.insert(q("name"), info.name);
        arguments.insert(q("on"), on);
        perform({OperatorAction::Kind::Fault, arguments});
    }

    QString pageState() const
    {
        const QString right = screen("right");
        if (right == q("Start test"))
            return q("idle");
        if (right == q("Pass"))
            return q("judging");
        if (right == q("Test again"))
            return steps().value(0) == q("Test passed") ? q("passed") : q("failed");
        return q("running");
    }

    // What the operator does until the test asks for the verdict.
    void work()
    {
        for (int round = 0; round < 60 && pageState() == q("running"); ++round) {
            pressBlinkingKey();
            moveTBar();
            plugAll(true);
            if (screen("right") == q("Next step") || screen("right") == q("Test complete"))
                soft("right");
            session->clock().advance(2000);
        }
        plugAll(false);
    }

    void moveTBar()
    {
        const std::optional<TBarEnd> target = session->device().state().tbar.target;
        if (target)
            perform({OperatorAction::Kind::TBar, {{q("position"), *target == TBarEnd::Top ? 1 : 0}}});
    }

    void plugAll(bool plugged)
    {
        const DeviceState state = session->device().state();
        for (const PortState &port : state.netPorts + state.usbPorts) {
            if (port.isPlugged != plugged)
                perform(
                    {plugged ? OperatorAction::Kind::Plug : OperatorAction::Kind::Unplug, {{q("port"), port.name}}});
        }
    }

    void pressBlinkingKey()
    {
        for (const KeyState &key : session->device().state().keys) {
            if (key.led.isBlinking())
                return perform({OperatorAction::Kind::Press, {{q("key"), key.halKey}}});
        }
    }

    // Goes on until @p visit is reached; returns where the page is.
    QString go(const QString &visit)
    {
        if (visit == q("idle"))
            return pageState();
        soft("right");
        session->clock().advance(100);
        if (visit == q("running"))
            return pageState();
        if (visit == q("failed") && judgingPages.contains(screen("title"))) {
            soft("left");
            return pageState();
        }
        work();
        if (visit == q("judging") || pageState() == visit)
            return pageState();
        if (pageState() == q("judging"))
            soft(visit == q("failed") ? "left" : "right");
        if (visit != q("again"))
            return pageState();
        soft("right");
        return pageState() == q("running") ? visit : pageState();
    }

    void visitWithFault(const QString &key, const FaultInfo &info, const QString &value, const QString &visit)
    {
        setFault(info, value, true);
        enter(key);
        go(visit);
        leave();
        setFault(info, value, false);
        const bool isKeyboardAway = value == q("lcdKeyboardEvent");
        const QStringList left = isKeyboardAway ? hardwareTroubles() : troubles();
        QVERIFY2(left.isEmpty(),
                 qPrintable(info.name + q(" ") + value + q(" ") + visit + q(": ") + left.join(q(", "))));
    }

    QStringList hardwareTroubles() const
    {
        const DeviceState state = session->device().state();
        QStringList found;
        for (const int level : state.screenBrightness) {
            if (level != 100)
                found << q("a screen at %1").arg(level);
        }
        if (state.pattern.type != 0 || state.pattern.index != 0 || state.pattern.level != 0)
            found << q("a pattern");
        for (const KeyState &key : state.keys) {
            if (key.led.brightness != 0 || key.led.isBlinking())
                found << q("the LED of ") + key.name;
        }
        return found;
    }

    // What isn't as the menu needs it.
    QStringList troubles() const
    {
        QStringList found = hardwareTroubles();
        if (session->device().state().panelMode != 3)
            found << q("panel mode %1").arg(session->device().state().panelMode);
        return found;
    }

    QStringList afterLateEvents()
    {
        perform({OperatorAction::Kind::Press, {{q("key"), q("PGM 1")}}});
        perform({OperatorAction::Kind::Plug, {{q("port"), q("net1")}}});
        perform({OperatorAction::Kind::Unplug, {{q("port"), q("net1")}}});
        perform({OperatorAction::Kind::Plug, {{q("port"), q("usb1")}}});
        perform({OperatorAction::Kind::Unplug, {{q("port"), q("usb1")}}});
        session->clock().advance(4000);
        return troubles();
    }

    std::unique_ptr<Session> session;
};

PANELHOST_TEST_MAIN(tst_RepairPages)
#include "tst_repairpages.moc"
