#include "menufixture.h"

#include <QtTest/QtTest>
#include <QtWidgets/QStackedLayout>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using LCD::FactoryModeImpl::FactoryModeWidget;

namespace {

const QString MenuPath = QStringLiteral("menuConfigPath");

QStringList linesWith(const LogCapture &log, const char *text)
{
    return log.lines().filter(QString::fromLatin1(text));
}

}

class tst_FactoryModeWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        share = std::make_unique<ShareDirectory>();
        ShareDirectory::writeMenu(SampleMenu);
        ShareDirectory::writeKeys("<LcdKeys><LcdKey Value='27' Name='CUT'/></LcdKeys>");
    }
    void cleanup() { share.reset(); }

    void looksAsTheHostExpects()
    {
        const FactoryModeWidget widget(nullptr);
        const MenuView menu(widget);
        QCOMPARE(widget.property("style").toString(), QStringLiteral("miniWidget"));
        QCOMPARE(widget.property("borderRadius").toString(), QStringLiteral("px_0"));
        QVERIFY(widget.testAttribute(Qt::WA_StyledBackground));
        QCOMPARE(widget.minimumSize(), QSize(200, 200));
        QCOMPARE(widget.sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
        QVERIFY(qobject_cast<QStackedLayout *>(widget.layout()));
        QCOMPARE(widget.layout()->contentsMargins(), QMargins());
        QCOMPARE(menu.page->layout()->contentsMargins(), QMargins());
        QCOMPARE(menu.page->layout()->spacing(), 0);
        for (const QListWidget *list : {menu.level1, menu.level2}) {
            QCOMPARE(list->property("style").toString(), QStringLiteral("miniWidget"));
            QVERIFY(list->testAttribute(Qt::WA_StyledBackground));
            QCOMPARE(list->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
            QCOMPARE(list->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
            QCOMPARE(list->itemDelegate()->parent(), &widget);
            QCOMPARE(list->sizePolicy(), widget.sizePolicy());
        }
        QCOMPARE(menu.page->layout()->indexOf(menu.level1), 0);
        QCOMPARE(menu.page->layout()->indexOf(menu.level2), 1);
        for (const int index : {0, 1})
            QCOMPARE(qobject_cast<QVBoxLayout *>(menu.page->layout())->stretch(index), 1);
        QVERIFY(menu.level1->itemDelegate() != menu.level2->itemDelegate());
        QVERIFY(menu.level2->isHidden());
        QVERIFY(!menu.level1->isHidden());
    }
    void hiddenOnTheFirstTurnOfTheLoop()
    {
        FactoryModeWidget widget(nullptr);
        widget.show();
        QVERIFY(widget.isVisible());
        QTRY_VERIFY(!widget.isVisible());
        QVERIFY(!widget.isFactoryMode());
        widget.enterFactoryMode();
        settle();
        QVERIFY(widget.isVisible());
    }
    void rowsCarryTheirData()
    {
        FactoryModeWidget widget(nullptr);
        widget.enterFactoryMode();
        const MenuView menu(widget);
        QCOMPARE(titlesOf(*menu.level1),
                 calls({"RepairMode", "Log Export", "", "[FCAgeMode]", "[MachineMode]", "[FCAgeMode]"}));
        QCOMPARE(menu.level1->item(1)->data(Qt::UserRole).toString(), QStringLiteral("em.factorytest.LogExport"));
        QCOMPARE(menu.level1->item(1)->data(Qt::UserRole + 1).toInt(), 1);
        QCOMPARE(menu.level1->item(1)->foreground(), QBrush(QColor(255, 255, 255)));
        clickRow(menu.level1, 0);
        QCOMPARE(titlesOf(*menu.level2), calls({"Screen Light", "T-Bar", "", "[FCAgeMode]", "[MachineMode]"}));
        QCOMPARE(menu.level2->item(1)->data(Qt::UserRole).toString(), QStringLiteral("container.tbar"));
        QVERIFY(!menu.level2->item(1)->data(Qt::UserRole + 1).isValid());
        QCOMPARE(menu.level2->item(1)->foreground(), QBrush(QColor(255, 255, 255)));
    }
    void titles_data()
    {
        QTest::addColumn<QString>("title");
        const std::pair<const char *, const char *> rows[] = {{"AgingMode", "[FCAgeMode]"},
                                                              {"completemachine", "[MachineMode]"},
                                                              {"FactoryMode", "Factory Mode"},
                                                              {"LogExport", "Log Export"},
                                                              {"ResetFactory", "Factory Reset"},
                                                              {"ScreenLight", "Screen Light"},
                                                              {"SCREENLIGHT", "Screen Light"},
                                                              {"screenlight", "Screen Light"},
                                                              {"ScreenBadPixel", "Screen Bad Pixel"},
                                                              {"screenbadpixels", "Screen Bad Pixel"},
                                                              {"ButtonLight", "Button Light"},
                                                              {"ButtonFunction", "Button Function"},
                                                              {"Knob", "Factory Knob"},
                                                              {"Joystick", "JoyStick"},
                                                              {"Tbar", "T-Bar"},
                                                              {"Genlock", "Genlock"},
                                                              {"Typec", "TYPE-C"},
                                                              {"Net", "Factory Net"},
                                                              {"Input", "Input"},
                                                              {"Output", "Output"},
                                                              {"MVR", "MVR"},
                                                              {"LTC", "LTC"},
                                                              {"MIC", "MIC"},
                                                              {"ExpandSource", "EXP Source"},
                                                              {"expandsource", "EXP Source"},
                                                              {"TouchScreen", "Touch Screen"},
                                                              {"touchscreen", "Touch Screen"},
                                                              {"USB", "USB"},
                                                              {"usb", "USB"},
                                                              {"typecnet", "TYPE-C Net"},
                                                              {"DC", "DC"},
                                                              {"typecpowersupply", "TYPE-C Power Supply"},
                                                              {"POE", "POE"},
                                                              {"poe", "POE"},
                                                              {"madi", "MADI"},
                                                              {"MADI", "MADI"},
                                                              {"RepairMode", "RepairMode"},
                                                              {"a.b.", "a.b."}};
        for (const auto &[key, title] : rows)
            QTest::newRow(key) << QString::fromLatin1(title);
    }
    void titles()
    {
        QFETCH(QString, title);
        const QByteArray item = QByteArray("<MenuItem Key='") + QTest::currentDataTag() + "'/>";
        ShareDirectory::writeMenu("<MenuBar>" + item + "</MenuBar>");
        const FactoryModeWidget widget(nullptr);
        QCOMPARE(titlesOf(*MenuView(widget).level1), QStringList{title});
    }
    void withoutFilesItWarnsAndTriesAgain()
    {
        QFile::remove(ShareDirectory::path() + QStringLiteral("/factorymenu.xml"));
        QFile::remove(ShareDirectory::path() + QStringLiteral("/factorykeychecklist.xml"));
        LogCapture log;
        FactoryModeWidget widget(nullptr);
        const QString dir = ShareDirectory::path();
        QCOMPARE(log.warnings().filter(QStringLiteral("[FactoryModeWidget]")),
                 (QStringList{
                     QStringLiteral("[FactoryModeWidget] Failed to load menu config from: \"%1\"").arg(dir),
                     QStringLiteral("[FactoryModeWidget] Failed to load menu config from share path: \"%1\"").arg(dir),
                     QStringLiteral("[FactoryModeWidget] Failed to load factory key check list config from: \"%1\"")
                         .arg(dir)}));
        const MenuView menu(widget);
        widget.enterFactoryMode();
        QVERIFY(widget.isVisible());
        QCOMPARE(menu.level1->count(), 0);
        QCOMPARE(menu.level1->currentRow(), -1);
        ShareDirectory::writeMenu(SampleMenu);
        ShareDirectory::writeKeys("<LcdKeys><LcdKey Value='7'/></LcdKeys>");
        log.clear();
        widget.enterFactoryMode();
        QCOMPARE(menu.level1->count(), 6);
        QCOMPARE(widget.getFactoryKeyCheckList().count(), 1);
        QVERIFY(log.lines().contains(
            QStringLiteral("debug|[FactoryModeWidget] Config reloaded from share path: \"%1\"").arg(dir)));
    }
    void keyListIsReloadedOnlyWithTheMenu()
    {
        QFile::remove(ShareDirectory::path() + QStringLiteral("/factorykeychecklist.xml"));
        FactoryModeWidget widget(nullptr);
        ShareDirectory::writeKeys("<LcdKeys><LcdKey/></LcdKeys>");
        widget.enterFactoryMode();
        QVERIFY(widget.getFactoryKeyCheckList().isEmpty());
    }
    void linesOfTheConstructor()
    {
        const LogCapture log;
        const FactoryModeWidget widget(nullptr);
        const QString dir = ShareDirectory::path();
        const QString prefix = QStringLiteral("debug|[FactoryModeWidget] ");
        QStringList lines;
        for (const QString &line : log.lines()) {
            if (line.startsWith(prefix) && !line.contains(QStringLiteral("buildLevel1List:")))
                lines << line.mid(prefix.size());
        }
        QCOMPARE(lines,
                 (QStringList{
                     QStringLiteral("Constructor: sharePath = \"%1\"").arg(dir),
                     QStringLiteral("Constructor: Looking for factorymenu.xml in: \"%1/factorymenu.xml\"").arg(dir),
                     QStringLiteral("Constructor: File exists: true Absolute path: \"%1/factorymenu.xml\"").arg(dir),
                     QStringLiteral("Menu config loaded, path: \"%1/factorymenu.xml\" items: 6").arg(dir),
                     QStringLiteral("Menu config loaded successfully, Level1 items count: 6"),
                     QStringLiteral("buildLevel1List completed, list widget has 6 items"),
                     QStringLiteral("Factory key check list config loaded, path: \"%1\" items: 1").arg(dir)}));
    }
    void linesOfTheConstructorWithoutAFile()
    {
        QFile::remove(ShareDirectory::path() + QStringLiteral("/factorymenu.xml"));
        const LogCapture log;
        const FactoryModeWidget widget(nullptr);
        QCOMPARE(log.lines().filter(QStringLiteral("File exists")),
                 QStringList{QStringLiteral("debug|[FactoryModeWidget] Constructor: File exists: false Absolute path: "
                                            "\"%1/factorymenu.xml\"")
                                 .arg(ShareDirectory::path())});
    }
    void level2FallsBackToTheKeyInSilence()
    {
        ShareDirectory::writeMenu("<MenuBar><MenuItem Key='a'><MenuItem Key='c.d.'/></MenuItem></MenuBar>");
        FactoryModeWidget widget(nullptr);
        const MenuView menu(widget);
        widget.enterFactoryMode();
        const LogCapture log;
        clickRow(menu.level1, 0);
        QCOMPARE(titlesOf(*menu.level2), calls({"c.d."}));
        QCOMPARE(menu.level2->item(0)->data(Qt::UserRole).toString(), QStringLiteral("container."));
        QCOMPARE(log.lines(), QStringList());
    }
    void linesOfTheList()
    {
        ShareDirectory::writeMenu("<MenuBar><MenuItem Key='a.Net'/><MenuItem Key='b.'/></MenuBar>");
        const LogCapture log;
        const FactoryModeWidget widget(nullptr);
        QCOMPARE(
            linesWith(log, "buildLevel1List:"),
            calls({"debug|[FactoryModeWidget] buildLevel1List: Starting, _level1Items count: 2",
                   "debug|[FactoryModeWidget] buildLevel1List: Added item 0 - title: \"Factory Net\" key: \"a.Net\" "
                   "titleKey: \"Net\"",
                   "debug|[FactoryModeWidget] buildLevel1List: titleKey \"\" not found, using key: \"b.\"",
                   "debug|[FactoryModeWidget] buildLevel1List: Added item 1 - title: \"b.\" key: \"b.\" titleKey: \"\"",
                   "debug|[FactoryModeWidget] buildLevel1List: Completed, _listLevel1 now has 2 items"}));
    }
    void emptyMenuIsNotBuilt()
    {
        ShareDirectory::writeMenu("<MenuBar/>");
        const LogCapture log;
        const FactoryModeWidget widget(nullptr);
        QVERIFY(log.warnings().contains(
            QStringLiteral("[FactoryModeWidget] buildLevel1List: _level1Items is empty! Cannot build list.")));
    }
    void enteringAgainReturnsToTheTop()
    {
        FactoryModeWidget widget(nullptr);
        const MenuView menu(widget);
        widget.enterFactoryMode();
        clickRow(menu.level1, 0);
        QVERIFY(menu.level2->isVisible());
        LogCapture log;
        widget.enterFactoryMode();
        QVERIFY(menu.level1->isVisible());
        QVERIFY(!menu.level2->isVisible());
        QCOMPARE(menu.level1->currentRow(), 0);
        QVERIFY(widget.isFactoryMode());
        QCOMPARE(log.lines().constFirst(),
                 QStringLiteral("debug|[FactoryModeWidget] enterFactoryMode: List1 visible= true count= 6"));
        QCOMPARE(log.lines().constLast(),
                 QStringLiteral("debug|[FactoryModeWidget] enterFactoryMode, level1 items: 6 list1 count: 6"));
        QCOMPARE(log.lines().count(), 3);
    }
    void leavingKeepsLevelAndRow()
    {
        FactoryModeWidget widget(nullptr);
        const MenuView menu(widget);
        widget.enterFactoryMode();
        clickRow(menu.level1, 0);
        menu.level2->setCurrentRow(2);
        LogCapture log;
        widget.exitFactoryMode();
        QCOMPARE(log.lines(), calls({"debug|[FactoryModeWidget] exitFactoryMode"}));
        QVERIFY(!widget.isFactoryMode());
        QVERIFY(!widget.isVisible());
        widget.show();
        QVERIFY(menu.level2->isVisible());
        QCOMPARE(menu.level2->currentRow(), 2);
    }
    void onlyTheDirectoryOfAFileCounts()
    {
        FactoryModeWidget widget(nullptr);
        const QTemporaryDir other;
        writeFile(other.filePath(QStringLiteral("other.xml")), "<LCD><MenuBar><MenuItem Key='no'/></MenuBar></LCD>");
        writeFile(other.filePath(QStringLiteral("factorymenu.xml")),
                  "<LCD><MenuBar><MenuItem Key='yes'/></MenuBar></LCD>");
        LogCapture log;
        widget.setFactoryModeData(MenuPath, other.filePath(QStringLiteral("other.xml")));
        QCOMPARE(titlesOf(*MenuView(widget).level1), calls({"yes"}));
        QCOMPARE(linesWith(log, "Menu config loaded,"),
                 QStringList{QStringLiteral(
                                 "debug|[FactoryModeWidget] Menu config loaded, path: \"%1/factorymenu.xml\" items: 1")
                                 .arg(other.path())});
        QCOMPARE(log.warnings().constLast(),
                 QStringLiteral("[FactoryModeWidget] Failed to load factory key check list config from: \"%1\"")
                     .arg(other.path()));
        QCOMPARE(widget.getFactoryKeyCheckList().count(), 1);
    }
    void menuWithoutMenuBarIsReplacedOnEntering()
    {
        FactoryModeWidget widget(nullptr);
        const MenuView menu(widget);
        const QSignalSpy containers(&widget, &FactoryModeWidget::requestShowContainer);
        widget.enterFactoryMode();
        const QTemporaryDir other;
        writeFile(other.filePath(QStringLiteral("factorymenu.xml")), "<LCD/>");
        widget.setFactoryModeData(MenuPath, other.path());
        // The entries are still visible, but they open nothing.
        QCOMPARE(menu.level1->count(), 6);
        clickRow(menu.level1, 1);
        QCOMPARE(containers.count(), 0);
        LogCapture log;
        widget.enterFactoryMode();
        QCOMPARE(linesWith(log, "Config reloaded from share path:").count(), 1);
        QCOMPARE(menu.level1->count(), 6);
        clickRow(menu.level1, 1);
        QCOMPARE(containers.count(), 1);
    }
    void defaultMenuWithoutMenuBarShowsNoEntry()
    {
        ShareDirectory::writeMenu("");
        FactoryModeWidget widget(nullptr);
        widget.enterFactoryMode();
        QCOMPARE(MenuView(widget).level1->count(), 0);
    }
    void keyListWithoutLcdKeysStaysEmptyOnEntering()
    {
        FactoryModeWidget widget(nullptr);
        const QTemporaryDir other;
        writeFile(other.filePath(QStringLiteral("factorymenu.xml")),
                  "<LCD><MenuBar><MenuItem Key='a.Net'/></MenuBar></LCD>");
        writeFile(other.filePath(QStringLiteral("factorykeychecklist.xml")), "<LCD/>");
        widget.setFactoryModeData(MenuPath, other.path());
        QVERIFY(widget.getFactoryKeyCheckList().isEmpty());
        widget.enterFactoryMode();
        QVERIFY(widget.getFactoryKeyCheckList().isEmpty());
    }
    void aDirectoryNeedNotExist()
    {
        FactoryModeWidget widget(nullptr);
        LogCapture log;
        widget.setFactoryModeData(MenuPath, QStringLiteral("/no%1where%2"));
        QVERIFY(log.lines().contains(QStringLiteral(
            "debug|[FactoryMenuConfigParser] load: Attempting to load from: \"/no%1where%2/factorymenu.xml\"")));
        QCOMPARE(MenuView(widget).level1->count(), 6);
    }
    void otherDataIsIgnored()
    {
        FactoryModeWidget widget(nullptr);
        const LogCapture log;
        widget.setFactoryModeData(QStringLiteral("MenuConfigPath"), QStringLiteral("/nowhere"));
        widget.setFactoryModeData(MenuPath, QString());
        widget.setFactoryModeData(MenuPath, QVariant());
        widget.setFactoryModeData(MenuPath, QVariant::fromValue(QSize(1, 1)));
        QCOMPARE(log.lines(), QStringList());
    }
    void sizeOfTheWidget()
    {
        FactoryModeWidget widget(nullptr);
        LogCapture log;
        widget.setFactoryModeSize(QSize(480, 320));
        QCOMPARE(widget.size(), QSize(480, 320));
        QCOMPARE(log.lines(), calls({"debug|[FactoryModeWidget] setFactoryModeSize: 480 x 320"}));
        log.clear();
        for (const QSize size : {QSize(0, 300), QSize(300, 0), QSize(-1, 300)})
            widget.setFactoryModeSize(size);
        QCOMPARE(widget.size(), QSize(480, 320));
        QCOMPARE(log.lines(), QStringList());
    }
    void patternListeners()
    {
        FactoryModeWidget widget(nullptr);
        QStringList heard;
        const auto listener = [&heard](const char *name) {
            return [&heard, name](int type, int index, int level) {
                heard << QStringLiteral("%1 %2 %3 %4").arg(QLatin1String(name)).arg(type).arg(index).arg(level);
            };
        };
        widget.registerTestPatternDisplayCallback("b", listener("b"));
        widget.registerTestPatternDisplayCallback("a", listener("first"));
        widget.registerTestPatternDisplayCallback("a", listener("a"));
        widget.registerTestPatternDisplayCallback("", listener("nameless"));
        widget.registerTestPatternDisplayCallback("b", {});
        widget.notifyTestPatternChanged(3, 1, 128);
        QCOMPARE(heard, calls({"a 3 1 128", "b 3 1 128"}));
    }
    void aListenerKeepsItsState()
    {
        FactoryModeWidget widget(nullptr);
        QList<int> counts;
        widget.registerTestPatternDisplayCallback("a", [&counts, n = 0](int, int, int) mutable { counts << ++n; });
        for (int call = 0; call < 3; ++call)
            widget.notifyTestPatternChanged(1, 1, 0);
        QCOMPARE(counts, (QList<int>{1, 2, 3}));
    }
    void aListenerMayReplaceItself()
    {
        FactoryModeWidget widget(nullptr);
        int later = 0;
        const std::string text(1000, 'x');
        std::size_t size = 0;
        widget.registerTestPatternDisplayCallback("a", [&, text](int, int, int) {
            widget.registerTestPatternDisplayCallback("a", [&later](int, int, int) { ++later; });
            size = text.size();
        });
        widget.notifyTestPatternChanged(1, 1, 0);
        widget.notifyTestPatternChanged(1, 1, 0);
        QCOMPARE(size, std::size_t(1000));
        QCOMPARE(later, 1);
    }

private:
    std::unique_ptr<ShareDirectory> share;
};

QTEST_MAIN(tst_FactoryModeWidget)
#include "tst_factorymodewidget.moc"
