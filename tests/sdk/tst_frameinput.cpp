// Keys, clicks and focus, with real events.

#include "frametest.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QStackedLayout>

#include <memory>

using namespace LCD::Widget;

namespace {

using Counts = QList<int>; // back, left, right

QImage imageOf(QWidget *widget)
{
    return widget->grab().toImage();
}

}

class TestFrameInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClickIsTold();
    void aHiddenButtonTellsNothing();
    void escapeAsksToGoBack();
    void withoutResponseOnlyBackIsStopped();
    void activatingKeysClickTheFocusedButton_data();
    void activatingKeysClickTheFocusedButton();
    void aHeldKeyDecidesOnce();
    void theNoPassButtonCanBeHeldBack();
    void keysAreLeftToTheTest_data();
    void keysAreLeftToTheTest();
    void theMouseWorksWhileTheTestHasTheKeys();
    void arrowsMoveTheFocus_data();
    void arrowsMoveTheFocus();
    void arrowsFindTheOnlyButton();
    void downScrollsAListThatIsTooLong();
    void theFocusCanBeSeen();
    void withNoFocusTheFrameHoldsTheKeyboard();
    void theFocusComesWithItsButton();
    void aClickTakesTheFocusAlong();
    void keysOfTheFrameStayInIt();
    void otherKeysTravelOn();
    void aShortcutOfTheHostDoesNotTakeEscape();
    void anAmpersandMakesNoShortcut();
    void aPageThatBecomesCurrentTakesTheKeyboard();
    void anUpdateLeavesTheKeyboardWhereItIs();
    void theFrameHandsTheKeyboardOn();
    void aHandlerMayDeleteTheFrame_data();
    void aHandlerMayDeleteTheFrame();
};

void TestFrameInput::aClickIsTold()
{
    FrameTest test;
    QTest::mouseClick(test.left(), Qt::LeftButton);
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 0}));
    QTest::mouseClick(test.right(), Qt::LeftButton);
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 1}));
}

void TestFrameInput::aHiddenButtonTellsNothing()
{
    FrameTest test;
    test.frame->setControlFocus(FocusLeftButton);
    const QPoint place = test.left()->geometry().center();
    test.frame->setLeftBtnVisible(false);
    QTest::mouseClick(test.windowHandle(), Qt::LeftButton, {}, test.frame->mapTo(&test, place));
    test.left()->click();
    test.press(Qt::Key_Return);
    QCOMPARE(test.signalCounts(), (Counts{0, 0, 0}));
    test.frame->setLeftBtnVisible(true);
    QTest::mouseClick(test.windowHandle(), Qt::LeftButton, {}, test.frame->mapTo(&test, place));
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 0}));
}

void TestFrameInput::escapeAsksToGoBack()
{
    FrameTest test;
    for (FocusType focus : {FocusLeftButton, FocusRightButton, FocusNone}) {
        test.frame->setControlFocus(focus);
        test.press(Qt::Key_Escape);
    }
    QCOMPARE(test.signalCounts(), (Counts{3, 0, 0}));
}

void TestFrameInput::withoutResponseOnlyBackIsStopped()
{
    FrameTest test;
    test.frame->setControlFocus(FocusRightButton);
    test.frame->setIsReponseEvent(false);
    QCOMPARE(test.shown("respondsToBack").toBool(), false);
    test.press(Qt::Key_Escape);
    test.press(Qt::Key_Return);
    QTest::mouseClick(test.left(), Qt::LeftButton);
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 1}));
    QCOMPARE(test.keysTravelledUp, QList<int>());
    test.frame->setIsReponseEvent(true);
    test.press(Qt::Key_Escape);
    QCOMPARE(test.signalCounts(), (Counts{1, 1, 1}));
}

void TestFrameInput::activatingKeysClickTheFocusedButton_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void TestFrameInput::activatingKeysClickTheFocusedButton()
{
    QFETCH(Qt::Key, key);
    FrameTest test;
    test.press(key);
    QCOMPARE(test.signalCounts(), (Counts{0, 0, 0}));
    test.frame->setControlFocus(FocusLeftButton);
    test.press(key);
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 0}));
    test.frame->setControlFocus(FocusRightButton);
    test.press(key);
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 1}));
}

