#include "lcd/translate/lcdfwtranslatemanager.h"
#include "typicalpages.h"
#include "veltor/trans/translate.h"

#include <QtTest/QtTest>

#include <QtXml/QDomDocument>

#include <atomic>
#include <thread>

namespace {

const QString Context = QStringLiteral("LCD::HomeWidgets");
const QString Section = QStringLiteral("Global");

/// Every key of the component, of the repair pages and of the host's pages, in the order in which the catalogs hold
/// them.
QStringList allKeys()
{
    return QStringLiteral(
               "FCAging|FCScreenLight|FCScreenBadPixel|FCBtnLight|FCNet|FCUSB|FCAgeNetNoPass|"
               "FCAgeUSBNoPass|FCAgeMode|FCAgeModeTestPreparation|FCAgeModeStartTips|FCAgeModeStartTest|"
               "FCAgeModeStopTest|FCAgeModeRecount|MachineMode|TestStep|FCTestComplete|FCTestPass|FCReTest|"
               "FCPass|FCNoPass|FCPleaseJudgePass|FCNextStep|FCScreenBrightnessStep|FCBtnBrightnessStep|"
               "FCObserveScreenShowStep1|FCObserveScreenShowStep2|ButtonFunction|FCClickGreenFlashingBtn|"
               "Push T-Bar to Top|Push T-Bar to Bottom|FCNetConnectPort1Port2|USBA|FCUSB30TestStep|"
               "TypecCommuication|FCTypecCommStep1|FCTypecCommStep2|TypecPower|FCTypecPowerStep1|"
               "FCTypecPowerStep2|NET1POE|FCNetPort1PowerStep1|FCNetPort1PowerStep2|"
               "RepairServiceMissing|RepairSkipKey|RepairKeyUnderTest|RepairKeysFailed|"
               "RepairNetStep|RepairUSBStep|RepairNetPort|RepairUSBPort|RepairLinked|RepairNotLinked|"
               "RepairMorePorts|RepairNoPort|RepairTBar|RepairTBarStart|RepairTBarMeasuring|RepairTBarNotTop|"
               "RepairTBarNotBottom|RepairTBarNoAnswer"
               "|RepairKnob|RepairKnobStep|RepairKnobLeft|RepairKnobRight|RepairKnobPress|"
               "RepairJoystick|RepairJoystickStep|RepairJoystickUp|RepairJoystickDown|"
               "RepairJoystickLeft|RepairJoystickRight|RepairJoystickPress|RepairTouch|"
               "RepairTouchStep|RepairTouchKeys|RepairTouchCells|RepairExport|RepairExportAgain|"
               "RepairCancel|RepairExportTitle|RepairExportStep|RepairExportWriting|"
               "RepairExportDone|RepairExportFailed|RepairExportNoStick|RepairExportFull|"
               "RepairExportReadOnly|RepairExportBroken|RepairReset|RepairResetAgain|RepairResetTitle|RepairResetStep|"
               "RepairResetConfirm|RepairResetRunning|RepairResetDone|RepairResetFailed|"
               "RepairResetError|HostReady|HostPressEnter|HostFactoryMode|HostBack|HostContainer")
        .split(QLatin1Char('|'));
}

LCDFWTranslateManager &languages()
{
    return *LCDFWTranslateManager::instance();
}

QString translated(const QString &context, const QString &section, const QString &key)
{
    return veltor::trans::translate(languages().translator(), context, section, key);
}

struct Entry
{
    QString key;
    QString section;
    QString text;
    bool finished;
};

QVector<Entry> sourceEntries(const QString &language)
{
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/sdk/lcdtranslator/catalogs/%1.ts").arg(language));
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        return {};
    const QDomElement context = document.documentElement().firstChildElement(QStringLiteral("context"));
    if (context.firstChildElement(QStringLiteral("name")).text() != Context)
        return {};
    QVector<Entry> entries;
    const QString tag = QStringLiteral("message");
    for (QDomElement e = context.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag)) {
        const QDomElement translation = e.firstChildElement(QStringLiteral("translation"));
        entries << Entry{e.firstChildElement(QStringLiteral("source")).text(),
                         e.firstChildElement(QStringLiteral("comment")).text(), translation.text(),
                         !translation.hasAttribute(QStringLiteral("type"))};
    }
    return entries;
}

}

class TestCatalogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(languages().setLanguage(QStringLiteral("en"))); }

    void offersTheShippedLanguages();
    void startsInEnglish();
    void refusesAnUnknownLanguage();
    void everyCatalogHoldsExactlyTheKeys_data() { eachLanguage(); }
    void everyCatalogHoldsExactlyTheKeys();
    void everyKeyHasItsTextAtRunTime_data() { eachLanguage(); }
    void everyKeyHasItsTextAtRunTime();
    void joinedTextsCarryTheirOwnSpacing_data() { eachLanguage(); }
    void joinedTextsCarryTheirOwnSpacing();
    void titlesAreShort_data() { eachLanguage(); }
    void titlesAreShort();
    void aMissingKeyComesBackAsItself();
    void noTranslatorGivesTheKey();
    void aChangeOfLanguageShowsAtTheNextLookUp();
    void translatesWhileTheLanguageChanges();

