#include "factorykeychecklistconfigparser.h"
#include "menufixture.h"

#include <QtTest/QtTest>

using LCD::FactoryModeImpl::FactoryKeyCheckListConfigParser;

using KeyList = QList<QPair<int, QString>>;

namespace {

const QString Where = QStringLiteral("the-path");
const KeyList Earlier{{1, QStringLiteral("earlier")}};

KeyList keys(std::initializer_list<std::pair<int, const char *>> entries)
{
    KeyList list;
    for (const auto &[value, name] : entries)
        list.append({value, QString::fromUtf8(name)});
    return list;
}

}

class tst_FactoryKeyCheckListConfigParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entries_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<KeyList>("expected");
        QTest::newRow("worked example") << QByteArray(
            "<LcdKey Value='12' Name=' Alpha '/><LcdKey Value='7'/><LcdKey Name='CUT'/>")
                                        << keys({{12, "Alpha"}, {7, ""}, {0, "CUT"}});
        QTest::newRow("empty list") << QByteArray() << KeyList();
        QTest::newRow("no attributes") << QByteArray("<LcdKey/>") << keys({{0, ""}});
        QTest::newRow("blank name") << QByteArray("<LcdKey Value='1' Name='   '/>") << keys({{1, ""}});
        QTest::newRow("hexadecimal") << QByteArray("<LcdKey Value='0x10'/>") << keys({{0, ""}});
        QTest::newRow("negative") << QByteArray("<LcdKey Value='-5'/>") << keys({{-5, ""}});
        QTest::newRow("empty value") << QByteArray("<LcdKey Value=''/>") << keys({{0, ""}});
        QTest::newRow("no number") << QByteArray("<LcdKey Value='ten'/>") << keys({{0, ""}});
        QTest::newRow("beyond 32 bits") << QByteArray("<LcdKey Value='2147483648'/><LcdKey Value='2147483647'/>")
                                        << keys({{0, ""}, {2147483647, ""}});
        QTest::newRow("leading zero is decimal") << QByteArray("<LcdKey Value='010'/>") << keys({{10, ""}});
        QTest::newRow("twice") << QByteArray("<LcdKey Value='3' Name='a'/><LcdKey Value='3' Name='b'/>")
                               << keys({{3, "a"}, {3, "b"}});
        QTest::newRow("lower-case attributes") << QByteArray("<LcdKey value='3' name='a'/>") << keys({{0, ""}});
        QTest::newRow("others") << QByteArray("<Other Value='9'/>x<LcdKey Value='1'><LcdKey Value='2'/></LcdKey>")
                                << keys({{1, ""}});
        QTest::newRow("second LcdKeys") << QByteArray("<LcdKey Value='1'/></LcdKeys><LcdKeys><LcdKey Value='2'/>")
                                        << keys({{1, ""}});
    }
    void entries()
    {
        QFETCH(QByteArray, list);
        QFETCH(KeyList, expected);
        KeyList result = Earlier;
        LogCapture log;
        QVERIFY(FactoryKeyCheckListConfigParser().parseDocument("<LCD><LcdKeys>" + list + "</LcdKeys></LCD>", Where,
                                                                result));
        QCOMPARE(result, expected);
        QCOMPARE(log.lines(),
                 QStringList{QStringLiteral("debug|[FactoryKeyCheckListConfigParser] Successfully loaded %1 "
                                            "LcdKey(s) from: \"the-path\"")
                                 .arg(expected.count())});
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<KeyList>("left");
        QTest::newRow("broken")
            << QByteArray("<LCD>")
            << QStringLiteral("Failed to parse XML: \"the-path\" Error: \"unexpected end of file\" at line 1 column 6")
            << Earlier;
        QTest::newRow("another root") << QByteArray("<x/>")
                                      << QStringLiteral("Root element is not LCD, got: \"x\" in file: \"the-path\"")
                                      << Earlier;
        QTest::newRow("version") << QByteArray("<LCD version='2'/>")
                                 << QStringLiteral("XML version is not 1.0 in file: \"the-path\"") << Earlier;
        QTest::newRow("empty version") << QByteArray("<LCD version=''><LcdKeys/></LCD>")
                                       << QStringLiteral("XML version is not 1.0 in file: \"the-path\"") << Earlier;
        QTest::newRow("no LcdKeys") << QByteArray("<LCD version='1.0'><A/></LCD>")
                                    << QStringLiteral("No LcdKeys element found in: \"the-path\"") << KeyList();
    }
    void refusals()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, warning);
        QFETCH(KeyList, left);
        KeyList result = Earlier;
        LogCapture log;
        QVERIFY(!FactoryKeyCheckListConfigParser().parseDocument(document, Where, result));
        QCOMPARE(log.lines(), QStringList{QStringLiteral("warning|[FactoryKeyCheckListConfigParser] ") + warning});
        QCOMPARE(result, left);
    }
    void linesOfALoad()
    {
        const ShareDirectory share;
        ShareDirectory::writeKeys("<LcdKeys><LcdKey/></LcdKeys>");
        const QString path = ShareDirectory::path() + QStringLiteral("/factorykeychecklist.xml");
        KeyList result;
        LogCapture log;
        QVERIFY(FactoryKeyCheckListConfigParser().load(ShareDirectory::path(), result));
        const QString prefix = QStringLiteral("debug|[FactoryKeyCheckListConfigParser] ");
        QCOMPARE(log.lines(),
                 (QStringList{prefix + QStringLiteral("load: Attempting to load from: \"%1\"").arg(path),
                              prefix
                                  + QStringLiteral("Config file opened successfully, file size: %1 bytes")
                                        .arg(QFileInfo(path).size()),
                              prefix + QStringLiteral("Successfully loaded 1 LcdKey(s) from: \"%1\"").arg(path)}));
    }
    void unreadableFileKeepsTheList()
    {
        KeyList result = Earlier;
        LogCapture log;
        QVERIFY(!FactoryKeyCheckListConfigParser().load(QStringLiteral("/nowhere"), result));
        QCOMPARE(result, Earlier);
        QCOMPARE(
            log.warnings(),
            (QStringList{QStringLiteral("[FactoryKeyCheckListConfigParser] Failed to open config file: "
                                        "\"/nowhere/factorykeychecklist.xml\" Error: \"No such file or directory\""),
                         QStringLiteral("[FactoryKeyCheckListConfigParser] Current working directory: \"%1\"")
                             .arg(QDir::currentPath())}));
    }
    void versionIsOptional()
    {
        for (const char *root : {"<LCD>", "<LCD version='1.0'>"}) {
            KeyList result;
            QVERIFY(FactoryKeyCheckListConfigParser().parseDocument(
                root + QByteArray("<LcdKeys><LcdKey/></LcdKeys></LCD>"), Where, result));
            QCOMPARE(result, keys({{0, ""}}));
        }
    }
    void defaultName()
    {
        QCOMPARE(FactoryKeyCheckListConfigParser::defaultConfigFileName(), "factorykeychecklist.xml");
    }
};

QTEST_GUILESS_MAIN(tst_FactoryKeyCheckListConfigParser)
#include "tst_factorykeychecklistconfigparser.moc"
