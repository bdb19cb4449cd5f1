#include "panelprocess.h"

#include <QtTest/QtTest>

#include <memory>

/// The pages of the repair mode in the window on a real X server: real keys, clicks and drags reach the tests.
class TestRepairWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_xServer.start("1400x1000x24")); }
    void cleanup() { m_panel.reset(); }

    void theKnobTurnsBothWays();
    void theJoystickMovesInAllDirections();
    void aDragCoversTheTouchScreen();
    void theKeysOfThePanelAnswerTheWalk();

private:
    void openPage(const QString &name, int row);
    void waitFor(const char *property, const QJsonValue &value);
    void type(const char *key);
    QString firstLine();

    XServer m_xServer;
    std::unique_ptr<PanelProcess> m_panel;
};

void TestRepairWindow::waitFor(const char *property, const QJsonValue &value)
{
    QTRY_COMPARE_WITH_TIMEOUT((m_panel->poll(), m_panel->screen().value(QLatin1String(property))), value, 20000);
}

void TestRepairWindow::type(const char *key)
{
    m_xServer.type(text(key));
}

QString TestRepairWindow::firstLine()
{
    m_panel->poll();
    return m_panel->screen().value(text("steps")).toArray().at(0).toObject().value(text("text")).toString();
}

// The submenu is the last entry of the first level.
void TestRepairWindow::openPage(const QString &name, int row)
{
    m_panel = std::make_unique<PanelProcess>(m_xServer);
    QVERIFY(m_panel->start({}));
    waitFor("menu.row", 0);
    for (int down = 1; down <= 4; ++down) {
        type("Down");
        waitFor("menu.row", down);
    }
    type("Return");
    waitFor("menu.level", 2);
    for (int down = 1; down <= row; ++down) {
        type("Down");
        waitFor("menu.row", down);
    }
    type("Return");
    waitFor("title", name);
    type("Return");
    waitFor("right", name == text("Key function") ? text("Skip key") : QString());
}

void TestRepairWindow::theKnobTurnsBothWays()
{
    openPage(text("Knob"), 4);
    const QRect knob = m_panel->place(text("knob"));
    for (int turn = 0; turn < 3; ++turn) {
        m_xServer.click(knob.center(), 4);
        m_xServer.click(knob.center(), 5);
    }
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Turn to the left (3/3)"), 20000);
    m_xServer.click(knob.center());
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Test passed"), 20000);
    type("Return");
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Turn to the left (0/3)"), 20000);
    m_panel->touch({200, 440});
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Fail (1)"), 20000);
    type("Escape");
    waitFor("page", text("menu"));
}

void TestRepairWindow::theJoystickMovesInAllDirections()
{
    openPage(text("Joystick"), 5);
    for (const char *key : {"Up", "Down", "Left"})
        type(key);
    for (const char *control : {"nav-right", "nav-enter"})
        m_panel->click(text(control));
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Test passed"), 20000);
    m_panel->click(text("nav-back"));
    waitFor("page", text("menu"));
}

void TestRepairWindow::aDragCoversTheTouchScreen()
{
    openPage(text("Touch screen"), 8);
    const QPoint lcd = m_panel->place(text("lcd-overlay")).topLeft();
    m_panel->touch({50, 48});
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Touch every field, or drag a finger over it. (1/40)"), 20000);
    for (int row = 0; row < 5; ++row)
        m_xServer.drag(lcd + QPoint(10, 48 + 96 * row), lcd + QPoint(790, 48 + 96 * row));
    QTRY_COMPARE_WITH_TIMEOUT(firstLine(), text("Test passed"), 20000);
    QVERIFY(m_panel->count(text("action"), text("touch-up")) == 5);
    type("Escape");
    waitFor("page", text("menu"));
}

void TestRepairWindow::theKeysOfThePanelAnswerTheWalk()
{
    openPage(text("Key function"), 3);
    for (int walked = 0; walked < 3; ++walked) {
        QTRY_VERIFY_WITH_TIMEOUT((m_panel->poll(), m_panel->blinkingKey() >= 0), 20000);
        const int key = m_panel->blinkingKey();
        m_panel->click(QStringLiteral("key-%1").arg(key));
        QTRY_VERIFY_WITH_TIMEOUT((m_panel->poll(), m_panel->blinkingKey() >= 0 && m_panel->blinkingKey() != key),
                                 20000);
    }
    type("Escape");
    m_panel->touch({600, 440});
    QTRY_VERIFY_WITH_TIMEOUT((m_panel->poll(), m_panel->journalBytes().contains("Failed keys: PGM 4")), 20000);
    QCOMPARE(m_panel->page(), text("repair"));
    m_panel->touch({200, 440});
    waitFor("right", text("Start test"));
    type("Escape");
    waitFor("page", text("menu"));
}

int main(int argc, char **argv)
{
    TestRepairWindow test;
    return runOnXServer(test, argc, argv);
}

#include "tst_repairwindow.moc"
