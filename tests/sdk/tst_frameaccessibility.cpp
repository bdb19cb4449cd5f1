// What a screen reader, or a test that works like one, finds on a page.

#include "frametest.h"
#include "typicalpages.h"

#include <QtGui/QAccessible>
#include <QtTest/QtTest>

using namespace LCD::Widget;

namespace {

QAccessibleInterface *interfaceOf(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget);
}

}

class TestFrameAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlHasANameAndAnObjectName();
    void buttonsAreButtonsWithTheirCaption();
    void aButtonWithoutCaptionHasAName();
    void aHeldBackButtonIsDisabled();
    void theFocusedButtonIsFocused();
    void pressingThroughTheInterfaceClicks();
    void stepLinesAreDescribed();
    void iconsAreNamedByTheirKey();
    void theLogTellsItsLastLine();
};

void TestFrameAccessibility::everyControlHasANameAndAnObjectName()
{
    for (const TypicalPage &page : typicalPages()) {
        FactoryTestFrame frame(nullptr);
        page.show(frame);
        frame.show();
        QCoreApplication::sendPostedEvents();
        QVERIFY2(!interfaceOf(&frame)->text(QAccessible::Name).isEmpty(), page.name);
        const auto controls = frame.findChildren<QWidget *>();
        QVERIFY(controls.size() >= 8);
        for (QWidget *control : controls) {
            QVERIFY2(!control->objectName().isEmpty(), control->metaObject()->className());
            if (control->isVisible())
                QVERIFY2(!interfaceOf(control)->text(QAccessible::Name).isEmpty(), qPrintable(control->objectName()));
        }
    }
}

void TestFrameAccessibility::buttonsAreButtonsWithTheirCaption()
{
    FrameTest test;
    QCOMPARE(interfaceOf(test.left())->role(), QAccessible::PushButton);
    QCOMPARE(interfaceOf(test.left())->text(QAccessible::Name), QStringLiteral("Fail"));
    QCOMPARE(interfaceOf(test.right())->text(QAccessible::Name), QStringLiteral("Pass"));
}

void TestFrameAccessibility::aButtonWithoutCaptionHasAName()
{
    FrameTest test;
    test.frame->setLeftBtnText(QString());
    QCOMPARE(interfaceOf(test.left())->text(QAccessible::Name), QStringLiteral("Left button"));
}

void TestFrameAccessibility::aHeldBackButtonIsDisabled()
{
    FrameTest test;
    QVERIFY(!interfaceOf(test.left())->state().disabled);
    test.frame->setNoPassButtonCanClicked(false);
    QVERIFY(interfaceOf(test.left())->state().disabled);
    QVERIFY(!interfaceOf(test.right())->state().disabled);
}

void TestFrameAccessibility::theFocusedButtonIsFocused()
{
    FrameTest test;
    test.frame->setControlFocus(FocusRightButton);
    QVERIFY(interfaceOf(test.right())->state().focused);
    QVERIFY(!interfaceOf(test.left())->state().focused);
}

void TestFrameAccessibility::pressingThroughTheInterfaceClicks()
{
    FrameTest test;
    QAccessibleActionInterface *actions = interfaceOf(test.left())->actionInterface();
    QVERIFY(actions);
    actions->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(test.leftClicks.count(), 1);
}

void TestFrameAccessibility::stepLinesAreDescribed()
{
    FrameTest test;
    test.frame->addTestSteps({QStringLiteral("one"), QStringLiteral("two")});
    auto *list = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStepList"));
    test.frame->setStepIcon(1, IconNotPass);
    QCOMPARE(interfaceOf(list)->text(QAccessible::Description), QStringLiteral("one\ntwo (not passed)"));
    test.frame->setStepIcon(0, IconPass);
    QCOMPARE(interfaceOf(list)->text(QAccessible::Description), QStringLiteral("one (passed)\ntwo (not passed)"));
}

void TestFrameAccessibility::iconsAreNamedByTheirKey()
{
    FrameTest test;
    test.frame->setStatusIcon(QStringLiteral("NetNoPass"));
    auto *icon = test.frame->findChild<QWidget *>(QStringLiteral("FactoryStatusIcon"));
    QCOMPARE(interfaceOf(icon)->text(QAccessible::Name), QStringLiteral("NetNoPass"));
}

void TestFrameAccessibility::theLogTellsItsLastLine()
{
    FrameTest test;
    test.frame->log(QStringLiteral("T-bar pass"), FactoryTestRightFrame::LogTest, FactoryTestRightFrame::LogInfo);
    auto *pane = test.frame->findChild<FactoryTestRightFrame *>();
    QCOMPARE(interfaceOf(pane)->text(QAccessible::Name), QStringLiteral("Log"));
    QCOMPARE(interfaceOf(pane)->text(QAccessible::Description), QStringLiteral("T-bar pass"));
}

QTEST_MAIN(TestFrameAccessibility)
#include "tst_frameaccessibility.moc"
