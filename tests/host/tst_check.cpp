#include "check/checker.h"
#include "check/keylistcheck.h"
#include "check/menucheck.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <limits>

#include <sys/inotify.h>
#include <unistd.h>

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
    void shippedFilesHaveNoFinding();
    void opensNoOtherFile_data();
    void opensNoOtherFile();
    void hostileFileIsCheckedQuickly_data();
    void hostileFileIsCheckedQuickly();
};

namespace {

const auto DataDirectory = QStringLiteral(LCD_SOURCE_DIR "/tests/host/data/check");

QStringList linesOf(const Diagnostics &diagnostics)
{
    QStringList lines;
    for (const auto &diagnostic : diagnostics)
        lines.append(diagnostic.toLine());
    return lines;
}

// Sanitizers slow the checks down; without them each takes a fifth of it at most.
constexpr double MaxSeconds = 3;

// A virtual processor also counts the time that its machine gives to others, so one slow check says nothing.
constexpr int MaxChecks = 5;

// Checks a menu until that is done in time. Returns the processor time of the fastest check, and sets what was found.
double secondsToCheck(const QString &path, Diagnostics *found)
{
    double fastest = std::numeric_limits<double>::max();
    for (int check = 0; check < MaxChecks && fastest >= MaxSeconds; ++check) {
        const auto before = std::clock();
        *found = checkMenu(path);
        fastest = qMin(fastest, static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
    }
    return fastest;
}

QString tagOf(const char *text)
{
    return QString::fromUtf8(text);
}

}

void CheckTest::initTestCase()
{
    QVERIFY(QDir::setCurrent(DataDirectory));
}

void CheckTest::file_data()
{
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *file, const QList<const char *> &diagnostics) {
        QStringList lines;
        for (const auto diagnostic : diagnostics)
            lines.append(tagOf(file) + QLatin1Char(':') + tagOf(diagnostic));
        QTest::newRow(file) << lines;
    };
    row("keys01.xml", {});
    row("keys02.xml", {"1:1: error: XML version is not 1.0 in file: \"keys02.xml\""});
    row("keys03.xml",
        {"1:1: error: No LcdKeys element found in: \"keys03.xml\"",
         "2:3: warning: found element \"Keys\", expected LcdKeys"});
    row("keys04.xml", {"2:3: warning: LcdKeys contains no LcdKey: the key walk has no key to ask for"});
    row("keys05.xml",
        {"3:9: warning: found Value \"0x10\", expected a decimal number from 0 to 2147483647",
         "5:9: warning: found Value \"4294967296\", expected a decimal number from 0 to 2147483647",
         "6:9: warning: found LcdKey without Value, expected a decimal number from 0 to 2147483647",
         "7:9: warning: found Value \"\", expected a decimal number from 0 to 2147483647",
         "8:9: warning: found Value \"-5\", expected a decimal number from 0 to 2147483647"});
    row("keys06.xml",
        {"5:9: warning: found Value \"12\" a second time (the first is in line 3), expected each Value once"});
    row("keys07.xml",
        {"2:5: warning: no LcdKey has the Name \"CUT\"",
         "5:5: warning: found element \"LcdKeys\", expected the end of LCD"});
    row("keys08.xml", {"1:1: error: Root element is not LCD, got: \"lcd\" in file: \"keys08.xml\""});
    row("keys09.xml",
        {"2:1: error: Failed to parse XML: \"keys09.xml\" Error: \"unexpected end of file\" at line 2 column 1"});
    row("keys10.xml",
        {"3:9: warning: found Value \"-5\", expected a decimal number from 0 to 2147483647",
         "4:9: warning: found Value \"2147483648\", expected a decimal number from 0 to 2147483647",
         "6:9: warning: found Value \"07\" a second time, expected each Value once",
         "7:9: warning: found attribute \"name\" of LcdKey, expected Value or Name",
         "8:9: warning: found element \"LcdKeyy\", expected LcdKey",
         "9:28: warning: found text \"A\" in LcdKey, expected none"});
    row("keys11.xml", {});
    row("menu01.xml", {});
    row("menu02.xml", {"1:60: error: Failed to parse XML: \"menu02.xml\" Error: \"tag mismatch\" at line 1 column 60"});
    row("menu03.xml",
        {"1:1: error: Failed to parse XML: \"menu03.xml\" Error: \"unexpected end of file\" at line 1 column 1"});
    row("menu04.xml", {"3:1: error: Root element is not LCD, got: \"Panel\" in file: \"menu04.xml\""});
    row("menu05.xml", {"1:1: error: XML version is not 1.0, got: \"1.1\" in file: \"menu05.xml\""});
    row("menu06.xml",
        {"1:1: error: No MenuBar element found in: \"menu06.xml\"",
         "2:5: warning: found element \"Menu\", expected MenuBar",
         "3:5: warning: found element \"Bar\", expected MenuBar"});
    row("menu07.xml", {"2:5: warning: No menu items found in MenuBar!"});
    row("menu08.xml", {"3:9: warning: unknown title \"Tbra\": the menu shows it unchanged; did you mean \"tbar\"?"});
    row("menu09.xml",
        {"3:9: warning: MenuItem has no Key: it shows no title and opens nothing",
         "4:9: warning: found Key \"\", expected names separated by dots, such as em.factorytest.Net",
         "4:9: warning: found key \"\", expected names separated by dots, such as em.factorytest.Net",
         "5:9: warning: found Key \"em.factorytest.\", expected names separated by dots, such as em.factorytest.Net"});
    row("menu10.xml",
        {"5:13: warning: opens \"container.net\", as does the item in line 3",
         "7:13: warning: opens \"container.factorytest.repairmode.net\", as does the item in line 6"});
    row("menu11.xml",
        {"5:17: warning: found element \"MenuItem\", expected the end of MenuItem",
         "6:17: warning: found element \"MenuItem\", expected the end of MenuItem"});
    row("menu12.xml",
        {"3:9: warning: found attribute \"key\" of MenuItem, expected \"Key\"",
         "4:9: warning: found Key \"\", expected names separated by dots, such as em.factorytest.Net",
         "4:9: warning: found attribute \"key\" of MenuItem, expected \"Key\""});
    row("menu13.xml",
        {"5:5: warning: found element \"MenuBar\", expected the end of LCD",
         "8:5: warning: found element \"MenuBar\", expected the end of LCD"});
    row("menu14.xml", {"1:1: error: XML version is not 1.0, got: \"\" in file: \"menu14.xml\""});
    row("menu15.xml", {"1:1: error: not read: larger than 1048576 bytes or 5000 tags"});
    row("menu16.xml", {"1:1: error: not read: larger than 1048576 bytes or 5000 tags"});
    row("menu17.xml",
        {"1:1: error: Failed to parse XML: \"menu17.xml\" Error: \"error occurred while parsing element\" at line 1 "
         "column 1"});
    row("menu18.xml", {});
    row("menu19.xml",
        {"2:5: warning: found element \"Menubar\", expected MenuBar",
         "4:9: warning: found element \"MenuItm\", expected MenuItem",
         "6:13: warning: found element \"menuItem\", expected MenuItem",
         "7:48: warning: found element \"Icon\", expected the end of MenuItem",
         "9:9: warning: found element \"Separator\", expected MenuItem"});
    row("menu20.xml",
        {"1:1: warning: found attribute \"author\" of LCD, expected version",
         "2:5: warning: found attribute \"visible\" of MenuBar, expected no attribute",
         "3:9: warning: found attribute \"Title\" of MenuItem, expected Key",
         "3:9: warning: found attribute \"Icon\" of MenuItem, expected Key",
         "5:9: warning: found attribute \"KEY\" of MenuItem, expected Key",
         "5:9: warning: MenuItem has no Key: it shows no title and opens nothing"});
    row("menu21.xml",
        {"6:13: warning: found Key \"em.factorytest.Net\" a second time (the first is in line 3), expected each Key "
         "once",
         "8:9: warning: found Key \"em.factorytest.Usb\" a second time (the first is in line 4), expected each Key "
         "once",
         "8:46: warning: opens \"container.net\", as does the item in line 3"});
    row("menu22.xml",
        {"2:14: warning: found text \"stray words\" in MenuBar, expected none",
         "6:13: warning: found text \"Tür und Tor\" in MenuItem, expected none",
         "8:32: warning: found text \"data\" in MenuBar, expected none",
         "12:51: warning: found text \"<b>\" in MenuItem, expected none",
         "15:5: warning: found text \"the end of a menu that has been written ...\" in LCD, expected none"});
    row("menu23.xml", {"1:39: warning: found encoding \"klingon\", expected a known one such as UTF-8"});
    row("menu24.xml",
        {"2:15: warning: found a document type declaration, expected none: the file isn't validated",
         "5:9: warning: unknown title \"Nothing\": the menu shows it unchanged"});
    row("menu25.xml", {"4:10: warning: found bytes that are invalid in the encoding of the file"});
    row("menu26.xml", {"1:1: warning: found LCD in the namespace \"urn:menu\", expected no namespace"});
    row("menu27.xml", {"4:42: warning: found element \"MenuItm\", expected MenuItem"});
    row("menu28.xml", {});
    row("menu29.xml", {"1:48: warning: found what XML doesn't allow: Attribute Key redefined"});
    row("menu30.xml",
        {"1:1: warning: found attribute \"xml:lang\" of LCD, expected version",
         "2:5: warning: Element 'MenuBar': The element is not 'nillable'.",
         "3:14: warning: found what XML doesn't allow: Entity 'foo' not defined"});
}

