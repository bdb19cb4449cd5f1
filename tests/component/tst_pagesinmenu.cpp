#include "machineoperator.h"
#include "menufixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedLayout>

#include <memory>
#include <thread>

using LCD::FactoryModeImpl::FactoryModeWidget;

namespace {

constexpr int AgingRow = 3;
constexpr int MachineRow = 4;

}

/// The host leaves a test page with exitFactoryMode(), and the operator opens the page again from the menu.
class PagesInMenuTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        share = std::make_unique<ShareDirectory>();
        ShareDirectory::writeMenu(SampleMenu);
        ShareDirectory::writeKeys(R"(<LcdKeys><LcdKey Value="10" Name="ONE"/><LcdKey Value="27" Name="TWO"/>)"
                                  R"(<LcdKey Value="33" Name="CUT"/></LcdKeys>)");
        host = std::make_unique<RecordingHost>();
        widget = std::make_unique<FactoryModeWidget>(nullptr);
        host->offer("lcdFactoryModeWidget", static_cast<LCD::FactoryMode::ILcdFactoryMode *>(widget.get()));
        menu = std::make_unique<MenuView>(*widget);
        widget->resize(640, 400);
        VirtualTime::settle();
        widget->enterFactoryMode();
    }

    void cleanup()
    {
        widget.reset();
        host.reset();
        share.reset();
    }

    void anAgingRunGoesOnWhenTheHostLeaves()
    {
        clickRow(menu->level1, AgingRow);
        click("signalRightBtnClicked");
        widget->exitFactoryMode();
        host->calls.clear();
        VirtualTime::advance(2000);
        QVERIFY(host->calls.take().contains(QStringLiteral("keyboard.setScreenBrightness(0, 30)")));
        widget->enterFactoryMode();
        QVERIFY(menu->level1->isVisible());
        VirtualTime::advance(2000);
        QVERIFY(host->calls.take().contains(QStringLiteral("keyboard.setScreenBrightness(0, 50)")));
    }

    void backIsDeadOnTheAgingPageThatWasPreparedDuringARun()
    {
        clickRow(menu->level1, AgingRow);
        click("signalRightBtnClicked");
        comeBackTo(AgingRow);
        QTest::keyClick(frame(), Qt::Key_Escape);
        QCOMPARE(pages()->currentIndex(), 1);
        click("signalRightBtnClicked");
        click("signalRightBtnClicked");
        QTest::keyClick(frame(), Qt::Key_Escape);
        QCOMPARE(pages()->currentWidget(), menu->page);
    }

    void theLevelsWriteOverTheEntryScreenOfTheMachineTest()
    {
        clickRow(menu->level1, MachineRow);
        const QStringList entry = texts();
        click("signalRightBtnClicked");
        comeBackTo(MachineRow);
        QCOMPARE(texts(), entry);
        VirtualTime::advance(2000);
        QVERIFY(!texts().filter(QStringLiteral("30%")).isEmpty());
        click("signalRightBtnClicked");
        VirtualTime::settle();
        QVERIFY(!texts().filter(QStringLiteral("10%")).isEmpty());
    }

    void theFrameIgnoresKeysOnTheEntryScreenDuringTheKeyWalk()
    {
        bringToKeyWalk();
        QVERIFY(host->keyboard.press(10)); // the no-pass key is next
        comeBackTo(MachineRow);
        host->calls.clear();
        QTest::keyClick(frame(), Qt::Key_Return);
        QTest::keyClick(frame(), Qt::Key_Escape);
        QCOMPARE(host->calls.take(), QStringList());
        QCOMPARE(pages()->currentIndex(), 1);
        click("signalRightBtnClicked");
        QVERIFY(host->calls.take().contains(QStringLiteral("keyboard.setFactoryPanelMode(15)")));
        QTest::keyClick(frame(), Qt::Key_Escape);
        QCOMPARE(pages()->currentIndex(), 1);
    }

    void aLateKeyBeforeTheNoPassKeyLeavesOnlyBackOnTheFailScreen()
    {
        bringToKeyWalk();
        const auto listener = host->keyboard.listener();
        click("signalLeftBtnClicked");
        QCOMPARE(frame()->property("leftEnabled"), QVariant(true));
        std::thread([&] { listener(10, 0, 0, {}, {}, {}); }).join(); // the no-pass key is next
        VirtualTime::settle();
        QCOMPARE(frame()->property("leftEnabled"), QVariant(false));
        QCOMPARE(frame()->property("leftVisible"), QVariant(true));
        QCOMPARE(frame()->property("rightVisible"), QVariant(false));
        host->calls.clear();
        QTest::mouseClick(frame()->findChild<QWidget *>(QStringLiteral("FactoryLeftButton")), Qt::LeftButton);
        QTest::keyClick(frame(), Qt::Key_Return);
        QCOMPARE(host->calls.take(), QStringList());
        QTest::keyClick(frame(), Qt::Key_Escape);
        QCOMPARE(pages()->currentWidget(), menu->page);
        clickRow(menu->level1, MachineRow);
        click("signalRightBtnClicked");
        QCOMPARE(frame()->property("leftEnabled"), QVariant(true));
    }

    void theLogKeepsTheLinesOfEarlierRuns()
    {
        clickRow(menu->level1, MachineRow);
        click("signalRightBtnClicked");
        click("signalLeftBtnClicked");
        const QStringList failed = {QStringLiteral("Test failed"), QStringLiteral("Test failed")};
        QCOMPARE(logLines(), failed);
        click("signalLeftBtnClicked");
        passRun();
        QVERIFY(logLines().size() > failed.size());
        QCOMPARE(logLines().mid(0, 2), failed);
        QCOMPARE(logLines().at(2), QStringLiteral("Screen brightness done"));
        QCOMPARE(logLines().last(), QStringLiteral("Net port 1 POE power pass"));
        QCOMPARE(shownSteps(), QStringList{QStringLiteral("Test passed")});
        const QStringList passed = logLines();
        QTest::keyClick(frame(), Qt::Key_Escape);
        clickRow(menu->level1, MachineRow);
        QCOMPARE(logLines(), passed);
    }

