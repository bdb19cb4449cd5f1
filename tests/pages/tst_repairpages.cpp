#include "device/device.h"
#include "device/faults.h"
#include "hosttest.h"
#include "journal/journal.h"
#include "lcd/screenreader.h"
#include "listenertap.h"
#include "prooflength.h"
#include "records/runlines.h"
#include "services/exportwriter.h"
#include "session/session.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>

#include <thread>

#include <sys/mount.h>

using namespace panelhost;

namespace {

// How far a visit goes before it is left.
const QStringList visits = {q("idle"), q("running"), q("judging"), q("passed"), q("failed"), q("again")};

// These pages judge by themselves.
const QStringList judgingPages = {q("T-Bar"), q("Net ports"), q("USB ports"),
                                  q("Knob"),  q("Joystick"),  q("Touch screen")};

// What the operator does with the knob and the joystick.
const QMap<QString, QStringList> movements = {
    {q("Knob"), {q("up"), q("up"), q("up"), q("down"), q("down"), q("down"), q("enter")}},
    {q("Joystick"), {q("up"), q("down"), q("left"), q("right"), q("enter")}},
};

/// A small file system in memory, mounted while the object exists. Only root may mount.
class Mount
{
public:
    explicit Mount(const QString &options)
    {
        const bool isReadOnly = options == q("ro");
        m_isMounted = m_directory.isValid()
            && ::mount("tmpfs", qPrintable(path()), "tmpfs", isReadOnly ? MS_RDONLY : 0,
                       isReadOnly ? "" : qPrintable(options))
                == 0;
    }
    ~Mount()
    {
        if (m_isMounted)
            ::umount2(qPrintable(path()), MNT_DETACH);
    }
    Q_DISABLE_COPY(Mount)

    bool isMounted() const { return m_isMounted; }
    QString path() const { return m_directory.path(); }
    /// What is open stays open, as on a stick that is pulled out.
    void remove() { m_isMounted = ::umount2(qPrintable(path()), MNT_DETACH) != 0; }

private:
    QTemporaryDir m_directory;
    bool m_isMounted = false;
};

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
    void cleanup()
    {
        session.reset();
        tap.reset();
    }

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

    void noFaultKeepsTheHardware_data() { eachPageAndService(); }
    void noFaultKeepsTheHardware()
    {
        QFETCH(QString, key);
        for (const FaultInfo &info : Faults::all()) {
            for (const QString &value : faultValues(info)) {
                // A LED that is stuck can't be put back.
                if (info.name == q("led-stuck"))
                    continue;
                for (const QString &visit : someOf({q("running"), q("failed"), q("again")}))
                    visitWithFault(key, info, value, visit);
            }
        }
    }