void CheckTest::file()
{
    QFETCH(QStringList, expected);
    const auto path = QString::fromUtf8(QTest::currentDataTag());
    const auto diagnostics = path.startsWith(QLatin1String("menu")) ? checkMenu(path) : checkKeyList(path);
    QCOMPARE(linesOf(sortedByLocation(diagnostics)), expected);
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
    const auto diagnostics = checkMenu(dir.filePath(QStringLiteral("factorymenu.xml")));
    QCOMPARE(diagnostics.size(), 1);
    QCOMPARE(diagnostics.first().text, QStringLiteral("not a file"));
}

void CheckTest::bothFilesInOrder()
{
    QTemporaryDir dir;
    QVERIFY(QFile::copy(QStringLiteral("menu08.xml"), dir.filePath(QStringLiteral("factorymenu.xml"))));
    QVERIFY(QFile::copy(QStringLiteral("keys06.xml"), dir.filePath(QStringLiteral("factorykeychecklist.xml"))));
    const auto diagnostics = checkDirectory(dir.path());
    QCOMPARE(diagnostics.size(), 2);
    QVERIFY(diagnostics.at(0).file.endsWith(QLatin1String("factorymenu.xml")));
    QVERIFY(diagnostics.at(1).file.endsWith(QLatin1String("factorykeychecklist.xml")));
    QCOMPARE(countOf(diagnostics, Diagnostic::Severity::Warning), 2);
    QCOMPARE(countOf(diagnostics, Diagnostic::Severity::Error), 0);
}

