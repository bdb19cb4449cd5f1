#include "panelprocess.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QtTest>

#include <memory>

/// The window on a real X server, touched with mouse and keyboard like any other.
class TestWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void keysMoveThroughTheMenu();
    void joystickMovesThroughTheMenu();
    void touchOpensARow();
    void panelKeyIsPressedAndHeld();
    void portsArePluggedByClick();
    void tbarIsDragged();
    void speedIsChosen();
    void completeMachinePassesByHand();
    void closesInTheMiddleOfARun();
    void playsARecentFile();
    void aPlayedScenarioIsSaved_data();
    void aPlayedScenarioIsSaved();

private:
    void write(const char *name, const QByteArray &content) const;
    void waitForWindow(const char *title) const;
    void playRecentFile();
    QStringList savedRuns() const;
    void open(const QStringList &arguments = {});
    void waitFor(const char *property, const QJsonValue &value);
    void finishPhases();
    bool act();
    void calibrate();
    void waitForActions(int count);

    XServer m_xServer;
    std::unique_ptr<PanelProcess> m_panel;
};

void TestWindow::initTestCase()
{
    QVERIFY(m_xServer.start("1400x1000x24"));
}

void TestWindow::init()
{
    m_panel = std::make_unique<PanelProcess>(m_xServer);
}

void TestWindow::cleanup()
{
    m_panel.reset();
}

void TestWindow::open(const QStringList &arguments)
{
    QVERIFY(m_panel->start(arguments));
    QCOMPARE(m_panel->page(), text("menu"));
}

void TestWindow::waitFor(const char *property, const QJsonValue &value)
{
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->screen().value(QLatin1String(property))), value, 20000);
}

void TestWindow::keysMoveThroughTheMenu()
{
    open();
    waitFor("menu.row", 0);
    m_xServer.type(text("Down"));
    waitFor("menu.row", 1);
    m_xServer.type(text("Up"));
    waitFor("menu.row", 0);
    m_xServer.type(text("Return"));
    waitFor("page", text("aging"));
    m_xServer.type(text("Escape"));
    waitFor("page", text("menu"));
    QCOMPARE(m_panel->count(text("action"), text("navigate")), 4);
}

void TestWindow::joystickMovesThroughTheMenu()
{
    open();
    m_panel->click(text("nav-down"));
    waitFor("menu.row", 1);
    m_panel->click(text("nav-up"));
    waitFor("menu.row", 0);
    m_panel->click(text("knob"));
    waitFor("page", text("aging"));
    m_panel->click(text("nav-back"));
    waitFor("page", text("menu"));
}

void TestWindow::touchOpensARow()
{
    open();
    m_panel->touch({100, 20});
    waitFor("page", text("aging"));
    QCOMPARE(m_panel->count(text("action"), text("touch")), 1);
}

void TestWindow::panelKeyIsPressedAndHeld()
{
    open();
    m_panel->click(text("key-27"));
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("press"))), 1);
    m_xServer.click(m_panel->place(text("key-5")).center(), 3);
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("hold"))), 1);
    m_panel->click(text("key-5"));
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("release"))), 1);
}

void TestWindow::portsArePluggedByClick()
{
    open();
    for (const char *port : {"net1", "usb2"}) {
        m_panel->clickPort(text(port));
    }
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("plug"))), 2);
    const QRect usb = m_panel->place(text("usb3"));
    m_xServer.click({usb.center().x(), usb.bottom() - usb.height() / 10});
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("block"))), 1);
    m_panel->clickPort(text("net1"));
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("unplug"))), 1);
}

void TestWindow::tbarIsDragged()
{
    open({text("--tbar"), text("fader")});
    const QRect bar = m_panel->place(text("tbar"));
    m_xServer.drag(bar.center(), QPoint(bar.center().x(), bar.top() + 10));
    QTRY_VERIFY(m_panel->journalBytes().contains("\"name\":\"tbar\",\"data\":{\"position\":1}"));
    QVERIFY(m_panel->poll());
    QVERIFY(m_panel->count(text("action"), text("tbar")) >= 2);
}