void TestFrameInput::aHeldKeyDecidesOnce()
{
    FrameTest test;
    test.frame->setControlFocus(FocusRightButton);
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        QTest::keyPress(test.windowHandle(), key);
        for (int i = 0; i < 3; ++i) {
            QKeyEvent repeat(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QCoreApplication::sendEvent(QApplication::focusWidget(), &repeat);
        }
        QTest::keyRelease(test.windowHandle(), key);
    }
    QCOMPARE(test.signalCounts(), (Counts{1, 0, 1}));
    QCOMPARE(test.keysTravelledUp, QList<int>());
}

void TestFrameInput::theNoPassButtonCanBeHeldBack()
{
    FrameTest test;
    test.frame->setControlFocus(FocusLeftButton);
    const QImage lively = imageOf(test.left());
    test.frame->setNoPassButtonCanClicked(false);
    QCOMPARE(test.shown("leftEnabled").toBool(), false);
    QVERIFY2(imageOf(test.left()) != lively, "a button that doesn't react looks so");
    QTest::mouseClick(test.left(), Qt::LeftButton);
    test.press(Qt::Key_Return);
    QCOMPARE(test.signalCounts(), (Counts{0, 0, 0}));
    QTest::mouseClick(test.right(), Qt::LeftButton);
    test.press(Qt::Key_Escape);
    QCOMPARE(test.signalCounts(), (Counts{1, 0, 1}));

    test.frame->setNoPassButtonCanClicked(true);
    test.frame->setControlFocus(FocusLeftButton);
    test.press(Qt::Key_Return);
    QCOMPARE(test.signalCounts(), (Counts{1, 1, 1}));
}

void TestFrameInput::keysAreLeftToTheTest_data()
{
    QTest::addColumn<Qt::Key>("key");
    for (Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,
                        Qt::Key_Down, Qt::Key_Space, Qt::Key_Tab, Qt::Key_F1, Qt::Key_A})
        QTest::newRow(QMetaEnum::fromType<Qt::Key>().valueToKey(key)) << key;
}

void TestFrameInput::keysAreLeftToTheTest()
{
    QFETCH(Qt::Key, key);
    FrameTest test;
    test.frame->setControlFocus(FocusLeftButton);
    test.frame->setKeyEventsEnabled(false);
    QCOMPARE(test.shown("keyEventsEnabled").toBool(), false);
    test.press(key);
    QCOMPARE(test.signalCounts(), (Counts{0, 0, 0}));
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("left"));
    QCOMPARE(test.keysTravelledUp, QList<int>());
}

void TestFrameInput::theMouseWorksWhileTheTestHasTheKeys()
{
    FrameTest test;
    test.frame->setKeyEventsEnabled(false);
    QTest::mouseClick(test.left(), Qt::LeftButton);
    QCOMPARE(test.signalCounts(), (Counts{0, 1, 0}));
    test.frame->setKeyEventsEnabled(true);
    test.press(Qt::Key_Escape);
    QCOMPARE(test.signalCounts(), (Counts{1, 1, 0}));
}

void TestFrameInput::arrowsMoveTheFocus_data()
{
    QTest::addColumn<FocusType>("from");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("to");
    const QString left = QStringLiteral("left");
    const QString right = QStringLiteral("right");
    QTest::newRow("right") << FocusLeftButton << Qt::Key_Right << right;
    QTest::newRow("right at the end") << FocusRightButton << Qt::Key_Right << right;
    QTest::newRow("left") << FocusRightButton << Qt::Key_Left << left;
    QTest::newRow("left at the end") << FocusLeftButton << Qt::Key_Left << left;
    QTest::newRow("down") << FocusLeftButton << Qt::Key_Down << right;
    QTest::newRow("up") << FocusRightButton << Qt::Key_Up << left;
    QTest::newRow("tab") << FocusLeftButton << Qt::Key_Tab << right;
    QTest::newRow("left from none") << FocusNone << Qt::Key_Left << left;
    QTest::newRow("right from none") << FocusNone << Qt::Key_Right << right;
}