    // The service goes while the page is open: the hardware is restored all the same.
    void aServiceMayGoDuringATest_data() { eachPageAndService(); }
    void aServiceMayGoDuringATest()
    {
        QFETCH(QString, key);
        const FaultInfo &absent = *Faults::find(q("service-absent"));
        for (const QString &service : Faults::allowedValues(q("service"))) {
            for (const QString &visit : someOf({q("running"), q("judging"), q("passed")})) {
                enter(key);
                visitState(visit);
                setFault(absent, service, true);
                leaveIfOpen();
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

    void theHostMayLeaveAtAnyTime_data() { eachPageAndService(); }
    void theHostMayLeaveAtAnyTime()
    {
        QFETCH(QString, key);
        for (const QString &visit : visits) {
            enter(key);
            visitState(visit);
            perform({OperatorAction::Kind::ExitFactoryMode, {}});
            QCOMPARE(screen("page"), q("hidden"));
            QCOMPARE(troubles(), QStringList());
            perform({OperatorAction::Kind::EnterFactoryMode, {}});
            QCOMPARE(screen("page"), q("menu"));
        }
    }

    // Services may report on any thread: while a page is entered, while its test runs, and after it was left.
    void eventsMayComeFromForeignThreads_data() { eachPageAndService(); }
    void eventsMayComeFromForeignThreads()
    {
        QFETCH(QString, key);
        QTemporaryDir stick;
        openWithStick(stick.path());
        tap = std::make_unique<ListenerTap>();
        for (const QString &visit : visits) {
            enter(key);
            visitState(visit);
            const std::size_t listeners = tap->events().size();
            sendFromForeignThreads([this] { session->clock().settle(); });
            // The page is left while the events come.
            sendFromForeignThreads([this] {
                perform({OperatorAction::Kind::ExitFactoryMode, {}});
                perform({OperatorAction::Kind::EnterFactoryMode, {}});
            });
            QCOMPARE(screen("page"), q("menu"));
            QCOMPARE(troubles(), QStringList());
            sendFromForeignThreads([this] { session->clock().advance(4000); });
            QCOMPARE(screen("page"), q("menu"));
            QCOMPARE(troubles(), QStringList());
            QVERIFY(visit == q("idle") || listeners > 0 || !hasListeners(key));
        }
        enter(key);
        QCOMPARE(visitState(q("passed")), q("passed"));
    }

    void theSessionMayEndAtAnyTime_data() { eachPageAndService(); }
    void theSessionMayEndAtAnyTime()
    {
        QFETCH(QString, key);
        for (const QString &visit : visits) {
            enter(key);
            visitState(visit);
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

    void anOpenPageFollowsTheSizeOfItsWidget()
    {
        enter(q("container.factorytest.repairmode.knob"));
        for (const QSize &size : {QSize(640, 400), QSize(1000, 600)}) {
            session->pagesLibrary()->widget()->resize(size);
            session->clock().settle();
            QCOMPARE(findTestFrame(session->lcd())->size(), size);
        }
        leave();
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
        QCOMPARE(colors().count(failureColor), steps().size());
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
        soft("left");
        QCOMPARE(steps().size(), 1 + 16 + 1);
        QCOMPARE(steps().at(1), q("Net port 1: not linked"));
        QCOMPARE(steps().last(), q("999984 more ports"));
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

    void aFailedPortPageShowsThePorts_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QStringList>("plugged");
        QTest::addColumn<QStringList>("unplugged");
        QTest::addColumn<QStringList>("failed");
        QTest::newRow("net") << q("net") << QStringList{q("net1"), q("net3")} << QStringList()
                             << QStringList{q("Net port 2: not linked"), q("Net port 4: not linked")};
        QTest::newRow("net, unplugged") << q("net") << QStringList{q("net1"), q("net2"), q("net3")}
                                        << QStringList{q("net3")}
                                        << QStringList{q("Net port 3: not linked"), q("Net port 4: not linked")};
        // One device is enough for all ports.
        QTest::newRow("USB, unplugged") << q("usb") << QStringList{q("usb1"), q("usb3"), q("usb4")}
                                        << QStringList{q("usb1"), q("usb3")}
                                        << QStringList{q("USB port 2: not linked")};
    }
    void aFailedPortPageShowsThePorts()
    {
        QFETCH(QString, page);
        QFETCH(QStringList, plugged);
        QFETCH(QStringList, unplugged);
        QFETCH(QStringList, failed);
        enter(q("container.factorytest.repairmode.") + page);
        soft("right");
        plug(plugged, true);
        plug(unplugged, false);
        QCOMPARE(marks().count(q("pass")), 4 - failed.size());
        for (const QString &port : qAsConst(unplugged))
            QVERIFY(steps().contains(portText(port) + q(": not linked")));
        soft("left");
        const QStringList shown = QStringList(q("Fail (1)")) + failed;
        QCOMPARE(steps(), shown);
        QCOMPARE(marks().count(q("notpass")), shown.size());
        QCOMPARE(colors().count(failureColor), shown.size());
        // The verdict stays what it was.
        plug({q("net4"), q("usb2")}, true);
        plug({q("net1"), q("usb4")}, false);
        QCOMPARE(steps(), shown);
        soft("right");
        QVERIFY(screen("left") == q("Fail"));
        leave();
    }

    // A device whose reports name no port.
    void aPortPageWithoutPortsSaysSo_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("fault");
        for (const char *page : {"net", "usb"}) {
            for (const char *fault : {"empty-report", "empty-payload", "wrong-payload", "null-payload"})
                QTest::addRow("%s %s", page, fault) << q(page) << q(fault);
        }
    }
    void aPortPageWithoutPortsSaysSo()
    {
        QFETCH(QString, page);
        QFETCH(QString, fault);
        setFault(*Faults::find(fault), {}, true);
        enter(q("container.factorytest.repairmode.") + page);
        soft("right");
        session->clock().advance(500);
        QCOMPARE(steps().mid(1), QStringList(q("No port has been reported.")));
        soft("left");
        QCOMPARE(steps(), QStringList({q("Fail (1)"), q("No port has been reported.")}));
        QCOMPARE(colors(), QStringList({failureColor, failureColor}));
        setFault(*Faults::find(fault), {}, false);
        soft("right");
        session->clock().advance(500);
        plug({q("net1"), q("usb1")}, true);
        QVERIFY(!steps().contains(q("No port has been reported.")));
        leave();
    }

    // A device without keys in its list: nothing is walked through, and the page doesn't wait for a key.
    void aWalkWithoutKeysDoesNotBegin()
    {
        QTemporaryDir share;
        QVERIFY(QFile::copy(session->shareDirectory() + q("/factorymenu.xml"), share.filePath(q("factorymenu.xml"))));
        QFile keys(share.filePath(q("factorykeychecklist.xml")));
        QVERIFY(keys.open(QIODevice::WriteOnly));
        keys.write("<LCD version=\"1.0\"><LcdKeys/></LCD>");
        keys.close();
        Session::Options options;
        options.share = share.path();
        open(options);
        enter(q("container.factorytest.repairmode.buttonfunction"));
        soft("right");
        QCOMPARE(pageState(), q("idle"));
        back();
        QCOMPARE(screen("page"), q("menu"));
        QCOMPARE(troubles(), QStringList());
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
        back();
        // Also when the page shows something new.
        enter(q("container.factorytest.repairmode.net"));
        soft("right");
        navigate(q("left"));
        QCOMPARE(screen("focus"), q("left"));
        plug({q("net1")}, true);
        QVERIFY(steps().contains(q("Net port 1: linked")));
        QCOMPARE(screen("focus"), q("left"));
        leave();
    }

    // A movement that is left out keeps the test from passing, however often the others are made.
    void eachMovementIsNeeded_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("missing");
        for (auto page = movements.begin(); page != movements.end(); ++page) {
            for (const QString &movement : QSet<QString>(page->begin(), page->end()))
                QTest::newRow(qPrintable(page.key() + q(" ") + movement)) << page.key() << movement;
        }
    }
    void eachMovementIsNeeded()
    {
        QFETCH(QString, page);
        QFETCH(QString, missing);
        enter(q("container.factorytest.repairmode.") + page.toLower());
        soft("right");
        for (int round = 0; round < 2; ++round) {
            for (const QString &key : movements.value(page)) {
                if (key != missing)
                    navigate(key);
            }
        }
        QCOMPARE(pageState(), q("running"));
        QCOMPARE(marks().count(q("none")), 1);
        while (pageState() == q("running"))
            navigate(missing);
        QCOMPARE(pageState(), q("passed"));
        soft("right");
        QCOMPARE(marks().count(q("pass")), 0);
        leave();
    }

    // One step may be a bouncing contact.
    void theKnobNeedsThreeStepsInEachDirection()
    {
        enter(q("container.factorytest.repairmode.knob"));
        soft("right");
        for (const QString &key : {q("enter"), q("up"), q("up"), q("down"), q("down")})
            navigate(key);
        QCOMPARE(steps(),
                 QStringList({q("Turn to the left (2/3)"), q("Turn to the right (2/3)"), q("Press the knob")}));
        QCOMPARE(marks(), QStringList({q("none"), q("none"), q("pass")}));
        soft("left");
        QCOMPARE(steps(), QStringList({q("Fail (1)"), q("Turn to the left (2/3)"), q("Turn to the right (2/3)")}));
        QCOMPARE(marks(), QStringList({q("notpass"), q("notpass"), q("notpass")}));
        leave();
    }

    // The keys that the joystick doesn't have, and a key that is held, are no movement.
    void otherKeysAreNoMovement()
    {
        enter(q("container.factorytest.repairmode.knob"));
        soft("right");
        for (const char *key : {"left", "right", "left"})
            navigate(q(key));
        QCOMPARE(marks(), QStringList({q("none"), q("none"), q("none")}));
        for (int turn = 0; turn < 5; ++turn)
            navigate(q("up"));
        QCOMPARE(steps().first(), q("Turn to the left (3/3)"));
        fail();
        soft("right");
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
        QCoreApplication::sendEvent(session->lcd()->focusWidget(), &held);
        QCOMPARE(marks(), QStringList({q("none"), q("none"), q("none")}));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Enter}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(session->lcd()->focusWidget(), &press);
            QCOMPARE(marks(), QStringList({q("none"), q("none"), q("pass")}));
        }
        leave();
    }

    void eachCellIsNeeded()
    {
        enter(q("container.factorytest.repairmode.touchscreen"));
        for (int round = 0; round < 2; ++round) {
            soft("right");
            for (int cell = 0; cell < 40; ++cell) {
                QCOMPARE(steps().first(), q("Touch every field, or drag a finger over it. (%1/40)").arg(cell));
                perform(touchAction(OperatorAction::Kind::Touch, {cell % 8, cell / 8}));
                // A cell counts once.
                if (cell < 39)
                    perform(touchAction(OperatorAction::Kind::Touch, {cell % 8, cell / 8}));
            }
            QCOMPARE(pageState(), q("passed"));
        }
        leave();
    }

    void aDragTouchesTheCellsBetween_data()
    {
        QTest::addColumn<QVector<QPoint>>("path");
        QTest::addColumn<int>("count");
        QTest::newRow("row") << QVector<QPoint>{{0, 2}, {7, 2}} << 8;
        QTest::newRow("to the left") << QVector<QPoint>{{6, 2}, {3, 2}} << 4;
        QTest::newRow("column") << QVector<QPoint>{{3, 4}, {3, 0}} << 5;
        QTest::newRow("corner") << QVector<QPoint>{{0, 0}, {7, 0}, {7, 4}} << 12;
    }
    void aDragTouchesTheCellsBetween()
    {
        QFETCH(QVector<QPoint>, path);
        QFETCH(int, count);
        enter(q("container.factorytest.repairmode.touchscreen"));
        soft("right");
        drag(path);
        QCOMPARE(steps().first(), q("Touch every field, or drag a finger over it. (%1/40)").arg(count));
        fail();
        QCOMPARE(steps(), QStringList({q("Fail (1)"), q("Touched fields (%1/40)").arg(count)}));
        leave();
    }

    // The four corners of the LCD belong to cells as well.
    void theCellsCoverThePage()
    {
        paintLcd();
        enter(q("container.factorytest.repairmode.touchscreen"));
        soft("right");
        QString error;
        QVERIFY(!session->panelOperator().perform({OperatorAction::Kind::Soft, {{q("side"), q("left")}}}, &error));
        QCOMPARE(error, q("The left button is covered."));
        for (const QPoint &corner : {QPoint(0, 0), QPoint(799, 0), QPoint(0, 479), QPoint(799, 479)})
            perform({OperatorAction::Kind::Touch, {{q("x"), corner.x()}, {q("y"), corner.y()}}});
        QCOMPARE(steps().first(), q("Touch every field, or drag a finger over it. (4/40)"));
        auto *grid = session->lcd()->findChild<QWidget *>(q("TouchGrid"));
        QMouseEvent rightButton(QEvent::MouseButtonPress, {450, 250}, Qt::RightButton, Qt::RightButton, {});
        QCoreApplication::sendEvent(grid, &rightButton);
        QCOMPARE(steps().first(), q("Touch every field, or drag a finger over it. (4/40)"));
        const QImage untouched = grid->grab().toImage();
        perform(touchAction(OperatorAction::Kind::Touch, {3, 2}));
        QVERIFY(grid->grab().toImage() != untouched);
        leave();
    }

    // The text is over the cells, whether they are touched or not, and nothing else of the page is seen.
    void theInstructionsAreOverTheCells()
    {
        paintLcd();
        enter(q("container.factorytest.repairmode.touchscreen"));
        QString shown;
        for (const QString &language : session->languages()) {
            perform({OperatorAction::Kind::Language, {{q("code"), language}}});
            soft("right");
            auto *grid = session->lcd()->findChild<QWidget *>(q("TouchGrid"));
            const QImage page = session->lcd()->grab().toImage();
            QCOMPARE(page.size(), grid->size());
            QCOMPARE(page, grid->grab().toImage().convertToFormat(page.format()));
            const QRect text = whiteArea(page);
            QVERIFY2(text.width() > 300 && text.height() > 40, qPrintable(language));
            QVERIFY2(QRect(100, 96, 600, 288).contains(text), qPrintable(language));
            for (int row = 1; row < 4; ++row)
                drag({{1, row}, {6, row}});
            const QImage touched = session->lcd()->grab().toImage();
            QVERIFY(touched != page);
            QVERIFY2(whitePixels(touched) > whitePixels(page) / 2, qPrintable(language));
            back();
            enter(q("container.factorytest.repairmode.touchscreen"));
        }
        perform({OperatorAction::Kind::Language, {{q("code"), q("en")}}});
        leave();
    }

    // The page is left, and the next one entered, while the finger is on the LCD.
    void aFingerMayStayOnTheLcd()
    {
        enter(q("container.factorytest.repairmode.touchscreen"));
        soft("right");
        perform(touchAction(OperatorAction::Kind::TouchDown, {0, 0}));
        leave();
        perform(touchAction(OperatorAction::Kind::TouchMove, {7, 0}));
        enter(q("container.factorytest.repairmode.touchscreen"));
        perform(touchAction(OperatorAction::Kind::TouchMove, {7, 4}));
        QCOMPARE(pageState(), q("idle"));
        perform({OperatorAction::Kind::TouchUp, {}});
        soft("right");
        QCOMPARE(steps().first(), q("Touch every field, or drag a finger over it. (0/40)"));
        leave();
    }

    void theExportHasTheJournalAndItsRuns()
    {
        QTemporaryDir stick;
        openWithStick(stick.path());
        openLastEntry();
        enter(q("container.factorytest.repairmode.joystick"));
        go(q("passed"));
        leave();
        back();
        enter(logExportKey);
        QCOMPARE(screen("right"), q("Export"));
        const int before = journal().size();
        soft("right");
        session->clock().advance(2000);
        QCOMPARE(steps(),
                 QStringList({q("The export is complete. The USB stick can be unplugged."),
                              q("lcd-logs-1-journal.jsonl, lcd-logs-1-runs.jsonl")}));
        QCOMPARE(filesOn(stick), QStringList({q("lcd-logs-1-journal.jsonl"), q("lcd-logs-1-runs.jsonl")}));
        // From the first line to the one that starts the export.
        const QStringList lines = linesOf(stick, "lcd-logs-1-journal.jsonl");
        QVERIFY(lines.size() > before);
        QCOMPARE(lines, journal().mid(0, lines.size()));
        QVERIFY(lines.last().contains(q("lcdLogExport.startExport")));
        const QStringList runs = linesOf(stick, "lcd-logs-1-runs.jsonl");
        QCOMPARE(runs.size(), 1);
        const QJsonObject run = QJsonDocument::fromJson(runs.first().toUtf8()).object();
        QCOMPARE(run.value(q("outcome")).toString(), q("passed"));
        QCOMPARE(run.value(q("phases")).toArray().at(0).toObject().value(q("name")).toString(), q("joystick"));
        leave();
    }

    // At no time is there a file that isn't complete, and nothing is overwritten.
    void theExportHasItsNamesAtTheEnd()
    {
        QTemporaryDir stick;
        openWithStick(stick.path());
        QFile taken(stick.filePath(q("lcd-logs-1-runs.jsonl")));
        QVERIFY(taken.open(QIODevice::WriteOnly) && taken.write("older") == 5);
        taken.close();
        enter(logExportKey);
        soft("right");
        QStringList percents;
        QMap<QString, qint64> sizes;
        for (int time = 0; time < 100 && screen("right") != q("Export again"); ++time) {
            percents << steps().first();
            // The names are given on the thread of the export, before the page knows.
            for (const QFileInfo &file : QDir(stick.path()).entryInfoList(QDir::Files))
                sizes[file.fileName()] = file.size();
            QVERIFY(percents.size() > 5 || sizes.size() == 1);
            QVERIFY(percents.size() < 3 || percents.size() > 5 || allFilesOn(stick).size() == 3);
            session->clock().advance(50);
        }
        percents.removeDuplicates();
        QCOMPARE(percents.size(), 10);
        for (auto size = sizes.begin(); size != sizes.end(); ++size)
            QCOMPARE(size.value(), QFileInfo(stick.filePath(size.key())).size());
        QCOMPARE(allFilesOn(stick),
                 QStringList({q("lcd-logs-1-runs.jsonl"), q("lcd-logs-2-journal.jsonl"), q("lcd-logs-2-runs.jsonl")}));
        QCOMPARE(linesOf(stick, "lcd-logs-1-runs.jsonl"), QStringList(q("older")));
        leave();
    }

    void anExportThatFailsLeavesNothing_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("after");
        QTest::addColumn<QString>("reason");
        for (const int after : {0, 250}) {
            const auto row = [after](const char *fault, const char *reason) {
                QTest::addRow("%s %d", fault, after) << q(fault) << after << q(reason);
            };
            row("usb-stick-missing", "There is no USB stick.");
            row("usb-stick-read-only", "The USB stick is write-protected.");
            row("usb-stick-full", "The USB stick is full.");
        }
    }
    void anExportThatFailsLeavesNothing()
    {
        QFETCH(QString, fault);
        QFETCH(int, after);
        QFETCH(QString, reason);
        QTemporaryDir stick;
        openWithStick(stick.path());
        enter(logExportKey);
        soft("right");
        session->clock().advance(after);
        setFault(*Faults::find(fault), {}, true);
        session->clock().advance(2000);
        QCOMPARE(steps(), QStringList({q("The export failed. Nothing was written."), reason}));
        QCOMPARE(marks().first(), q("notpass"));
        QCOMPARE(allFilesOn(stick), QStringList());
        setFault(*Faults::find(fault), {}, false);
        soft("right");
        session->clock().advance(2000);
        QCOMPARE(filesOn(stick).size(), 2);
        leave();
    }