// At full speed an aging test has gone through its steps many times before a minute of wall time has passed.
void TestWindow::speedIsChosen()
{
    open({text("--speed"), text("pause")});
    m_xServer.type(text("Return"));
    waitFor("page", text("aging"));
    m_xServer.type(text("Return"));
    QTRY_COMPARE((m_panel->poll(), m_panel->count(text("action"), text("navigate"))), 2);
    const int before = m_panel->count(text("call"), text("lcdKeyboardEvent.setScreenBrightness"));
    m_panel->click(text("speed-max"));
    QTRY_VERIFY_WITH_TIMEOUT(
        (m_panel->poll(), m_panel->count(text("call"), text("lcdKeyboardEvent.setScreenBrightness")) > before + 30),
        30000);
}

// Waits for the component's response to the action with the given number. Otherwise the next action would follow a
// screen that is no longer shown.
void TestWindow::waitForActions(int count)
{
    QTRY_VERIFY_WITH_TIMEOUT((m_panel->poll(), m_panel->actionCount() >= count && m_panel->hasRespondedToLastAction()),
                             20000);
}

// Does what an operator does next, from what the LCD shows and which key blinks. Returns false if there is nothing to
// do yet.
bool TestWindow::act()
{
    const int key = m_panel->blinkingKey();
    const int actions = m_panel->actionCount();
    if (m_panel->screen().value(text("titleIcon")).toString() == text("ButtonFunction") && key >= 0)
        m_panel->click(QStringLiteral("key-%1").arg(key));
    else if (!m_panel->caption("right").isEmpty())
        m_xServer.type(text("Return"));
    else
        return false;
    waitForActions(actions + 1);
    return true;
}

void TestWindow::calibrate()
{
    const QRect bar = m_panel->place(text("tbar"));
    const int top = bar.top() + 10;
    const int bottom = bar.bottom() - 60;
    const int actions = m_panel->actionCount();
    for (const int y : {top, bottom, top, bottom, top, bottom}) {
        m_xServer.type(text("Return"));
        m_xServer.click({bar.center().x(), y});
    }
    m_xServer.type(text("Return"));
    waitForActions(actions + 13);
}

void TestWindow::finishPhases()
{
    bool isCalibrated = false;
    QElapsedTimer timer;
    timer.start();
    while (m_panel->caption("left") != text("Test again") && timer.elapsed() < 180000) {
        const bool isTBar = m_panel->screen().value(text("titleIcon")).toString().startsWith(text("fc_tbar"));
        if (isTBar && !std::exchange(isCalibrated, true))
            calibrate();
        if (!act())
            QVERIFY2(QTest::qWaitFor([this] { return m_panel->poll(); }, 20000), "Nothing happened for 20 s.");
        if (QTest::currentTestFailed())
            return;
    }
}

void TestWindow::completeMachinePassesByHand()
{
    open({text("--speed"), text("max")});
    for (const char *port : {"net1", "net2", "usb1", "usb2", "usb3", "usb4"})
        m_panel->clickPort(text(port));
    m_xServer.type(text("Down"));
    m_xServer.type(text("Return"));
    waitFor("page", text("machine"));
    finishPhases();
    QCOMPARE(m_panel->caption("left"), text("Test again"));
    QVERIFY(m_panel->journalBytes().contains("Test passed"));
    QCOMPARE(m_panel->count(text("event"), text("lcdTBarCalibration.result")), 7);
    QVERIFY(!m_panel->journalBytes().contains("\"ok\":false"));
    m_xServer.type(text("Escape"));
    waitFor("page", text("menu"));
}

