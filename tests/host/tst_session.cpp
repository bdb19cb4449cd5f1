#include "hosttest.h"
#include "journal/logcapture.h"
#include "lcd/containerpage.h"
#include "lcd/screenreader.h"
#include "session/session.h"

#include <QtWidgets/QListWidget>

using namespace panelhost;

namespace {

OperatorAction action(OperatorAction::Kind kind, const char *name = nullptr, const QVariant &value = {})
{
    return {kind, name ? QVariantMap{{q(name), value}} : QVariantMap()};
}

OperatorAction navigate(const char *key)
{
    return action(OperatorAction::Kind::Navigate, "key", q(key));
}

}

/// The whole device with the real component on it, without a window.
class tst_Session : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { open({}); }
    void cleanup() { session.reset(); }

    void opensWithTheMenu()
    {
        QCOMPARE(screen("page"), QVariant(q("menu")));
        QCOMPARE(screen("menu.level"), QVariant(1));
        QCOMPARE(screen("menu.row"), QVariant(0));
        QVERIFY(screen("menu.items").toStringList().size() >= 5);
        QCOMPARE(session->library().state(), LoadState::Created);
        QCOMPARE(session->serviceNames().size(), 10);
        QVERIFY(session->pagesLibrary());
    }

    void navigatesTheMenu()
    {
        perform(navigate("down"));
        QCOMPARE(screen("menu.row"), QVariant(1));
        perform(navigate("up"));
        QCOMPARE(screen("menu.row"), QVariant(0));
    }

    void showsAContainerAndComesBackToTheSameRow()
    {
        openWithoutPages();
        const int row = openRow("container", "container.logexport");
        QVERIFY2(row >= 0, "the shipped menu has a log export");
        QCOMPARE(screen("page"), QVariant(q("container")));
        QCOMPARE(screen("container"), QVariant(q("container.logexport")));
        QCOMPARE(countOf(Journal::Kind::Signal, "requestShowContainer"), 1);

        perform(navigate("back"));

        QCOMPARE(screen("page"), QVariant(q("menu")));
        QCOMPARE(screen("menu.row"), QVariant(row));
        perform(navigate("up"));
        QCOMPARE(screen("menu.row"), QVariant(row - 1));
    }

    void leavesAndEntersFactoryMode()
    {
        perform(navigate("back"));
        QCOMPARE(countOf(Journal::Kind::Signal, "requestExitFactoryMode"), 1);
        QCOMPARE(screen("page"), QVariant(q("hidden")));
        perform(navigate("enter"));
        QCOMPARE(screen("page"), QVariant(q("menu")));
        perform(action(OperatorAction::Kind::ExitFactoryMode));
        QCOMPARE(screen("page"), QVariant(q("hidden")));
        perform(action(OperatorAction::Kind::EnterFactoryMode));
        QCOMPARE(screen("page"), QVariant(q("menu")));
    }

    void touchesTheMenu()
    {
        openWithoutPages();
        const auto *list = session->lcd()->findChild<QListWidget *>();
        const int row = screen("menu.items").toStringList().indexOf(q("Log Export"));
        const QPoint point = list->viewport()->mapTo(session->lcd(), list->visualItemRect(list->item(row)).center());
        perform({OperatorAction::Kind::Touch, {{q("x"), point.x()}, {q("y"), point.y()}}});
        QCOMPARE(screen("container"), QVariant(q("container.logexport")));
        const QWidget *page = session->lcd()->findChild<ContainerPage *>();
        const QWidget *back = page->findChild<QWidget *>(q("hostPageControl"));
        const QPoint control = back->mapTo(session->lcd(), back->rect().center());
        perform({OperatorAction::Kind::Touch, {{q("x"), control.x()}, {q("y"), control.y()}}});
        QCOMPARE(screen("menu.row"), QVariant(row));
    }

    void aFingerStaysOnTheWidgetThatItTouched()
    {
        const OperatorAction down{OperatorAction::Kind::TouchDown, {{q("x"), 1}, {q("y"), 1}}};
        perform(down);
        QString error;
        for (const auto &kind : {OperatorAction::Kind::TouchDown, OperatorAction::Kind::Touch}) {
            QVERIFY(!session->panelOperator().perform({kind, down.arguments}, &error));
            QCOMPARE(error, q("A finger is on the LCD already."));
        }
        perform({OperatorAction::Kind::TouchMove, {{q("x"), 799}, {q("y"), 479}}});
        perform({OperatorAction::Kind::TouchUp, {}});
        perform(down);
        perform({OperatorAction::Kind::TouchUp, {}});
        QCOMPARE(countOf(Journal::Kind::Action, "touch-down"), 2);
        QCOMPARE(countOf(Journal::Kind::Action, "touch-move"), 1);
        QCOMPARE(countOf(Journal::Kind::Action, "touch-up"), 2);
    }

    void refusesWhatTheDeviceHasNot_data()
    {
        QTest::addColumn<OperatorAction>("wrong");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("key") << navigate("sideways")
                             << q("There is no navigation key \"sideways\"; available: up, down, left, right, enter, "
                                  "back, home, end, page-up, page-down.");
        QTest::newRow("panel key") << action(OperatorAction::Kind::Press, "key", 9999)
                                   << q("The panel has no key \"9999\".");
        QTest::newRow("soft") << action(OperatorAction::Kind::Soft, "side", q("left"))
                              << q("The page shows no left button.");
        QTest::newRow("side") << action(OperatorAction::Kind::Soft, "side", q("top"))
                              << q("There is no soft button \"top\"; available: left, right.");
        QTest::newRow("port") << action(OperatorAction::Kind::Plug, "port", q("net9"))
                              << q("The device has no port \"net9\".");
        QTest::newRow("block") << action(OperatorAction::Kind::Block, "port", q("net1"))
                               << q("The port \"net1\" can't be blocked; USB ports can.");
        QTest::newRow("tbar") << action(OperatorAction::Kind::TBar, "position", 2)
                              << q("The T-Bar's position is a number from 0 to 1.");
        QTest::newRow("touch") << OperatorAction{OperatorAction::Kind::Touch, {{q("x"), 800}, {q("y"), 0}}}
                               << q("The point 800, 0 is outside the LCD of 800 x 480.");
        QTest::newRow("touch-down") << OperatorAction{OperatorAction::Kind::TouchDown, {{q("x"), 0}, {q("y"), 480}}}
                                    << q("The point 0, 480 is outside the LCD of 800 x 480.");
        QTest::newRow("touch-move") << OperatorAction{OperatorAction::Kind::TouchMove, {{q("x"), 0}, {q("y"), 0}}}
                                    << q("No finger is on the LCD.");
        QTest::newRow("touch-up") << OperatorAction{OperatorAction::Kind::TouchUp, {}} << q("No finger is on the LCD.");
        QTest::newRow("faulty key") << OperatorAction{OperatorAction::Kind::Fault,
                                                      {{q("name"), q("key-dead")}, {q("key"), 9999}}}
                                    << q("The panel has no key \"9999\".");
        QTest::newRow("fault argument") << action(OperatorAction::Kind::Fault, "name", q("key-dead"))
                                        << q("The fault \"key-dead\" needs \"key\".");
    }
    void refusesWhatTheDeviceHasNot()
    {
        QFETCH(OperatorAction, wrong);
        QFETCH(QString, sentence);
        const int before = session->journal().entries().size();
        QString error;
        QVERIFY(!session->panelOperator().perform(wrong, &error));
        QCOMPARE(error, sentence);
        QCOMPARE(session->journal().entries().size(), before);
    }

    void theSameActionsGiveTheSameJournal()
    {
        QByteArray first;
        for (int run = 0; run < 3; ++run) {
            open({});
            playEverything();
            const QByteArray journal = session->journal().toJsonLines();
            QVERIFY(!journal.contains("0x5") && !journal.contains("0x7"));
            if (run == 0)
                first = journal;
            QCOMPARE(journal, first);
        }
        QVERIFY(first.count('\n') > 100);
    }

    void everyLineOfTheJournalIsAnObjectWithItsKeysInOrder()
    {
        playEverything();
        static const QRegularExpression form(q(
            "^\\{\"seq\":(\\d+),\"t\":\\d+,\"thread\":\"(gui|device)\",\"kind\":\"[a-z]+\",\"name\":\"[^\"]+\".*\\}$"));
        int number = 0;
        for (const Journal::Entry &entry : session->journal().entries()) {
            const auto match = form.match(QString::fromUtf8(entry.toJsonLine()));
            QVERIFY2(match.hasMatch(), entry.toJsonLine().constData());
            QCOMPARE(match.captured(1).toInt(), ++number);
            QVERIFY(QJsonDocument::fromJson(entry.toJsonLine()).isObject());
        }
    }

    void endsInTheMiddleOfACalibration()
    {
        QVERIFY(openTestPage("machine"));
        for (int step = 0; step < 60 && session->device().state().tbar.step.isEmpty(); ++step) {
            session->clock().advance(30'000);
            pressBlinkingKeys();
            perform(action(OperatorAction::Kind::Soft, "side", q("right")));
        }
        QCOMPARE(session->device().state().tbar.step, q("begin"));
        session.reset();
        VirtualClock::instance().advance(10'000);
    }

    void logLinesAreTheSameOnEveryMachine()
    {
        Journal journal;
        const LogCapture tap(journal, q("/somewhere/share"));
        QCOMPARE(tap.normalized(q("at QListWidget(0x55aa01, name) of QRect(0,0 100x30)")),
                 q("at QListWidget(0x…, name) of QRect(0,0 100x30)"));
        QCOMPARE(tap.normalized(q("from \"/somewhere/share/factorymenu.xml\"")), q("from \"$SHARE/factorymenu.xml\""));
        QCOMPARE(tap.normalized(QDir::currentPath() + q("/x")), q("$CWD/x"));
        QCOMPARE(tap.normalized(QCoreApplication::applicationDirPath() + q("/../share/y")), q("$DEFAULT_SHARE/y"));
    }

    void theAgingLoopGoesOnByItself()
    {
        QVERIFY(openTestPage("aging"));
        perform(action(OperatorAction::Kind::Soft, "side", q("right")));
        session->clock().advance(1'000'000);
        QVERIFY(countOf(Journal::Kind::Event, "lcdMemoryCacheNodeUSB.changed") >= 2);
        QCOMPARE(screen("page"), QVariant(q("aging")));
    }

    void theAgingLoopWaitsForAPlugWithoutFirstChanges()
    {
        Session::Options options;
        options.changedOnSubscribe = false;
        open(options);
        QVERIFY(openTestPage("aging"));
        perform(action(OperatorAction::Kind::Soft, "side", q("right")));
        session->clock().advance(1'000'000);
        QCOMPARE(countOf(Journal::Kind::Event, "lcdMemoryCacheNetworkPort.changed"), 0);
        perform(action(OperatorAction::Kind::Plug, "port", q("net1")));
        session->clock().advance(1'000);
        QCOMPARE(countOf(Journal::Kind::Event, "lcdMemoryCacheNetworkPort.changed"), 1);
    }

    void aServiceCanBeAbsentFromTheStart()
    {
        Session::Options options;
        for (const QString &name : session->serviceNames())
            options.faults << Session::InitialFault{q("service-absent"), {{q("service"), name}}};
        open(options);
        QCOMPARE(screen("page"), QVariant(q("menu")));
        QVERIFY(openTestPage("aging"));
        perform(action(OperatorAction::Kind::Soft, "side", q("right")));
        session->clock().advance(100'000);
    }

    void wrongOptionsGetASentence()
    {
        session.reset();
        QString error;
        Session::Options options;
        options.language = q("xx");
        QVERIFY(!Session::open(options, &error));
        QVERIFY2(error.startsWith(q("There is no catalog for the language \"xx\"; available: ")), qPrintable(error));
        options = {};
        options.faults << Session::InitialFault{q("earthquake"), {}};
        QVERIFY(!Session::open(options, &error));
        QVERIFY2(error.startsWith(q("There is no fault \"earthquake\"; available: key-dead, ")), qPrintable(error));
        options = {};
        options.component = q("/nowhere/lib.so");
        QVERIFY(!Session::open(options, &error));
        QCOMPARE(error, q("/nowhere/lib.so: there is no such file."));
    }

    void oneSessionAtATime()
    {
        QString error;
        QVERIFY(!Session::open({}, &error));
        QCOMPARE(error, q("This process already has a session."));
    }

    void faultsAreSwitchedByName()
    {
        const KeyState cut = keyNamed("CUT");
        perform({OperatorAction::Kind::Fault, {{q("name"), q("key-dead")}, {q("key"), q("CUT")}}});
        QVERIFY(session->faults().isOn(q("key-dead"), q("key"), cut.halKey));
        QCOMPARE(session->journal().entries().last().data.value(q("key")).toInt(), cut.halKey);
        perform({OperatorAction::Kind::Fault, {{q("name"), q("key-dead")}, {q("on"), false}}});
        QVERIFY(!session->faults().isOn(q("key-dead")));
    }

    void speedOfAUsbDeviceIsInTheJournal()
    {
        const QVariantMap fast{{q("port"), q("usb1")}, {q("speed"), 5000.0}};
        perform({OperatorAction::Kind::Plug, fast});
        QCOMPARE(session->journal().entries().last().data, QJsonObject::fromVariantMap(fast));
        QCOMPARE(findPort(session->device().state(), q("usb1"))->speed, 5000.0);
        perform(action(OperatorAction::Kind::Unplug, "port", q("usb1")));
        QCOMPARE(findPort(session->device().state(), q("usb1"))->speed, 0.0);
        // A device that doesn't say how fast it is.
        perform(action(OperatorAction::Kind::Plug, "port", q("usb1")));
        QVERIFY(!session->journal().entries().last().data.contains(q("speed")));
    }

    void theLanguageChanges()
    {
        perform(action(OperatorAction::Kind::Language, "code", q("zh_CN")));
        QCOMPARE(session->language(), q("zh_CN"));
        perform(action(OperatorAction::Kind::Language, "code", q("en")));
    }

private:
    void openWithoutPages()
    {
        Session::Options options;
        options.pages = Session::noPages;
        open(options);
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

    QVariant screen(const char *key) const { return readScreen(session->lcd()).value(q(key)); }

    KeyState keyNamed(const char *name) const
    {
        for (const KeyState &key : session->device().state().keys) {
            if (key.name == q(name))
                return key;
        }
        return {};
    }

    int countOf(Journal::Kind kind, const char *name) const
    {
        int count = 0;
        for (const Journal::Entry &entry : session->journal().entries())
            count += entry.kind == kind && entry.name == QLatin1String(name);
        return count;
    }

    // Opens the rows one by one until the screen shows what was wanted. The row, or -1.
    int openRow(const char *property, const char *wanted)
    {
        const int rows = screen("menu.items").toStringList().size();
        for (int row = 0; row < rows; ++row) {
            perform(navigate("enter"));
            if (screen(property) == QVariant(q(wanted)))
                return row;
            goBackTo(row + 1);
        }
        return -1;
    }

    bool openTestPage(const char *page) { return openRow("page", page) >= 0; }

    void goBackTo(int row)
    {
        perform(navigate("back"));
        while (screen("menu.row").toInt() < row)
            perform(navigate("down"));
    }

    void pressBlinkingKeys()
    {
        for (int guard = 0; guard < 200; ++guard) {
            int blinking = -1;
            for (const KeyState &key : session->device().state().keys) {
                if (key.led.isBlinking())
                    blinking = key.halKey;
            }
            if (blinking < 0)
                return;
            perform(action(OperatorAction::Kind::Press, "key", blinking));
        }
    }

    // A bit of everything: the menu, a container, an aging round and the first phases of the machine test.
    void playEverything()
    {
        QVERIFY(openTestPage("aging"));
        perform(action(OperatorAction::Kind::Soft, "side", q("right")));
        session->clock().advance(120'000);
        perform(action(OperatorAction::Kind::Plug, "port", q("usb1")));
        session->clock().advance(1'000);
        perform(action(OperatorAction::Kind::Soft, "side", q("right")));
        perform(navigate("back"));
        perform(action(OperatorAction::Kind::ExitFactoryMode));
        perform(action(OperatorAction::Kind::EnterFactoryMode));
    }

    std::unique_ptr<Session> session;
};

PANELHOST_TEST_MAIN(tst_Session)
#include "tst_session.moc"
