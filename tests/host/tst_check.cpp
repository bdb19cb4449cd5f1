#include "check/checker.h"
#include "check/keylistcheck.h"
#include "check/menucheck.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace panelhost;

/// Each numbered file with all that is said about it.
class CheckTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void file_data();
    void file();
    void missingFiles();
    void directoryInPlaceOfAFile();
    void bothFilesInOrder();
};

namespace {

QStringList linesOf(const Findings &findings)
{
    QStringList lines;
    for (const auto &finding : findings)
        lines.append(finding.toLine());
    return lines;
}

QString tagOf(const char *text)
{
    return QString::fromUtf8(text);
}

}

void CheckTest::initTestCase()
{
    QVERIFY(QDir::setCurrent(QStringLiteral(LCD_SOURCE_DIR "/tests/host/data/check")));
}

void CheckTest::file_data()
{
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *file, const QList<const char *> &findings) {
        QStringList lines;
        for (const auto finding : findings)
            lines.append(tagOf(file) + QLatin1Char(':') + tagOf(finding));
        QTest::newRow(file) << lines;
    };
    row("keys01.xml", {});
    row("keys02.xml", {"1:1: error: XML version is not 1.0 in file: \"keys02.xml\""});
    row("keys03.xml", {"1:1: error: No LcdKeys element found in: \"keys03.xml\""});
    row("keys04.xml", {"2:3: warning: LcdKeys holds no LcdKey: the button function test has nothing to do"});
    row("keys05.xml",
        {"3:9: warning: Value \"0x10\" reads as 0, expected a decimal number",
         "5:9: warning: Value \"4294967296\" reads as 0, expected a decimal number",
         "5:9: warning: key 0 stands in line 3 already", "6:9: warning: LcdKey has no Value: it reads as 0",
         "6:9: warning: key 0 stands in line 3 already", "7:9: warning: LcdKey has no Value: it reads as 0",
         "7:9: warning: key 0 stands in line 3 already"});
    row("keys06.xml", {"5:9: warning: key 12 stands in line 3 already"});
    row("keys07.xml",
        {"2:5: warning: no LcdKey has the Name \"CUT\"",
         "5:5: warning: only the first LcdKeys is read, this one is ignored"});
    row("keys08.xml", {"1:1: error: Root element is not LCD, got: \"lcd\" in file: \"keys08.xml\""});
    row("keys09.xml",
        {"2:1: error: Failed to parse XML: \"keys09.xml\" Error: \"unexpected end of file\" at line 2 column 1"});
    row("menu01.xml", {});
    row("menu02.xml", {"1:60: error: Failed to parse XML: \"menu02.xml\" Error: \"tag mismatch\" at line 1 column 60"});
    row("menu03.xml",
        {"1:1: error: Failed to parse XML: \"menu03.xml\" Error: \"unexpected end of file\" at line 1 column 1"});
    row("menu04.xml", {"3:1: error: Root element is not LCD, got: \"Panel\" in file: \"menu04.xml\""});
    row("menu05.xml", {"1:1: error: XML version is not 1.0, got: \"1.1\" in file: \"menu05.xml\""});
    row("menu06.xml", {"1:1: error: No MenuBar element found in: \"menu06.xml\""});
    row("menu07.xml", {"2:5: warning: No menu items found in MenuBar!"});
    row("menu08.xml", {"3:9: warning: no title is known for \"Tbra\": it shows as it stands"});
    row("menu09.xml",
        {"3:9: warning: MenuItem has an empty key: it shows no title and opens nothing",
         "4:9: warning: MenuItem has an empty key: it shows no title and opens nothing",
         "5:9: warning: key \"em.factorytest.\" ends in a dot: the item shows the whole key"});
    row("menu10.xml",
        {"4:9: warning: no title is known for \"RepairMode\": it shows as it stands",
         "5:13: warning: opens \"container.net\" as the item of line 3 does",
         "7:13: warning: opens \"container.factorytest.repairmode.net\" as the item of line 6 does"});
    row("menu11.xml",
        {"5:17: warning: MenuItem on a third level is ignored", "6:17: warning: MenuItem on a third level is ignored"});
    row("menu12.xml",
        {"3:9: warning: MenuItem gives its key as \"key\", expected \"Key\"",
         "4:9: warning: MenuItem gives its key as \"key\", expected \"Key\""});
    row("menu13.xml",
        {"5:5: warning: only the first MenuBar is read, this one is ignored",
         "8:5: warning: only the first MenuBar is read, this one is ignored"});
    row("menu14.xml", {"1:1: error: XML version is not 1.0, got: \"\" in file: \"menu14.xml\""});
    row("menu15.xml", {"1:1: error: not read: larger than 1048576 bytes or 20000 tags"});
    row("menu16.xml", {"1:1: error: not read: larger than 1048576 bytes or 20000 tags"});
    row("menu17.xml",
        {"1:1: error: Failed to parse XML: \"menu17.xml\" Error: \"error occurred while parsing element\" at line 1 "
         "column 1"});
    row("menu18.xml", {});
}

void CheckTest::file()
{
    QFETCH(QStringList, expected);
    const auto path = QString::fromUtf8(QTest::currentDataTag());
    const auto findings = path.startsWith(QLatin1String("menu")) ? checkMenu(path) : checkKeyList(path);
    QCOMPARE(linesOf(sortedByPlace(findings)), expected);
}

void CheckTest::missingFiles()
{
    const QStringList expected{
        QStringLiteral("nowhere/factorymenu.xml:1:1: error: Failed to open config file: \"nowhere/factorymenu.xml\" "
                       "Error: \"No such file or directory\""),
        QStringLiteral("nowhere/factorykeychecklist.xml:1:1: error: Failed to open config file: "
                       "\"nowhere/factorykeychecklist.xml\" Error: \"No such file or directory\"")};
    QCOMPARE(linesOf(checkDirectory(QStringLiteral("nowhere"))), expected);
}

void CheckTest::directoryInPlaceOfAFile()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("factorymenu.xml")));
    const auto findings = checkMenu(dir.filePath(QStringLiteral("factorymenu.xml")));
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().text, QStringLiteral("not a file"));
}

void CheckTest::bothFilesInOrder()
{
    QTemporaryDir dir;
    QVERIFY(QFile::copy(QStringLiteral("menu08.xml"), dir.filePath(QStringLiteral("factorymenu.xml"))));
    QVERIFY(QFile::copy(QStringLiteral("keys06.xml"), dir.filePath(QStringLiteral("factorykeychecklist.xml"))));
    const auto findings = checkDirectory(dir.path());
    QCOMPARE(findings.size(), 2);
    QVERIFY(findings.at(0).file.endsWith(QLatin1String("factorymenu.xml")));
    QVERIFY(findings.at(1).file.endsWith(QLatin1String("factorykeychecklist.xml")));
    QCOMPARE(countOf(findings, Finding::Severity::Warning), 2);
    QCOMPARE(countOf(findings, Finding::Severity::Error), 0);
}

QTEST_GUILESS_MAIN(CheckTest)
#include "tst_check.moc"