void TestWindow::write(const char *name, const QByteArray &content) const
{
    const QFileInfo info(m_panel->path(text(name)));
    QVERIFY(QDir().mkpath(info.path()));
    QFile file(info.filePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

// While a window is being replaced, the search ends with an error and is repeated.
void TestWindow::waitForWindow(const char *title) const
{
    const auto isThere = [this, title] {
        QProcess search;
        search.start(text("env"),
                     {text("DISPLAY=") + m_xServer.display(), text("xdotool"), text("search"), text("--onlyvisible"),
                      text("--name"), text(title)});
        return search.waitForFinished(10000) && search.exitCode() == 0;
    };
    QVERIFY2(QTest::qWaitFor(isThere, 30000), title);
    m_xServer.xdotool({text("search"), text("--sync"), text("--onlyvisible"), text("--name"), text(title),
                       text("windowfocus"), text("--sync")});
}

void TestWindow::playRecentFile()
{
    for (const char *key : {"alt+f", "c", "Return"})
        m_xServer.type(text(key));
    waitForWindow("^PASSED: Small");
}

QStringList TestWindow::savedRuns() const
{
    QProcess runs;
    runs.start(text(LCD_BUILD_DIR "/bin/panelhost"),
               {text("runs"), text("--records"), text("sqlite:") + m_panel->path(text("runs.sqlite")), text("--json")});
    runs.waitForFinished(30000);
    QStringList saved;
    const QList<QByteArray> lines = runs.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        const QJsonObject run = QJsonDocument::fromJson(line).object();
        QStringList values;
        for (const char *key : {"kind", "outcome", "unit", "station"})
            values << run.value(QLatin1String(key)).toString();
        if (!run.isEmpty())
            saved << values.join(QLatin1Char(' '));
    }
    return saved;
}

// The session of the window ends, that of the scenario begins, and then a new one.
void TestWindow::playsARecentFile()
{
    write("small.yaml", "title: Small\nsteps:\n  - navigate: down\n  - wait: 300ms\n");
    write("config/panelhost/panelhost.ini", "recent-files=" + m_panel->path(text("small.yaml")).toUtf8() + '\n');
    open();
    playRecentFile();
    m_xServer.type(text("ctrl+n"));
    waitForWindow("^panelhost$");
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_panel->process().exitCode(), 0);
}

void TestWindow::aPlayedScenarioIsSaved_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("scanned"); // keys
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QString>("unit");
    const QStringList option{text("--unit"), text("A1")};
    const QStringList asks = option + QStringList{text("--ask-unit")};
    const QStringList scanned{text("B"), text("2"), text("Return")};
    QTest::newRow("the unit of the option") << option << QStringList() << QByteArray() << text("A1");
    QTest::newRow("the unit of the scenario") << option << QStringList() << QByteArray("unit: C3\n") << text("C3");
    QTest::newRow("the unit that was scanned") << asks << scanned << QByteArray() << text("B2");
}

// One run is the scenario's, and one is what the operator does after it.
void TestWindow::aPlayedScenarioIsSaved()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, scanned);
    QFETCH(QByteArray, head);
    QFETCH(QString, unit);
    write("small.yaml", "title: Small\n" + head + "steps:\n  - open: RepairMode/Knob\n  - navigate: back\n");
    write("config/panelhost/panelhost.ini", "recent-files=" + m_panel->path(text("small.yaml")).toUtf8() + '\n');
    open(options
         + QStringList{text("--station"), text("S3"), text("--records"),
                       text("sqlite:") + m_panel->path(text("runs.sqlite"))});
    for (const QString &key : qAsConst(scanned))
        m_xServer.type(key);
    playRecentFile();
    for (const char *key : {"Return", "Escape", "ctrl+q"})
        m_xServer.type(text(key));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitCode(), 0);
    const QString run = text("repair aborted ") + unit + text(" S3");
    QCOMPARE(savedRuns(), (QStringList{run, run}));
}

void TestWindow::closesInTheMiddleOfARun()
{
    open({text("--speed"), text("max")});
    m_xServer.type(text("Return"));
    waitFor("page", text("aging"));
    m_xServer.type(text("Return"));
    waitFor("left", text("Recount"));
    m_xServer.xdotool({text("mousemove"), text("600"), text("780"), text("mousedown"), text("1")});
    m_xServer.type(text("ctrl+q"));
    QVERIFY(m_panel->process().waitForFinished(30000));
    QCOMPARE(m_panel->process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_panel->process().exitCode(), 0);
    m_xServer.xdotool({text("mouseup"), text("1")});
}

int main(int argc, char **argv)
{
    TestWindow test;
    return runOnXServer(test, argc, argv);
}

#include "tst_window.moc"