    // A process that is killed leaves hidden files. The next export removes them, even if they fill the stick.
    void aKilledExportIsCleanedUp()
    {
        QTemporaryDir directory;
        QDir(directory.path()).mkdir(q("stick"));
        const QDir stick(directory.filePath(q("stick")));
        QFile scenario(directory.filePath(q("export.yaml")));
        QVERIFY(scenario.open(QIODevice::WriteOnly));
        // The clock stands still while the keys are pressed, in the middle of the export.
        scenario.write("title: export\ndevice: {usb-stick: stick}\nsteps:\n  - open: em.factorytest.LogExport\n"
                       "  - soft: right\n  - wait: 200ms\n  - repeat: {times: 100000, steps: [{navigate: down}]}\n");
        scenario.close();
        QProcess player;
        player.setStandardOutputFile(QProcess::nullDevice());
        player.start(q(PANELHOST), {q("play"), scenario.fileName()});
        QTRY_COMPARE_WITH_TIMEOUT(hiddenFilesIn(stick).size(), 2, 60000);
        player.kill();
        QVERIFY(player.waitForFinished());
        QCOMPARE(player.exitStatus(), QProcess::CrashExit);
        QCOMPARE(hiddenFilesIn(stick).size(), 2);
        QCOMPARE(stick.entryList(QDir::Files), QStringList());
        QFile other(stick.filePath(q(".lcd-logs-notes")));
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.close();
        exportTo(stick.path());
        QCOMPARE(hiddenFilesIn(stick), QStringList(q(".lcd-logs-notes")));
        QCOMPARE(stick.entryList(QDir::Files),
                 QStringList({q("lcd-logs-1-journal.jsonl"), q("lcd-logs-1-runs.jsonl")}));
    }

