#include "check/keylistcheck.h"
#include "check/knowntitles.h"
#include "check/menucheck.h"
#include "factorykeychecklistconfigparser.h"
#include "factorymenuconfigparser.h"

#include <QtCore/QDir>
#include <QtTest/QtTest>

using namespace panelhost;
using namespace LCD::FactoryModeImpl;

/// The checks and the component's parsers side by side: they refuse the same files, in the same words.
class CheckWordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sameWords_data();
    void sameWords();
    void sameTitles();
};

namespace {

QStringList warnings;

void collectWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtWarningMsg)
        warnings.append(text);
}

/// What the component makes of a file: whether it takes it, and the first thing that it warns of.
struct Verdict
{
    bool accepted;
    QString words;
};

Verdict verdictOf(const QString &path)
{
    warnings.clear();
    const auto before = qInstallMessageHandler(collectWarning);
    bool accepted = false;
    if (path.startsWith(QLatin1String("menu"))) {
        QList<FactoryMenuLevel1Item> items;
        accepted = FactoryMenuConfigParser().loadFromFile(path, items);
    } else {
        QList<QPair<int, QString>> keys;
        accepted = FactoryKeyCheckListConfigParser().loadFromFile(path, keys);
    }
    qInstallMessageHandler(before);
    return {accepted, warnings.value(0).section(QStringLiteral("] "), 1)};
}

/// The keys in the component's table of titles, in lower case.
QSet<QString> titlesOfComponent()
{
    const QDir sources(QStringLiteral(LCD_SOURCE_DIR "/framework/src/libs/lcdfactorymodeimpl"));
    static const QRegularExpression table(QStringLiteral("TitleRow titles\\[\\] = \\{(.*?)\\n\\};"),
                                          QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression row(QStringLiteral("\\n *\\{\"(\\w+)\", "));
    QSet<QString> titles;
    const auto files = sources.entryList({QStringLiteral("*.cpp")});
    for (const auto &name : files) {
        QFile file(sources.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        auto rows = row.globalMatch(table.match(QString::fromUtf8(file.readAll())).captured(1));
        while (rows.hasNext())
            titles.insert(rows.next().captured(1).toLower());
    }
    return titles;
}

}

void CheckWordsTest::initTestCase()
{
    QVERIFY(QDir::setCurrent(QStringLiteral(LCD_SOURCE_DIR "/tests/host/data/check")));
}

void CheckWordsTest::sameWords_data()
{
    QTest::addColumn<QString>("path");
    const QStringList bounded{QStringLiteral("menu15.xml"), QStringLiteral("menu16.xml")};
    auto files = QDir().entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    files += QStringList{QStringLiteral("menu-missing.xml"), QStringLiteral("keys-missing.xml")};
    for (const auto &file : qAsConst(files)) {
        if (!bounded.contains(file))
            QTest::newRow(qPrintable(file)) << file;
    }
}

void CheckWordsTest::sameWords()
{
    QFETCH(QString, path);
    const auto verdict = verdictOf(path);
    const auto diagnostics = path.startsWith(QLatin1String("menu")) ? checkMenu(path) : checkKeyList(path);
    QCOMPARE(countOf(diagnostics, Diagnostic::Severity::Error), verdict.accepted ? 0 : 1);
    QStringList texts;
    for (const auto &diagnostic : diagnostics)
        texts.append(diagnostic.text);
    if (!verdict.words.isEmpty())
        QVERIFY2(texts.contains(verdict.words),
                 qPrintable(verdict.words + QLatin1Char('\n') + texts.join(QLatin1Char('\n'))));
}

void CheckWordsTest::sameTitles()
{
    const auto titles = titlesOfComponent();
    QVERIFY(!titles.isEmpty());
    QCOMPARE(QStringList((knownTitles() - titles).values()), QStringList());
    QCOMPARE(QStringList((titles - knownTitles()).values()), QStringList());
}

QTEST_GUILESS_MAIN(CheckWordsTest)
#include "tst_checkwords.moc"
