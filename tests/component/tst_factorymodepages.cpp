#include "menufixture.h"
#include "recordingframe.h"

#include <QtTest/QtTest>
#include <QtWidgets/QStackedLayout>

#include <memory>

using LCD::FactoryModeImpl::FactoryModeWidget;

// The two test pages inside the factory menu.
class tst_FactoryModePages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        share = std::make_unique<ShareDirectory>();
        ShareDirectory::writeMenu(SampleMenu);
        host = std::make_unique<RecordingHost>();
        recordFrameCalls(&host->calls);
        widget = std::make_unique<FactoryModeWidget>(nullptr);
        menu = std::make_unique<MenuView>(*widget);
        settle();
        widget->enterFactoryMode();
    }
    void cleanup()
    {
        widget.reset();
        recordFrameCalls(nullptr);
        host.reset();
        share.reset();
    }

    void pages_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("firstCall");
        QTest::newRow("aging") << 3 << QStringLiteral("factoryBiz.setMachineTestKind(0)");
        QTest::newRow("complete machine") << 4 << QStringLiteral("factoryBiz.setMachineTestKind(1)");
    }
    void pages()
    {
        QFETCH(int, row);
        QFETCH(QString, firstCall);
        auto *pages = qobject_cast<QStackedLayout *>(widget->layout());
        QCOMPARE(pages->count(), 1);
        clickRow(menu->level1, row);
        QCOMPARE(pages->count(), 2);
        QCOMPARE(pages->currentIndex(), 1);
        const QStringList first = host->calls.take();
        const int entered = first.indexOf(firstCall);
        QVERIFY(entered > 0);
        QCOMPARE(first.at(entered - 1), QStringLiteral("frame.setContentFontSize(30)"));

        QWidget *page = pages->currentWidget();
        Q_EMIT frameOf(*page)->signalBackPrevious();
        QCOMPARE(pages->currentWidget(), menu->page);
        QCOMPARE(menu->level1->currentRow(), 0);
        QVERIFY(menu->level1->isVisible());
        QCOMPARE(widget->focusWidget(), menu->level1);

        host->calls.clear();
        menu->level1->setCurrentRow(row);
        QTest::keyClick(menu->level1, Qt::Key_Return);
        QCOMPARE(pages->count(), 2);
        QCOMPARE(pages->currentWidget(), page);
        QCOMPARE(host->calls.take().mid(0, 2),
                 (QStringList{QStringLiteral("frame.setContentFontSize(30)"), firstCall}));
    }
    void bothPagesLiveBesideEachOther()
    {
        auto *pages = qobject_cast<QStackedLayout *>(widget->layout());
        clickRow(menu->level1, 3);
        Q_EMIT frameOf(*pages->currentWidget())->signalBackPrevious();
        clickRow(menu->level1, 4);
        QCOMPARE(pages->count(), 3);
        QCOMPARE(pages->currentIndex(), 2);
    }
    void backOnATestPageIsNotTheMenus()
    {
        clickRow(menu->level1, 3);
        QSignalSpy exits(widget.get(), &FactoryModeWidget::requestExitFactoryMode);
        const LogCapture log;
        QKeyEvent back(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QVERIFY(!widget->eventFilter(widget.get(), &back));
        QCOMPARE(exits.count(), 0);
        QCOMPARE(log.lines(), QStringList());
    }
    void leavingAndEnteringComesBackToTheMenu()
    {
        clickRow(menu->level1, 3);
        host->calls.clear();
        widget->exitFactoryMode();
        widget->enterFactoryMode();
        QVERIFY(menu->level1->isVisible());
        QCOMPARE(menu->level1->currentRow(), 0);
        QCOMPARE(host->calls.take(), QStringList());
    }
    void everythingOpensWithoutAHost()
    {
        mirel::api::get().setHost(nullptr);
        FactoryModeWidget hostless(nullptr);
        const MenuView view(hostless);
        settle();
        hostless.enterFactoryMode();
        QCOMPARE(view.level1->count(), 6);
        auto *pages = qobject_cast<QStackedLayout *>(hostless.layout());
        for (const int row : {3, 4}) {
            clickRow(view.level1, row);
            QVERIFY(pages->currentWidget()->isVisible());
            QVERIFY(pages->currentWidget() != view.page);
            Q_EMIT frameOf(*pages->currentWidget())->signalBackPrevious();
            QCOMPARE(pages->currentWidget(), view.page);
        }
        QCOMPARE(pages->count(), 3);
        QCOMPARE(host->lookups, QStringList());
    }

private:
    std::unique_ptr<ShareDirectory> share;
    std::unique_ptr<RecordingHost> host;
    std::unique_ptr<FactoryModeWidget> widget;
    std::unique_ptr<MenuView> menu;
};

QTEST_MAIN(tst_FactoryModePages)
#include "tst_factorymodepages.moc"