void TestFrameInput::arrowsMoveTheFocus()
{
    QFETCH(FocusType, from);
    QFETCH(Qt::Key, key);
    QFETCH(QString, to);
    FrameTest test;
    test.frame->setControlFocus(from);
    test.press(key);
    QCOMPARE(test.shown("controlFocus").toString(), to);
    test.press(Qt::Key_Return);
    QCOMPARE(test.signalCounts(), (to == QLatin1String("left") ? Counts{0, 1, 0} : Counts{0, 0, 1}));
    QCOMPARE(test.keysTravelledUp, QList<int>());
}

void TestFrameInput::arrowsFindTheOnlyButton()
{
    FrameTest test;
    test.frame->setControlFocus(FocusNone);
    test.frame->setRighttBtnVisible(false);
    test.press(Qt::Key_Right);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("left"));
    test.frame->setLeftBtnVisible(false);
    test.press(Qt::Key_Left);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("none"));
}

void TestFrameInput::downScrollsAListThatIsTooLong()
{
    FrameTest test;
    for (int i = 0; i < 200; ++i)
        test.frame->addTestStep(QStringLiteral("line %1").arg(i), Qt::white, false);
    test.frame->setControlFocus(FocusLeftButton);
    const auto *list = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList"));
    const QImage top = imageOf(const_cast<QWidget *>(list));
    test.press(Qt::Key_Down);
    const QImage scrolled = imageOf(const_cast<QWidget *>(list));
    QVERIFY(scrolled != top);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("left"));
    test.press(Qt::Key_Up);
    QCOMPARE(imageOf(const_cast<QWidget *>(list)), top);
}

void TestFrameInput::theFocusCanBeSeen()
{
    FrameTest test;
    const QImage plain = imageOf(test.left());
    test.frame->setControlFocus(FocusLeftButton);
    const QImage focused = imageOf(test.left());
    const QPoint inside(focused.width() / 10, focused.height() / 2);
    QVERIFY(focused.pixel(inside) != plain.pixel(inside));
    test.frame->setControlFocus(FocusRightButton);
    QCOMPARE(imageOf(test.left()), plain);
}

void TestFrameInput::withNoFocusTheFrameHoldsTheKeyboard()
{
    FrameTest test;
    test.frame->setControlFocus(FocusNone);
    QCOMPARE(QApplication::focusWidget(), test.frame);
    test.press(Qt::Key_Return);
    test.press(Qt::Key_Escape);
    QCOMPARE(test.signalCounts(), (Counts{1, 0, 0}));
}

void TestFrameInput::theFocusComesWithItsButton()
{
    FrameTest test;
    test.frame->setRighttBtnVisible(false);
    test.frame->setControlFocus(FocusRightButton);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("none"));
    QCOMPARE(QApplication::focusWidget(), test.frame);
    test.frame->setRighttBtnVisible(true);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("right"));
    QCOMPARE(QApplication::focusWidget(), test.right());
}

void TestFrameInput::aClickTakesTheFocusAlong()
{
    FrameTest test;
    test.frame->setControlFocus(FocusRightButton);
    QTest::mouseClick(test.left(), Qt::LeftButton);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("left"));
    QCOMPARE(QApplication::focusWidget(), test.left());
}

void TestFrameInput::keysOfTheFrameStayInIt()
{
    FrameTest test;
    for (FocusType focus : {FocusLeftButton, FocusNone}) {
        for (Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,
                            Qt::Key_Down, Qt::Key_Tab}) {
            test.frame->setControlFocus(focus);
            test.press(key);
        }
    }
    QCOMPARE(test.keysTravelledUp, QList<int>());
}