private:
    void eachLanguage();
};

void TestCatalogs::eachLanguage()
{
    QTest::addColumn<QString>("language");
    for (const QString &code : languages().languages())
        QTest::newRow(qPrintable(code)) << code;
}

void TestCatalogs::offersTheShippedLanguages()
{
    QCOMPARE(languages().languages(), QStringLiteral("de|en|ja|zh_CN").split(QLatin1Char('|')));
}

void TestCatalogs::startsInEnglish()
{
    QCOMPARE(languages().language(), QStringLiteral("en"));
    QCOMPARE(word("FCPass"), QStringLiteral("Pass"));
}

void TestCatalogs::refusesAnUnknownLanguage()
{
    for (const char *code : {"", "fr", "../en", "en.qm"})
        QVERIFY2(!languages().setLanguage(QString::fromLatin1(code)), code);
    QCOMPARE(languages().language(), QStringLiteral("en"));
    QCOMPARE(word("FCPass"), QStringLiteral("Pass"));
}

void TestCatalogs::everyCatalogHoldsExactlyTheKeys()
{
    QFETCH(QString, language);
    QStringList keys;
    for (const Entry &entry : sourceEntries(language)) {
        keys << entry.key;
        QVERIFY2(entry.finished, qPrintable(entry.key));
        QVERIFY2(!entry.text.trimmed().isEmpty(), qPrintable(entry.key));
        QCOMPARE(entry.section, Section);
    }
    QCOMPARE(keys, allKeys());
}

void TestCatalogs::everyKeyHasItsTextAtRunTime()
{
    QFETCH(QString, language);
    QVERIFY(languages().setLanguage(language));
    const QVector<Entry> entries = sourceEntries(language);
    QCOMPARE(entries.size(), allKeys().size());
    for (const Entry &entry : entries)
        QCOMPARE(translated(Context, Section, entry.key), entry.text);
}

void TestCatalogs::joinedTextsCarryTheirOwnSpacing()
{
    QFETCH(QString, language);
    QVERIFY(languages().setLanguage(language));
    const QString prefix = word("FCAging");
    QVERIFY(prefix.endsWith(QLatin1String(": ")) || prefix.endsWith(QChar(0xff1a)));
    QVERIFY(word("Push T-Bar to Top").startsWith(QLatin1Char(' ')));
    QVERIFY(word("Push T-Bar to Bottom").startsWith(QLatin1Char(' ')));
    for (const char *failure : {"FCAgeNetNoPass", "FCAgeUSBNoPass"})
        QVERIFY(!word(failure).endsWith(QChar(0x3001)));
}

void TestCatalogs::titlesAreShort()
{
    QFETCH(QString, language);
    QVERIFY(languages().setLanguage(language));
    for (const char *title : {"FCAgeMode", "MachineMode", "FCScreenLight", "FCScreenBadPixel", "FCBtnLight",
                              "ButtonFunction", "FCNet", "USBA", "TypecCommuication", "TypecPower", "NET1POE"})
        QVERIFY2(word(title).size() <= 20, title);
}

void TestCatalogs::aMissingKeyComesBackAsItself()
{
    QCOMPARE(translated(Context, Section, QStringLiteral("NoSuchKey")), QStringLiteral("NoSuchKey"));
    QCOMPARE(translated(QStringLiteral("Other"), Section, QStringLiteral("FCPass")), QStringLiteral("FCPass"));
    QCOMPARE(translated(Context, Section, QString()), QString());
}

void TestCatalogs::noTranslatorGivesTheKey()
{
    QCOMPARE(veltor::trans::translate(nullptr, Context, Section, QStringLiteral("FCPass")), QStringLiteral("FCPass"));
}

void TestCatalogs::aChangeOfLanguageShowsAtTheNextLookUp()
{
    const veltor::trans::Translator *translator = languages().translator();
    QCOMPARE(word("FCNoPass"), QStringLiteral("Fail"));
    QVERIFY(languages().setLanguage(QStringLiteral("zh_CN")));
    QCOMPARE(languages().language(), QStringLiteral("zh_CN"));
    QCOMPARE(word("FCNoPass"), QStringLiteral("不通过"));
    QCOMPARE(languages().translator(), translator);
}

void TestCatalogs::translatesWhileTheLanguageChanges()
{
    std::atomic<bool> done{false};
    std::atomic<int> lookUps{0};
    std::atomic<int> strangers{0};
    auto lookUp = [&] {
        while (!done) {
            const QString text = word("FCPass");
            if (text != QLatin1String("Pass") && text != QStringLiteral("通过"))
                ++strangers;
            ++lookUps;
        }
    };
    std::thread first(lookUp);
    std::thread second(lookUp);
    while (lookUps < 2000)
        languages().setLanguage(lookUps % 2 ? QStringLiteral("en") : QStringLiteral("zh_CN"));
    done = true;
    first.join();
    second.join();
    QCOMPARE(strangers.load(), 0);
}

QTEST_GUILESS_MAIN(TestCatalogs)
#include "tst_catalogs.moc"