    void leftoversDoNotFillTheStick()
    {
        const Mount stick(q("size=128k"));
        if (!stick.isMounted())
            QSKIP("only root may mount a file system");
        QFile leftover(stick.path() + q("/.lcd-logs-1-journal.jsonl.a1B2c3"));
        QVERIFY(leftover.open(QIODevice::WriteOnly));
        leftover.write(QByteArray(128 << 10, 'x'));
        leftover.close();
        exportTo(stick.path());
        QCOMPARE(QDir(stick.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList({q("lcd-logs-1-journal.jsonl"), q("lcd-logs-1-runs.jsonl")}));
        session.reset();
    }

    // Files of an export that another process is writing are no leftovers.
    void twoExportsDoNotDisturbEachOther()
    {
        QTemporaryDir stick;
        ExportWriter other(stick.path(), [] {
            return QVector<ExportWriter::File>{{q("-journal.jsonl"), QByteArray(1000, 'x')}};
        });
        other.writeNext({});
        other.writeNext({});
        exportTo(stick.path());
        while (other.state() == ExportWriter::State::Writing)
            other.writeNext({});
        QCOMPARE(other.state(), ExportWriter::State::Done);
        QCOMPARE(
            allFilesOn(stick),
            QStringList({q("lcd-logs-1-journal.jsonl"), q("lcd-logs-2-journal.jsonl"), q("lcd-logs-2-runs.jsonl")}));
    }

    void aStickMayBePulledOut_data()
    {
        QTest::addColumn<int>("after");
        for (const int after : {60, 250, 460})
            QTest::addRow("%d ms", after) << after;
    }
    void aStickMayBePulledOut()
    {
        QFETCH(int, after);
        Mount stick(q("size=1m"));
        if (!stick.isMounted())
            QSKIP("only root may mount a file system");
        openWithStick(stick.path());
        enter(logExportKey);
        soft("right");
        session->clock().advance(after);
        QCOMPARE(hiddenFilesIn(QDir(stick.path())).size(), 2);
        stick.remove();
        session->clock().advance(2000);
        QCOMPARE(steps(), QStringList({q("The export failed. Nothing was written."), q("There is no USB stick.")}));
        // Nothing comes into the empty directory in its place.
        QCOMPARE(QDir(stick.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
        leave();
    }

    // The errors of a real file system.
    void aStickMayBeUnusable_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<QString>("reason");
        QTest::newRow("full") << q("size=4k") << q("The USB stick is full.");
        QTest::newRow("read-only") << q("ro") << q("The USB stick is write-protected.");
        QTest::newRow("no files left") << q("nr_inodes=1") << q("The USB stick is full.");
    }
    void aStickMayBeUnusable()
    {
        QFETCH(QString, options);
        QFETCH(QString, reason);
        const Mount stick(options);
        if (!stick.isMounted())
            QSKIP("only root may mount a file system");
        openWithStick(stick.path());
        enter(logExportKey);
        soft("right");
        session->clock().advance(2000);
        QCOMPARE(steps(), QStringList({q("The export failed. Nothing was written."), reason}));
        QCOMPARE(QDir(stick.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
        session.reset();
    }

    void withoutAStickThePageSaysSo()
    {
        QTemporaryDir directory;
        for (const QString &stick : {Session::noUsbStick, directory.filePath(q("absent"))}) {
            openWithStick(stick);
            enter(logExportKey);
            soft("right");
            session->clock().advance(2000);
            QCOMPARE(steps().last(), q("There is no USB stick."));
            leave();
        }
    }

    void anExportMayEndAtAnyTime_data()
    {
        QTest::addColumn<int>("after");
        for (const int after : {0, 49, 50, 120, 400, 600})
            QTest::addRow("%d ms", after) << after;
    }
    void anExportMayEndAtAnyTime()
    {
        QFETCH(int, after);
        QTemporaryDir stick;
        openWithStick(stick.path());
        const auto start = [&] {
            enter(logExportKey);
            soft("right");
            session->clock().advance(after);
            QCOMPARE(screen("left"), after < 550 ? q("Cancel") : QString());
        };
        const bool isDone = after >= 550;
        start();
        soft("left");
        QCOMPARE(screen("right"), isDone ? q("Export again") : q("Export"));
        // A report of the export that was cancelled isn't taken for one of the next.
        soft("right");
        session->clock().advance(49);
        QCOMPARE(steps().first(), q("Writing: 0 %"));
        leave();
        session->clock().advance(2000);
        QCOMPARE(allFilesOn(stick).size(), isDone ? 2 : 0);
        start();
        session.reset();
        QCOMPARE(allFilesOn(stick).size(), isDone ? 4 : 0);
    }

    // The GUI thread goes on while the stick doesn't.
    void aSlowStickBlocksNothing()
    {
        QTemporaryDir stick;
        QSemaphore slow;
        Session::Options options;
        options.usbStick = stick.path();
        options.deriveRuns = [&slow](const QByteArray &) {
            slow.acquire();
            return QByteArray();
        };
        open(options);
        enter(logExportKey);
        session->clock().run(1);
        soft("right");
        QElapsedTimer time;
        time.start();
        while (session->clock().now() < 200)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QVERIFY(time.elapsed() >= 150);
        QCOMPARE(steps().first(), q("Writing: 0 %"));
        slow.release();
        QTRY_COMPARE(screen("right"), q("Export again"));
        session->clock().stop();
        QCOMPARE(filesOn(stick).size(), 2);
        leave();
    }

    void theHostsServicesMayBeAbsent_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("service");
        QTest::newRow("log export") << logExportKey << q("lcdLogExport");
        QTest::newRow("factory reset") << factoryResetKey << q("lcdFactoryReset");
    }
    void theHostsServicesMayBeAbsent()
    {
        QFETCH(QString, key);
        QFETCH(QString, service);
        const FaultInfo &absent = *Faults::find(q("service-absent"));
        setFault(absent, service, true);
        enter(key);
        const QString caption = screen("right");
        soft("right");
        QCOMPARE(screen("right"), caption);
        QVERIFY(steps().contains(q("The device doesn't offer what this test needs.")));
        setFault(absent, service, false);
        soft("right");
        QCOMPARE(screen("left").isEmpty(), false);
        // It may go while the page is open.
        setFault(absent, service, true);
        soft("left");
        session->clock().advance(2000);
        setFault(absent, service, false);
        if (screen("page") == q("repair"))
            leave();
        QCOMPARE(troubles(), QStringList());
    }

    void theResetIsConfirmed()
    {
        changeDevice();
        const int before = countOf("lcdFactoryReset.resetDevice");
        enter(factoryResetKey);
        QCOMPARE(screen("right"), q("Reset"));
        QCOMPARE(dangerousButton(), q("right"));
        soft("right");
        QCOMPARE(screen("stepTitle"), q("Do you really want to reset the device?"));
        QCOMPARE(screen("focus"), q("right"));
        QCOMPARE(dangerousButton(), q("left"));
        QCOMPARE(screen("right"), q("Cancel"));
        soft("right");
        QCOMPARE(screen("right"), q("Reset"));
        QCOMPARE(countOf("lcdFactoryReset.resetDevice"), before);
        session->clock().advance(2000);
        QCOMPARE(session->device().state().screenBrightness[1], 30);
        soft("right");
        soft("left");
        QCOMPARE(screen("stepTitle"), q("The device is being reset"));
        QCOMPARE(screen("left") + screen("right"), QString());
        session->clock().advance(2000);
        QCOMPARE(screen("page"), q("menu"));
        QCOMPARE(troubles(), QStringList());
        QCOMPARE(session->device().state().testType, -1);
        QCOMPARE(session->device().state().machineTestKind, -1);
        QVERIFY(session->device().state().tbar.failure.isEmpty());
        QVERIFY(findPort(session->device().state(), q("net1"))->isPlugged);
    }

    void aResetMayFail()
    {
        changeDevice();
        setFault(*Faults::find(q("factory-reset-fails")), {}, true);
        enter(factoryResetKey);
        soft("right");
        soft("left");
        session->clock().advance(2000);
        QCOMPARE(steps(),
                 QStringList({q("The factory reset failed."),
                              q("The device has reported an error. The log contains the message.")}));
        QCOMPARE(countOfLog(q("Factory reset failed: The settings can't be written.")), 1);
        QCOMPARE(screen("right"), q("Try again"));
        QCOMPARE(session->device().state().screenBrightness[1], 30);
        setFault(*Faults::find(q("factory-reset-fails")), {}, false);
        soft("right");
        QCOMPARE(screen("right"), q("Cancel"));
        soft("left");
        session->clock().advance(2000);
        QCOMPARE(screen("page"), q("menu"));
    }

    // In each language, without a word of the service.
    void everyReasonIsTranslated_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("fault");
        QTest::newRow("missing") << logExportKey << q("usb-stick-missing");
        QTest::newRow("full") << logExportKey << q("usb-stick-full");
        QTest::newRow("read-only") << logExportKey << q("usb-stick-read-only");
        QTest::newRow("broken") << logExportKey << QString();
        QTest::newRow("reset") << factoryResetKey << q("factory-reset-fails");
    }
    void everyReasonIsTranslated()
    {
        QFETCH(QString, key);
        QFETCH(QString, fault);
        QTemporaryDir directory;
        const QString loop = directory.filePath(q("loop"));
        QVERIFY(QFile::link(q("loop"), loop));
        openWithStick(fault.isEmpty() ? loop : directory.path());
        if (!fault.isEmpty())
            setFault(*Faults::find(fault), {}, true);
        QSet<QString> reasons;
        for (const QString &language : session->languages()) {
            perform({OperatorAction::Kind::Language, {{q("code"), language}}});
            enter(key);
            soft("right");
            if (key == factoryResetKey)
                soft("left");
            session->clock().advance(2000);
            QCOMPARE(steps().size(), 2);
            QCOMPARE(colors(), QStringList({failureColor, failureColor}));
            reasons << steps().last();
            leave();
        }
        QCOMPARE(reasons.size(), session->languages().size());
        perform({OperatorAction::Kind::Language, {{q("code"), q("en")}}});
        if (fault.isEmpty())
            QVERIFY(countOfLog(q("Log export failed: Too many levels of symbolic links")) > 0);
    }

    // These pages are no tests.
    void noTestIsNamedWhereThereIsNone()
    {
        QTemporaryDir stick;
        openWithStick(stick.path());
        for (const QString &key : {logExportKey, factoryResetKey}) {
            for (const char *fault : {"usb-stick-full", "factory-reset-fails"})
                setFault(*Faults::find(q(fault)), {}, true);
            enter(key);
            QCOMPARE(screen("stepTitle"), QString());
            soft("right");
            QCOMPARE(screen("stepTitle").isEmpty(), key == logExportKey);
            if (key == factoryResetKey)
                soft("left");
            session->clock().advance(2000);
            QCOMPARE(screen("stepTitle"), QString());
            QCOMPARE(marks().first(), q("notpass"));
            setFault(*Faults::find(q("usb-stick-full")), {}, false);
            soft("right");
            session->clock().advance(2000);
            QCOMPARE(screen("stepTitle").isEmpty(), key == logExportKey);
            leave();
        }
        enter(q("container.factorytest.repairmode.knob"));
        QCOMPARE(screen("stepTitle"), q("Test steps"));
        go(q("failed"));
        QCOMPARE(screen("stepTitle"), q("Test complete"));
    }

    // The result of a reset comes to a page that was left, to another page, and to none at all.
    void aResetMayBeLeft()
    {
        const auto reset = [this] {
            enter(factoryResetKey);
            soft("right");
            soft("left");
        };
        reset();
        back();
        session->clock().advance(2000);
        QCOMPARE(screen("page"), q("menu"));
        reset();
        show(logExportKey);
        session->clock().advance(2000);
        QCOMPARE(screen("right"), q("Export"));
        reset();
        back();
        enter(factoryResetKey);
        session->clock().advance(2000);
        QCOMPARE(screen("right"), q("Reset"));
        soft("right");
        session->clock().advance(2000);
        QCOMPARE(screen("right"), q("Cancel"));
        back();
        reset();
        session.reset();
    }

    // The style sheet of the LCD leaves the fonts and colors of the test pages as the frame has set them.
    void headingsAreLargerThanTheTextOnTheLcd_data() { eachPage(); }
    void headingsAreLargerThanTheTextOnTheLcd()
    {
        QFETCH(QString, key);
        paintLcd();
        enter(key);
        session->lcd()->grab();
        const QWidget *frame = findTestFrame(session->lcd());
        QVERIFY(frame);
        const auto *title = frame->findChild<QLabel *>(q("FactoryTitleLabel"));
        const auto *heading = frame->findChild<QLabel *>(q("FactoryStepTitle"));
        QVERIFY(title && heading);
        const int text = frame->property("contentFontSize").toInt() * frame->height() / 480;
        QVERIFY(title->font().pixelSize() >= text);
        QVERIFY(title->palette().color(QPalette::WindowText).lightness() > 200);
        if (!heading->text().isEmpty())
            QVERIFY2(heading->font().pixelSize() > text, qPrintable(QString::number(heading->font().pixelSize())));
    }

    void onlyTheResetIsDangerous_data() { eachPage(); }
    void onlyTheResetIsDangerous()
    {
        QFETCH(QString, key);
        enter(key);
        QCOMPARE(!dangerousButton().isEmpty(), key == factoryResetKey);
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
    const QString logExportKey = q("container.logexport");
    const QString factoryResetKey = q("container.resetfactory");

    const QString failureColor = q("#ff483c");

    static QStringList hiddenFilesIn(const QDir &directory)
    {
        return directory.entryList({q(".*")}, QDir::Files | QDir::Hidden);
    }

    /// Returns all of @p states, or at the quick length one of them, each time the next.
    QStringList someOf(const QStringList &states)
    {
        return proofLength(QStringList{states.at(visitCount++ % states.size())}, states, states);
    }

    void exportTo(const QString &stick)
    {
        openWithStick(stick);
        enter(logExportKey);
        soft("right");
        session->clock().advance(2000);
        QCOMPARE(steps().first(), q("The export is complete. The USB stick can be unplugged."));
        leave();
    }

    static bool isWhite(QRgb pixel) { return qRed(pixel) > 200 && qGreen(pixel) > 200 && qBlue(pixel) > 200; }

    static QRect whiteArea(const QImage &image)
    {
        QRect area;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                area |= isWhite(image.pixel(x, y)) ? QRect(x, y, 1, 1) : QRect();
        }
        return area;
    }

    static int whitePixels(const QImage &image)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += isWhite(image.pixel(x, y)) ? 1 : 0;
        }
        return count;
    }

