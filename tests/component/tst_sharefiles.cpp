#include "emulation.h"
#include "factorykeychecklistconfigparser.h"
#include "factorymenuconfigparser.h"

#include <QtCore/QProcess>
#include <QtTest/QtTest>

using namespace LCD::FactoryModeImpl;

namespace {

const QString Share = QStringLiteral(LCD_BUILD_DIR "/share");

const QString FullMenu = Share + QStringLiteral("/examples/full");

int validate(const QString &schema, const QString &file)
{
    return QProcess::execute(
        QStringLiteral("xmllint"),
        {QStringLiteral("--noout"), QStringLiteral("--schema"), Share + QLatin1Char('/') + schema, file});
}

}

// The shipped configuration files, in the place where a program in the build's bin directory finds them.
class tst_ShareFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void schemas_data()
    {
        QTest::addColumn<QByteArray>("wrong");
        QTest::newRow("factorymenu") << QByteArray(
            "<LCD version='1.0'><MenuBar><MenuItem Key='a..b'/></MenuBar></LCD>");
        QTest::newRow("factorykeychecklist") << QByteArray("<LCD><LcdKeys><LcdKey Value='0x10'/></LcdKeys></LCD>");
    }
    void schemas()
    {
        SKIP_IF_EMULATED();
        QFETCH(QByteArray, wrong);
        if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty())
            QSKIP("xmllint is not installed");
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(validate(name + QStringLiteral(".xsd"), Share + QStringLiteral("/%1.xml").arg(name)), 0);
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(wrong);
        file.close();
        QVERIFY(validate(name + QStringLiteral(".xsd"), file.fileName()) > 0);
    }
    void theExampleFitsTheSchema()
    {
        SKIP_IF_EMULATED();
        if (QStandardPaths::findExecutable(QStringLiteral("xmllint")).isEmpty())
            QSKIP("xmllint is not installed");
        QCOMPARE(validate(QStringLiteral("factorymenu.xsd"), FullMenu + QStringLiteral("/factorymenu.xml")), 0);
    }
    void theExampleReachesEveryTitle()
    {
        QList<FactoryMenuLevel1Item> items;
        QVERIFY(FactoryMenuConfigParser().load(FullMenu, items));
        QStringList level1;
        QStringList all;
        for (const FactoryMenuLevel1Item &item : items) {
            level1 << item.containerKey;
            all << item.titleKey.toLower();
            for (const FactoryMenuLevel2Item &child : item.children)
                all << child.titleKey.toLower();
        }
        QCOMPARE(level1,
                 (QStringList{QStringLiteral("container.agingmode"), QStringLiteral("container.completemachine"),
                              QStringLiteral("container.logexport"), QStringLiteral("container.resetfactory"),
                              QStringLiteral("container.repairmode")}));
        QCOMPARE(items.last().children.first().containerKey.section(QLatin1Char('.'), 0, 2),
                 QStringLiteral("container.factorytest.repairmode"));
        const QString known = QStringLiteral(
            "agingmode completemachine factorymode logexport resetfactory screenlight screenbadpixel screenbadpixels "
            "buttonlight buttonfunction knob joystick tbar genlock typec net input output mvr ltc mic expandsource "
            "touchscreen usb typecnet dc typecpowersupply poe madi");
        for (const QString &title : known.split(QLatin1Char(' ')))
            QVERIFY2(all.contains(title), qPrintable(title));
    }
    void theMenuHasTheEntriesOfThisDevice()
    {
        QList<FactoryMenuLevel1Item> items;
        QVERIFY(FactoryMenuConfigParser().load(Share, items));
        QStringList level1;
        for (const FactoryMenuLevel1Item &item : items)
            level1 << item.titleKey;
        QStringList level2;
        for (const FactoryMenuLevel2Item &child : items.last().children)
            level2 << child.titleKey;
        QCOMPARE(level1.join(QLatin1Char(' ')),
                 QStringLiteral("AgingMode completemachine LogExport ResetFactory RepairMode"));
        QCOMPARE(level2.join(QLatin1Char(' ')),
                 QStringLiteral("ScreenLight ScreenBadPixel ButtonLight ButtonFunction "
                                "Knob Joystick Tbar Net TouchScreen USB"));
    }
    void keysOfAPlausiblePanel()
    {
        QList<QPair<int, QString>> keys;
        QVERIFY(FactoryKeyCheckListConfigParser().load(Share, keys));
        QVERIFY(keys.count() >= 38 && keys.count() <= 48);
        QSet<int> codes;
        QStringList names;
        for (const auto &[code, name] : keys) {
            codes << code;
            names << name;
        }
        QCOMPARE(codes.count(), keys.count());
        QCOMPARE(names.count(QStringLiteral("CUT")), 1);
        QVERIFY(codes.contains(27));
        QVERIFY(keys.last().first != 27);
    }
};

QTEST_GUILESS_MAIN(tst_ShareFiles)
#include "tst_sharefiles.moc"