void CheckTest::shippedFilesHaveNoFinding()
{
    QCOMPARE(linesOf(checkDirectory(QStringLiteral(LCD_SOURCE_DIR "/share"))), QStringList());
    QCOMPARE(linesOf(checkMenu(QStringLiteral(LCD_SOURCE_DIR "/share/examples/full/factorymenu.xml"))), QStringList());
}

void CheckTest::opensNoOtherFile_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray menu = "<MenuBar><MenuItem Key=\"a.Net\"/></MenuBar></LCD>";
    const QByteArray instance = "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";
    QTest::newRow("schema") << "<LCD " + instance + " xsi:noNamespaceSchemaLocation=\"other.xml\">" + menu;
    QTest::newRow("schema of a namespace")
        << "<LCD " + instance + " xmlns:o=\"urn:o\" o:a=\"\" xsi:schemaLocation=\"urn:o other.xml\">" + menu;
    QTest::newRow("document type") << "<!DOCTYPE LCD SYSTEM \"other.xml\"><LCD>" + menu;
    QTest::newRow("entity") << "<!DOCTYPE LCD [<!ENTITY o SYSTEM \"other.xml\">]><LCD>&o;" + menu;
    QTest::newRow("parameter entity") << "<!DOCTYPE LCD [<!ENTITY % o SYSTEM \"other.xml\"> %o;]><LCD>" + menu;
}