void TestFrameInput::otherKeysTravelOn()
{
    FrameTest test;
    test.frame->setControlFocus(FocusLeftButton);
    test.press(Qt::Key_F1);
    test.press(Qt::Key_7);
    QCOMPARE(test.keysTravelledUp, (QList<int>{Qt::Key_F1, Qt::Key_7}));
}

void TestFrameInput::aShortcutOfTheHostDoesNotTakeEscape()
{
    FrameTest test;
    QShortcut shortcut(QKeySequence(Qt::Key_Escape), &test);
    const QSignalSpy activated(&shortcut, &QShortcut::activated);
    test.frame->setControlFocus(FocusLeftButton);
    test.press(Qt::Key_Escape);
    QCOMPARE(activated.count(), 0);
    QCOMPARE(test.signalCounts(), (Counts{1, 0, 0}));
}

void TestFrameInput::anAmpersandMakesNoShortcut()
{
    FrameTest test;
    test.frame->setLeftBtnText(QStringLiteral("R&D"));
    QCOMPARE(test.shown("leftText").toString(), QStringLiteral("R&D"));
    QCOMPARE(test.left()->accessibleName(), QStringLiteral("R&D"));
    QTest::keyClick(test.windowHandle(), Qt::Key_D, Qt::AltModifier);
    QCOMPARE(test.signalCounts(), (Counts{0, 0, 0}));
}

void TestFrameInput::aPageThatBecomesCurrentTakesTheKeyboard()
{
    QWidget window;
    auto *stack = new QStackedLayout(&window);
    auto *menu = new QListWidget;
    stack->addWidget(menu);
    auto *frame = new FactoryTestFrame(nullptr);
    stack->addWidget(frame);
    const QSignalSpy clicks(frame, &FactoryTestFrame::signalRightBtnClicked);
    window.show();
    menu->setFocus();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    frame->setRighttBtnVisible(true);
    frame->setControlFocus(FocusRightButton);
    QCOMPARE(QApplication::focusWidget(), menu);
    stack->setCurrentWidget(frame);
    QTest::keyClick(window.windowHandle(), Qt::Key_Return);
    QCOMPARE(clicks.count(), 1);

    stack->setCurrentWidget(menu);
    menu->setFocus();
    frame->setControlFocus(FocusNone);
    stack->setCurrentWidget(frame);
    QCOMPARE(QApplication::focusWidget(), frame);
}

void TestFrameInput::anUpdateLeavesTheKeyboardWhereItIs()
{
    FrameTest test;
    QLineEdit other(&test);
    other.show();
    other.setFocus();
    QCOMPARE(QApplication::focusWidget(), &other);
    test.frame->setControlFocus(FocusLeftButton);
    test.frame->setRighttBtnVisible(false);
    test.frame->setNoPassButtonCanClicked(false);
    test.frame->setNoPassButtonCanClicked(true);
    QCOMPARE(QApplication::focusWidget(), &other);
    QCOMPARE(test.shown("controlFocus").toString(), QStringLiteral("left"));
}

void TestFrameInput::theFrameHandsTheKeyboardOn()
{
    FrameTest test;
    test.frame->setControlFocus(FocusLeftButton);
    test.left()->clearFocus();
    test.frame->setFocus();
    QCOMPARE(QApplication::focusWidget(), test.left());
}

void TestFrameInput::aHandlerMayDeleteTheFrame_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("back") << Qt::Key_Escape;
    QTest::newRow("click") << Qt::Key_Return;
}

void TestFrameInput::aHandlerMayDeleteTheFrame()
{
    QFETCH(Qt::Key, key);
    FrameTest test;
    test.frame->setControlFocus(FocusLeftButton);
    const QPointer<FactoryTestFrame> frame = test.frame;
    const auto deleteFrame = [&] { delete test.frame; };
    connect(test.frame, &FactoryTestFrame::signalBackPrevious, this, deleteFrame);
    connect(test.frame, &FactoryTestFrame::signalLeftBtnClicked, this, deleteFrame);
    test.press(key);
    QVERIFY(frame.isNull());
}

QTEST_MAIN(TestFrameInput)
#include "tst_frameinput.moc"
