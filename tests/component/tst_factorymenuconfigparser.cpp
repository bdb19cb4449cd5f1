#include "factorymenuconfigparser.h"
#include "menufixture.h"

#include <QtTest/QtTest>

#include <sys/stat.h>

using namespace LCD::FactoryModeImpl;

namespace {

const QString Where = QStringLiteral("the-path");

QString shown(const FactoryMenuLevel2Item &item)
{
    return QStringLiteral("%1|%2|%3").arg(item.key, item.titleKey, item.containerKey);
}

QStringList shown(const QList<FactoryMenuLevel1Item> &items)
{
    QStringList lines;
    for (const FactoryMenuLevel1Item &item : items) {
        lines << QStringLiteral("%1|%2|%3").arg(item.key, item.titleKey, item.containerKey);
        for (const FactoryMenuLevel2Item &child : item.children)
            lines << QStringLiteral("- ") + shown(child);
    }
    return lines;
}

QList<FactoryMenuLevel1Item> earlier()
{
    FactoryMenuLevel1Item item;
    item.key = QStringLiteral("earlier");
    return {item};
}

}

class tst_FactoryMenuConfigParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void items_data()
    {
        QTest::addColumn<QByteArray>("menu");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("worked example")
            << QByteArray("<MenuItem Key='em.factorytest.AgingMode'/><MenuItem key='em.factorytest.LogExport'/>"
                          "<MenuItem Key='em.factorytest.RepairMode'>"
                          "<MenuItem Key='em.factorytest.repairmode.ScreenLight'/>"
                          "<MenuItem Key='em.factorytest.Tbar'/></MenuItem>")
            << calls(
                   {"em.factorytest.AgingMode|AgingMode|container.agingmode",
                    "em.factorytest.LogExport|LogExport|container.logexport",
                    "em.factorytest.RepairMode|RepairMode|container.repairmode",
                    "- em.factorytest.repairmode.ScreenLight|ScreenLight|container.factorytest.repairmode.screenlight",
                    "- em.factorytest.Tbar|Tbar|container.tbar"});
        QTest::newRow("no key") << QByteArray("<MenuItem/>") << calls({"||"});
        QTest::newRow("empty Key falls through")
            << QByteArray("<MenuItem Key='' key='a.B'/>") << calls({"a.B|B|container.b"});
        QTest::newRow("Key wins") << QByteArray("<MenuItem key='a.B' Key='c.D'/>") << calls({"c.D|D|container.d"});
        QTest::newRow("no dot") << QByteArray("<MenuItem Key='Tbar'/>") << calls({"Tbar|Tbar|container.tbar"});
        QTest::newRow("ends in a dot") << QByteArray("<MenuItem Key='a.b.'/>") << calls({"a.b.||container."});
        QTest::newRow("repair mode on the first level") << QByteArray("<MenuItem Key='em.factorytest.repairmode.X'/>")
                                                        << calls({"em.factorytest.repairmode.X|X|container.x"});
        QTest::newRow("prefix in its case alone")
            << QByteArray("<MenuItem Key='a'><MenuItem Key='EM.factorytest.repairmode.X'/>"
                          "<MenuItem Key='em.factorytest.repairmode.a.Y'/></MenuItem>")
            << calls({"a|a|container.a", "- EM.factorytest.repairmode.X|X|container.x",
                      "- em.factorytest.repairmode.a.Y|Y|container.factorytest.repairmode.y"});
        QTest::newRow("third level") << QByteArray(
            "<MenuItem Key='a'><MenuItem Key='b'><MenuItem Key='c'/></MenuItem></MenuItem>")
                                     << calls({"a|a|container.a", "- b|b|container.b"});
        QTest::newRow("others are ignored") << QByteArray(
            "text<!-- c --><Other/><MenuItem Key='a' Title='t'>x<Other><MenuItem Key='no'/></Other></MenuItem>")
                                            << calls({"a|a|container.a"});
        QTest::newRow("second MenuBar") << QByteArray("<MenuItem Key='a'/></MenuBar><MenuBar><MenuItem Key='b'/>")
                                        << calls({"a|a|container.a"});
    }
    void items()
    {
        QFETCH(QByteArray, menu);
        QFETCH(QStringList, expected);
        auto items = earlier();
        QVERIFY(FactoryMenuConfigParser().parseDocument("<LCD><MenuBar>" + menu + "</MenuBar></LCD>", Where, items));
        QCOMPARE(shown(items), expected);
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QStringList>("warnings");
        QTest::addColumn<bool>("keeps");
        QTest::newRow("broken") << QByteArray("<LCD>\n<MenuBar></LCD>")
                                << calls({"[FactoryMenuConfigParser] Failed to parse XML: \"the-path\" Error: \"tag "
                                          "mismatch\" at line 2 column 15"})
                                << true;
        QTest::newRow("too many levels")
            << "<LCD>\n" + QByteArray("<a>").repeated(600)
            << calls(
                   {"[FactoryMenuConfigParser] Failed to parse XML: \"the-path\" Error: \"the document needs more than "
                    "512 levels\" at line 2 column 1537"})
            << true;
        QTest::newRow("too large") << QByteArray(4 * 1024 * 1024 + 1, ' ')
                                   << calls({"[FactoryMenuConfigParser] Failed to parse XML: \"the-path\" Error: \"the "
                                             "document is larger than 4194304 bytes\" at line 1 column 1"})
                                   << true;
        QTest::newRow("another root")
            << QByteArray("<lcd><MenuBar/></lcd>")
            << calls({"[FactoryMenuConfigParser] Root element is not LCD, got: \"lcd\" in file: \"the-path\""}) << true;
        QTest::newRow("version 1.1")
            << QByteArray("<LCD version='1.1'><MenuBar/></LCD>")
            << calls({"[FactoryMenuConfigParser] XML version is not 1.0, got: \"1.1\" in file: \"the-path\""}) << true;
        QTest::newRow("version 1.00")
            << QByteArray("<LCD version='1.00'><MenuBar/></LCD>")
            << calls({"[FactoryMenuConfigParser] XML version is not 1.0, got: \"1.00\" in file: \"the-path\""}) << true;
        QTest::newRow("empty version")
            << QByteArray("<LCD version=''><MenuBar/></LCD>")
            << calls({"[FactoryMenuConfigParser] XML version is not 1.0, got: \"\" in file: \"the-path\""}) << true;
        QTest::newRow("no MenuBar") << QByteArray("<LCD version='1.0'>text<!-- c --><A/><B><MenuBar/></B></LCD>")
                                    << calls({"[FactoryMenuConfigParser] No MenuBar element found in: \"the-path\"",
                                              "[FactoryMenuConfigParser] Root element has 4 children",
                                              "[FactoryMenuConfigParser] Child element: \"A\"",
                                              "[FactoryMenuConfigParser] Child element: \"B\""})
                                    << false;
    }
    void refusals()
    {
        QFETCH(QByteArray, document);
        QFETCH(QStringList, warnings);
        QFETCH(bool, keeps);
        auto items = earlier();
        LogCapture log;
        QVERIFY(!FactoryMenuConfigParser().parseDocument(document, Where, items));
        QCOMPARE(log.warnings(), warnings);
        QCOMPARE(shown(items), keeps ? calls({"earlier||"}) : QStringList());
    }

    void versionIsOptional()
    {
        QList<FactoryMenuLevel1Item> items;
        for (const char *root : {"<LCD>", "<LCD version='1.0'>"})
            QVERIFY(FactoryMenuConfigParser().parseDocument(root + QByteArray("<MenuBar><MenuItem/></MenuBar></LCD>"),
                                                            Where, items));
    }
    void bracketsOfManyDeclarationsAreNoLevels()
    {
        const QByteArray declarations = QByteArray("<!ELEMENT a ((b)|(c))>").repeated(600);
        QList<FactoryMenuLevel1Item> items;
        QVERIFY(FactoryMenuConfigParser().parseDocument(
            "<!DOCTYPE LCD [" + declarations + "]><LCD><MenuBar><MenuItem/></MenuBar></LCD>", Where, items));
    }
    void emptyMenuIsLoadedWithAWarning()
    {
        auto items = earlier();
        LogCapture log;
        QVERIFY(FactoryMenuConfigParser().parseDocument("<LCD><MenuBar/></LCD>", Where, items));
        QVERIFY(items.isEmpty());
        QCOMPARE(log.lines(),
                 calls({"debug|[FactoryMenuConfigParser] Successfully loaded 0 Level1 items from: \"the-path\"",
                        "warning|[FactoryMenuConfigParser] No menu items found in MenuBar!"}));
    }
    void linesOfALoad()
    {
        const ShareDirectory share;
        ShareDirectory::writeMenu("<MenuBar><MenuItem Key='a.B'><MenuItem Key='c'/></MenuItem><MenuItem/></MenuBar>");
        const QString path = ShareDirectory::path() + QStringLiteral("/factorymenu.xml");
        QList<FactoryMenuLevel1Item> items;
        LogCapture log;
        QVERIFY(FactoryMenuConfigParser().load(ShareDirectory::path(), items));
        QCOMPARE(
            log.lines(),
            (QStringList{
                QStringLiteral("debug|[FactoryMenuConfigParser] load: Attempting to load from: \"%1\"").arg(path),
                QStringLiteral("debug|[FactoryMenuConfigParser] Config file opened successfully, file size: %1 bytes")
                    .arg(QFileInfo(path).size()),
                QStringLiteral("debug|[FactoryMenuConfigParser] Parsing Level1 item - Key: \"a.B\" titleKey: \"B\" "
                               "containerKey: \"container.b\""),
                QStringLiteral("debug|[FactoryMenuConfigParser] Parsing Level2 item - Key: \"c\" titleKey: \"c\" "
                               "containerKey: \"container.c\""),
                QStringLiteral("debug|[FactoryMenuConfigParser] Level1 item \"a.B\" has 1 children"),
                QStringLiteral("debug|[FactoryMenuConfigParser] Parsing Level1 item - Key: \"\" titleKey: \"\" "
                               "containerKey: \"\""),
                QStringLiteral("debug|[FactoryMenuConfigParser] Successfully loaded 2 Level1 items from: \"%1\"")
                    .arg(path),
            }));
    }
    void unreadableFileKeepsTheList()
    {
        auto items = earlier();
        LogCapture log;
        QVERIFY(!FactoryMenuConfigParser().load(QStringLiteral("/nowhere"), items));
        QCOMPARE(shown(items), calls({"earlier||"}));
        QCOMPARE(log.warnings(),
                 (QStringList{QStringLiteral("[FactoryMenuConfigParser] Failed to open config file: "
                                             "\"/nowhere/factorymenu.xml\" Error: \"No such file or directory\""),
                              QStringLiteral("[FactoryMenuConfigParser] Current working directory: \"%1\"")
                                  .arg(QDir::currentPath())}));
    }
    void pipeKeepsTheList()
    {
        const ShareDirectory share;
        const QString path = ShareDirectory::path() + QStringLiteral("/factorymenu.xml");
        QFile::remove(path);
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        auto items = earlier();
        LogCapture log;
        QVERIFY(!FactoryMenuConfigParser().load(ShareDirectory::path(), items));
        QCOMPARE(shown(items), calls({"earlier||"}));
        QCOMPARE(log.warnings(),
                 (QStringList{QStringLiteral("[FactoryMenuConfigParser] Failed to parse XML: \"%1\" Error: "
                                             "\"not a regular file\" at line 0 column 0")
                                  .arg(path)}));
    }
    void defaultName() { QCOMPARE(FactoryMenuConfigParser::defaultConfigFileName(), "factorymenu.xml"); }
};

QTEST_GUILESS_MAIN(tst_FactoryMenuConfigParser)
#include "tst_factorymenuconfigparser.moc"