// The system tells of each time that the other file is opened.
void CheckTest::opensNoOtherFile()
{
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    const auto write = [&dir](const char *name, const QByteArray &text) {
        QFile file(dir.filePath(tagOf(name)));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    };
    QVERIFY(write("factorymenu.xml", content));
    QVERIFY(write("other.xml", "<other/>"));
    const int watch = inotify_init1(IN_NONBLOCK);
    QVERIFY(watch >= 0);
    const auto close = qScopeGuard([watch] { ::close(watch); });
    QVERIFY(inotify_add_watch(watch, qPrintable(dir.filePath(QStringLiteral("other.xml"))), IN_OPEN) >= 0);
    QVERIFY(QDir::setCurrent(dir.path()));
    checkMenu(QStringLiteral("factorymenu.xml"));
    QVERIFY(QDir::setCurrent(DataDirectory));
    alignas(inotify_event) char event[1024];
    QCOMPARE(read(watch, event, sizeof event), ssize_t(-1));
    QCOMPARE(errno, EAGAIN);
}

void CheckTest::hostileFileIsCheckedQuickly_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("diagnostic");
    const QByteArray begin = "<LCD><MenuBar>";
    const QByteArray end = "</MenuBar></LCD>";
    const auto unexpected = QStringLiteral("found element \"x\", expected MenuItem");
    QTest::newRow("unexpected elements") << begin + QByteArray("<x/>").repeated(4900) + end << unexpected;
    QTest::newRow("same keys") << begin + QByteArray("<MenuItem Key=\"a.Net\"/>").repeated(4900) + end
                               << QStringLiteral("found Key \"a.Net\" a second time, expected each Key once");
    QTest::newRow("much text") << begin + QByteArray("<x/>").repeated(100) + QByteArray(1000000, 'x') + end
                               << unexpected;
    QTest::newRow("long value") << begin + "<MenuItem Key=\"" + QByteArray(1000000, '.') + "\"/>" + end
                                << QStringLiteral("found Key \"%1...\", expected names separated by dots, such as "
                                                  "em.factorytest.Net")
                                       .arg(QString(40, QLatin1Char('.')));
    QTest::newRow("nested elements") << begin + QByteArray("<x>").repeated(2400) + QByteArray("</x>").repeated(2400)
            + end
                                     << QStringLiteral(
                                            "found what XML doesn't allow: Excessive depth in document: 256 use "
                                            "XML_PARSE_HUGE option");
}

void CheckTest::hostileFileIsCheckedQuickly()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, diagnostic);
    QTemporaryDir dir;
    const auto path = dir.filePath(QStringLiteral("factorymenu.xml"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    Diagnostics diagnostics;
    const double seconds = secondsToCheck(path, &diagnostics);
    const auto isWanted = [&diagnostic](const Diagnostic &found) { return found.text == diagnostic; };
    QVERIFY2(std::any_of(diagnostics.begin(), diagnostics.end(), isWanted),
             qPrintable(linesOf(diagnostics.mid(0, 3)).join(QLatin1Char('\n'))));
    QVERIFY2(seconds < MaxSeconds, qPrintable(QString::number(seconds)));
}

QTEST_GUILESS_MAIN(CheckTest)
#include "tst_check.moc"