private:
    QStackedLayout *pages() const { return qobject_cast<QStackedLayout *>(widget->layout()); }

    QWidget *frame() const
    {
        for (QWidget *child : pages()->currentWidget()->findChildren<QWidget *>()) {
            if (child->inherits("LCD::Widget::FactoryTestFrame"))
                return child;
        }
        return nullptr;
    }

    void click(const char *signal) const
    {
        QVERIFY(frame());
        QVERIFY(QMetaObject::invokeMethod(frame(), signal, Q_ARG(bool, false)));
    }

    /// The host leaves the factory mode and enters it again, and the operator opens the page again.
    void comeBackTo(int row) const
    {
        widget->exitFactoryMode();
        widget->enterFactoryMode();
        clickRow(menu->level1, row);
        QCOMPARE(pages()->currentIndex(), 1);
    }

    void bringToKeyWalk() const
    {
        clickRow(menu->level1, MachineRow);
        click("signalRightBtnClicked");
        const MachineOperator operate(*host, [this] { click("signalRightBtnClicked"); });
        for (const int phase : {0, 1, 2}) {
            operate.bringToVerdict(phase);
            click("signalRightBtnClicked");
        }
    }

    /// Passes all phases of the run that has just started.
    void passRun() const
    {
        const MachineOperator operate(*host, [this] { click("signalRightBtnClicked"); });
        for (const int phase : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10}) {
            operate.bringToVerdict(phase);
            click("signalRightBtnClicked");
        }
        VirtualTime::settle();
    }

    QStringList shownSteps() const
    {
        QStringList result;
        for (const QVariant &step : frame()->property("steps").toList())
            result << step.toMap().value(QStringLiteral("text")).toString();
        return result;
    }

    QStringList logLines() const
    {
        VirtualTime::settle();
        return frame()->property("log").toStringList();
    }

    /// Returns the texts of the labels of the page.
    QStringList texts() const
    {
        QStringList result;
        for (const QLabel *label : frame()->findChildren<QLabel *>())
            result << label->text();
        return result;
    }

    std::unique_ptr<ShareDirectory> share;
    std::unique_ptr<RecordingHost> host;
    std::unique_ptr<FactoryModeWidget> widget;
    std::unique_ptr<MenuView> menu;
};

VIRTUAL_TIME_TEST_MAIN(PagesInMenuTest)
#include "tst_pagesinmenu.moc"
