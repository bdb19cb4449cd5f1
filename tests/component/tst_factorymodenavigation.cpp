#include "menufixture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QScrollBar>

#include <memory>

using LCD::FactoryModeImpl::FactoryModeWidget;

class tst_FactoryModeNavigation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        share = std::make_unique<ShareDirectory>();
        ShareDirectory::writeMenu(SampleMenu);
        widget = std::make_unique<FactoryModeWidget>(nullptr);
        menu = std::make_unique<MenuView>(*widget);
        settle();
        widget->enterFactoryMode();
        QVERIFY(QTest::qWaitForWindowActive(widget.get()));
        containers = std::make_unique<QSignalSpy>(widget.get(), &FactoryModeWidget::requestShowContainer);
        exits = std::make_unique<QSignalSpy>(widget.get(), &FactoryModeWidget::requestExitFactoryMode);
    }
    void cleanup()
    {
        containers.reset();
        exits.reset();
        widget.reset();
        share.reset();
    }

    void clickAndEnterOpenASubmenu_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("click") << 0;
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
    }
    void clickAndEnterOpenASubmenu()
    {
        QFETCH(int, key);
        open(0, key);
        QVERIFY(menu->level2->isVisible());
        QVERIFY(!menu->level1->isVisible());
        QVERIFY(menu->level2->hasFocus());
        QCOMPARE(menu->level2->currentRow(), 0);
        QCOMPARE(containers->count(), 0);
    }
    void containersOfBothLevels_data() { clickAndEnterOpenASubmenu_data(); }
    void containersOfBothLevels()
    {
        QFETCH(int, key);
        open(1, key);
        QCOMPARE(taken(), calls({"container.logexport"}));
        QVERIFY(menu->level1->isVisible());
        open(0, 0);
        for (int row = 0; row < menu->level2->count(); ++row)
            pick(menu->level2, row, key);
        QCOMPARE(taken(),
                 calls({"container.factorytest.repairmode.screenlight", "container.tbar", "container.agingmode",
                        "container.completemachine"}));
        QVERIFY(menu->level2->isVisible());
    }
    void anEmptyEntryDoesNothing_data() { clickAndEnterOpenASubmenu_data(); }
    void anEmptyEntryDoesNothing()
    {
        QFETCH(int, key);
        open(2, key);
        QCOMPARE(taken(), QStringList());
        QVERIFY(menu->level1->isVisible());
    }
    void childrenMakeASubmenuWhateverTheKey()
    {
        open(5, Qt::Key_Return);
        QCOMPARE(titlesOf(*menu->level2), calls({"Factory Net"}));
        QVERIFY(menu->level2->isVisible());
    }
    void aClickBesideTheRowsDoesNothing()
    {
        Q_EMIT menu->level1->itemClicked(nullptr);
        Q_EMIT menu->level2->itemClicked(nullptr);
        QCOMPARE(taken(), QStringList());
        QVERIFY(menu->level1->isVisible());
    }
    void enterIsConsumedWithoutARow()
    {
        menu->level1->setCurrentItem(nullptr);
        QVERIFY(sendKey(menu->level1, Qt::Key_Return));
        QCOMPARE(taken(), QStringList());
    }
    void backOnLevel1AsksToExit()
    {
        LogCapture log;
        QTest::keyClick(menu->level1, Qt::Key_Escape);
        QCOMPARE(exits->count(), 1);
        QVERIFY(widget->isFactoryMode());
        QVERIFY(widget->isVisible());
        QCOMPARE(log.lines().count(), 2);
        const QString list = QStringLiteral("QListWidget\\(0x[0-9a-f]+\\)");
        const QRegularExpression line(QRegularExpression::anchoredPattern(
            QStringLiteral("debug\\|\\[FactoryModeWidget\\] Back key pressed on listWidget, listWidget: %1 "
                           "listLevel1: %1 listLevel2: %1 Level2 visible: false Level1 visible: true")
                .arg(list)));
        QVERIFY2(line.match(log.lines().constFirst()).hasMatch(), qPrintable(log.lines().constFirst()));
        QCOMPARE(log.lines().constLast(),
                 QStringLiteral("debug|[FactoryModeWidget] Back: Exiting factory mode from Level1"));
        log.clear();
        QTest::keyClick(widget.get(), Qt::Key_Escape);
        QCOMPARE(exits->count(), 2);
        QCOMPARE(log.lines(), calls({"debug|[FactoryModeWidget] Back key on widget: Exiting factory mode"}));
    }
    void backOnAListKeepsTheRow()
    {
        open(5, Qt::Key_Return);
        LogCapture log;
        QTest::keyClick(menu->level2, Qt::Key_Escape);
        QCOMPARE(menu->level1->currentRow(), 5);
        QVERIFY(menu->level1->hasFocus());
        QVERIFY(!menu->level2->isVisible());
        QCOMPARE(log.lines().at(1), QStringLiteral("debug|[FactoryModeWidget] Back: Returning to Level1 from Level2"));
        const QSize size = menu->level1->size();
        QCOMPARE(log.lines().at(2),
                 QStringLiteral("debug|[FactoryModeWidget] showLevel1: List1 visible= true count= 6 size= "
                                "QSize(%1, %2) geometry= QRect(0,0 %1x%2)")
                     .arg(size.width())
                     .arg(size.height()));
        QCOMPARE(exits->count(), 0);
    }
    void backOnTheWidgetGoesToTheTop()
    {
        open(5, Qt::Key_Return);
        LogCapture log;
        QTest::keyClick(widget.get(), Qt::Key_Escape);
        QCOMPARE(menu->level1->currentRow(), 0);
        QVERIFY(menu->level1->hasFocus());
        QCOMPARE(log.lines().constFirst(),
                 QStringLiteral("debug|[FactoryModeWidget] Back key on widget: Returning to Level1"));
    }
    void backWithAnEmptyListAsksToExit()
    {
        ShareDirectory::writeMenu("<MenuBar/>");
        widget->setFactoryModeData(QStringLiteral("menuConfigPath"), ShareDirectory::path());
        QCOMPARE(menu->level1->count(), 0);
        QTest::keyClick(widget.get(), Qt::Key_Escape);
        QCOMPARE(exits->count(), 1);
    }
    void backFromASubmenuOfAMenuThatIsEmptyNow()
    {
        open(5, Qt::Key_Return);
        ShareDirectory::writeMenu("<MenuBar/>");
        widget->setFactoryModeData(QStringLiteral("menuConfigPath"), ShareDirectory::path());
        QVERIFY(menu->level2->isVisible());
        QTest::keyClick(menu->level2, Qt::Key_Escape);
        QVERIFY(menu->level1->isVisible());
        QVERIFY(!menu->level2->isVisible());
        QCOMPARE(menu->level1->count(), 0);
        QCOMPARE(exits->count(), 0);
        QTest::keyClick(menu->level1, Qt::Key_Escape);
        QCOMPARE(exits->count(), 1);
    }
    void rowsMayOutliveTheirRecords()
    {
        ShareDirectory::writeMenu("");
        widget->setFactoryModeData(QStringLiteral("menuConfigPath"), ShareDirectory::path());
        QCOMPARE(menu->level1->count(), 6);
        open(1, 0);
        open(0, Qt::Key_Return);
        QCOMPARE(taken(), QStringList());
        QVERIFY(menu->level1->isVisible());
    }
    void reopeningStartsAtTheTop()
    {
        QByteArray items;
        for (int i = 0; i < 60; ++i)
            items += "<MenuItem Key='a.Net'/>";
        ShareDirectory::writeMenu("<MenuBar><MenuItem/><MenuItem Key='sub'>" + items + "</MenuItem></MenuBar>");
        widget->setFactoryModeData(QStringLiteral("menuConfigPath"), ShareDirectory::path());
        open(1, Qt::Key_Return);
        menu->level2->setCurrentRow(3);
        menu->level2->verticalScrollBar()->setValue(menu->level2->verticalScrollBar()->maximum());
        QTest::keyClick(menu->level2, Qt::Key_Escape);
        QCOMPARE(menu->level1->currentRow(), 1);
        open(1, Qt::Key_Return);
        QCOMPARE(menu->level2->currentRow(), 0);
        QCOMPARE(menu->level2->verticalScrollBar()->value(), 0);
    }
    void otherKeysAreLeftToTheList()
    {
        QTest::keyClick(menu->level1, Qt::Key_Down);
        QCOMPARE(menu->level1->currentRow(), 1);
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
        QVERIFY(!widget->eventFilter(menu->level1, &letter));
        QKeyEvent enterOnWidget(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QVERIFY(!widget->eventFilter(widget.get(), &enterOnWidget));
        QListWidget stranger;
        QKeyEvent back(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QVERIFY(!widget->eventFilter(&stranger, &back));
        QCOMPARE(taken(), QStringList());
        QCOMPARE(exits->count(), 0);
    }
    void releasesAreNotHandled()
    {
        QTest::keyRelease(menu->level1, Qt::Key_Escape);
        QTest::keyRelease(menu->level1, Qt::Key_Return);
        QCOMPARE(exits->count(), 0);
        QVERIFY(menu->level1->isVisible());
    }
    void backIsNotConsumedWhileNoListShows()
    {
        widget->exitFactoryMode();
        LogCapture log;
        QKeyEvent back(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QVERIFY(!widget->eventFilter(widget.get(), &back));
        QCOMPARE(log.lines(), QStringList());
        QVERIFY(!widget->eventFilter(menu->level1, &back));
        QCOMPARE(log.lines().count(), 1);
    }
    void theHostMayLoadAnotherMenuInItsSlot()
    {
        connect(widget.get(), &FactoryModeWidget::requestShowContainer, this, [this] {
            ShareDirectory::writeMenu("<MenuBar><MenuItem Key='new'/></MenuBar>");
            widget->setFactoryModeData(QStringLiteral("menuConfigPath"), ShareDirectory::path());
        });
        open(1, Qt::Key_Return);
        QCOMPARE(titlesOf(*menu->level1), calls({"new"}));
    }

private:
    static void pick(QListWidget *list, int row, int key)
    {
        if (key == 0) {
            clickRow(list, row);
            return;
        }
        list->setCurrentRow(row);
        QTest::keyClick(list, static_cast<Qt::Key>(key));
    }
    void open(int row, int key) { pick(menu->level1, row, key); }
    static bool sendKey(QWidget *receiver, Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        return QCoreApplication::sendEvent(receiver, &event);
    }
    QStringList taken()
    {
        QStringList keys;
        for (const QList<QVariant> &arguments : *containers)
            keys << arguments.constFirst().toString();
        containers->clear();
        return keys;
    }

    std::unique_ptr<ShareDirectory> share;
    std::unique_ptr<FactoryModeWidget> widget;
    std::unique_ptr<MenuView> menu;
    std::unique_ptr<QSignalSpy> containers;
    std::unique_ptr<QSignalSpy> exits;
};

QTEST_MAIN(tst_FactoryModeNavigation)
#include "tst_factorymodenavigation.moc"