    int countOfLog(const QString &line) const
    {
        const QVector<Journal::Entry> entries = session->journal().entries();
        return static_cast<int>(std::count_if(entries.begin(), entries.end(), [&line](const Journal::Entry &entry) {
            return entry.toJsonLine().contains(line.toUtf8());
        }));
    }

    static QString portText(const QString &port)
    {
        return (port.startsWith(q("net")) ? q("Net port ") : q("USB port ")) + port.mid(3);
    }

    void plug(const QStringList &ports, bool plugged)
    {
        for (const QString &port : ports)
            perform({plugged ? OperatorAction::Kind::Plug : OperatorAction::Kind::Unplug, {{q("port"), port}}});
        session->clock().advance(200);
    }

    void openWithStick(const QString &stick)
    {
        Session::Options options;
        options.usbStick = stick;
        options.deriveRuns = runLines;
        open(options);
    }

    QStringList journal() const
    {
        return QString::fromUtf8(session->journal().toJsonLines()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    static QStringList filesOn(const QTemporaryDir &stick) { return QDir(stick.path()).entryList(QDir::Files); }
    static QStringList allFilesOn(const QTemporaryDir &stick)
    {
        return QDir(stick.path()).entryList(QDir::Files | QDir::Hidden);
    }

    static QStringList linesOf(const QTemporaryDir &stick, const char *name)
    {
        QFile file(stick.filePath(q(name)));
        return file.open(QIODevice::ReadOnly)
            ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
            : QStringList();
    }

    int countOf(const char *name) const
    {
        const QVector<Journal::Entry> entries = session->journal().entries();
        return static_cast<int>(std::count_if(entries.begin(), entries.end(),
                                              [name](const Journal::Entry &entry) { return entry.name == q(name); }));
    }

    // Everything that a reset sets back, and a port, which it doesn't.
    void changeDevice()
    {
        Device &device = session->device();
        device.setScreenBrightness(1, 30);
        device.setTestPattern(1, 2);
        device.setPatternLevel(9);
        device.setKeyLed(1, {2, 1, 100, 800});
        device.setTestType(3);
        device.setMachineTestKind(1);
        device.setPanelMode(12);
        device.calibrate(1, {});
        session->clock().advance(100);
        device.setPanelMode(3);
        perform({OperatorAction::Kind::Plug, {{q("port"), q("net1")}}});
    }

    void eachPage()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("services");
        const auto row = [](const char *tail, const char *title, const char *services) {
            QTest::newRow(tail) << q("container.factorytest.repairmode.") + q(tail) << q(title)
                                << q(services).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        row("screenlight", "Screen brightness", "lcdKeyboardEvent");
        row("screenbadpixel", "Screen pixels", "lcdKeyboardEvent");
        row("screenbadpixels", "Screen pixels", "lcdKeyboardEvent");
        row("buttonlight", "Key lights", "lcdKeyboardEvent");
        row("buttonfunction", "Key function", "lcdKeyboardEvent lcdFactoryModeWidget");
        row("knob", "Knob", "");
        row("joystick", "Joystick", "");
        row("tbar", "T-Bar", "lcdKeyboardEvent lcdTBarCalibration");
        row("net", "Net ports", "lcdMemoryCacheNetworkPort");
        row("touchscreen", "Touch screen", "");
        row("usb", "USB ports", "lcdMemoryCacheNodeUSB");
    }

    void eachPageAndService()
    {
        eachPage();
        QTest::newRow("logexport") << logExportKey << q("Log export") << QStringList{q("lcdLogExport")};
        QTest::newRow("resetfactory") << factoryResetKey << q("Factory reset") << QStringList{q("lcdFactoryReset")};
    }

    void open(const Session::Options &options)
    {
        session.reset();
        QString error;
        session = Session::open(options, &error);
        QVERIFY2(session, qPrintable(error));
        session->lcd()->show();
        session->lcd()->setUpdatesEnabled(proofLength(false, true, true));
        session->clock().settle();
    }

    /// At the quick length, the LCD is painted only in the tests that look at its picture.
    void paintLcd() { session->lcd()->setUpdatesEnabled(true); }

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

    QStringList steps() const { return ofSteps("text"); }

    QStringList ofSteps(const char *what) const
    {
        QStringList values;
        for (const QVariant &step : readScreen(session->lcd()).value(q("steps")).toList())
            values << step.toMap().value(q(what)).toString();
        return values;
    }

    QStringList marks() const { return ofSteps("mark"); }
    QStringList colors() const { return ofSteps("color"); }

    void soft(const char *side)
    {
        if (!screen(side).isEmpty())
            perform({OperatorAction::Kind::Soft, {{q("side"), q(side)}}});
    }

    void navigate(const QString &key) { perform({OperatorAction::Kind::Navigate, {{q("key"), key}}}); }

    QString dangerousButton() const { return findTestFrame(session->lcd())->property("dangerousButton").toString(); }

    void back() { perform({OperatorAction::Kind::Navigate, {{q("key"), q("back")}}}); }

    // While the keys belong to the test, it is stopped first.
    void leave()
    {
        if (screen("left") == q("Stop test"))
            soft("left");
        back();
        QCOMPARE(screen("page"), q("menu"));
    }

    // A reset that succeeds leaves its page.
    void leaveIfOpen()
    {
        if (screen("page") != q("menu"))
            leave();
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
            moveControl();
            dragOverAllCells();
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

    // The last movement passes the test. After that the keys operate the page.
    void moveControl()
    {
        for (const QString &key : movements.value(screen("title"))) {
            QCOMPARE(pageState(), q("running"));
            navigate(key);
        }
    }

    // From the center of one cell to that of another, by column and row.
    void drag(const QVector<QPoint> &cells)
    {
        perform(touchAction(OperatorAction::Kind::TouchDown, cells.first()));
        for (const QPoint &cell : cells.mid(1))
            perform(touchAction(OperatorAction::Kind::TouchMove, cell));
        perform({OperatorAction::Kind::TouchUp, {}});
    }

    static OperatorAction touchAction(OperatorAction::Kind kind, const QPoint &cell)
    {
        return {kind, {{q("x"), 100 * cell.x() + 50}, {q("y"), 96 * cell.y() + 48}}};
    }

    void dragOverAllCells()
    {
        for (int row = 0; row < 5 && screen("title") == q("Touch screen"); ++row)
            drag({{0, row}, {7, row}});
    }

    void fail()
    {
        if (screen("title") != q("Touch screen"))
            return soft("left");
        navigate(q("left"));
        navigate(q("enter"));
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

    static bool hasListeners(const QString &key)
    {
        const QStringList without = {q("screenlight"), q("screenbadpixel"), q("screenbadpixels"), q("buttonlight"),
                                     q("knob"),        q("joystick"),       q("touchscreen")};
        return !without.contains(key.section(QLatin1Char('.'), -1));
    }

    // Also for the pages that are no tests: the reset is confirmed, and passing leaves its page.
    QString visitState(const QString &visit)
    {
        const bool isReset = screen("title") == q("Factory reset");
        if (!isReset && screen("title") != q("Log export"))
            return go(visit);
        if (visit == q("idle"))
            return visit;
        soft("right");
        if (isReset)
            soft("left");
        session->clock().advance(visit == q("running") ? 100 : 2000);
        const bool isDone = screen("page") == q("menu") || screen("right") == q("Export again");
        return isDone ? q("passed") : visit;
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
            fail();
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
        visitState(visit);
        leaveIfOpen();
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

    // Two threads that Qt doesn't know call every listener that is registered.
    void sendFromForeignThreads(const std::function<void()> &meanwhile)
    {
        constexpr int Rounds = 40;
        const std::vector<Events::Send> events = tap->events();
        const auto send = [&events] {
            for (int round = 0; round < Rounds; ++round) {
                for (const Events::Send &event : events)
                    event(round);
            }
        };
        std::thread first(send);
        std::thread second(send);
        meanwhile();
        first.join();
        second.join();
        session->clock().settle();
    }

    int visitCount = 0;               ///< of someOf() at the quick length
    std::unique_ptr<ListenerTap> tap; ///< outlives the session
    std::unique_ptr<Session> session;
};

PANELHOST_TEST_MAIN(tst_RepairPages)
#include "tst_repairpages.moc"
