#include <QtCore/QProcess>
#include <QtTest/QtTest>

namespace {

struct ProcessResult
{
    int status = -1;
    QString out;
    QString err;
};

ProcessResult panelhost(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(LCD_BUILD_DIR "/bin/panelhost"), arguments);
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

}

/// The program from outside: its options, its sentences and its exit status.
class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wrongUsage_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("sentence");
        const auto row = [](const char *arguments, const char *sentence) {
            QTest::newRow(arguments) << words(arguments) << QString::fromUtf8(sentence);
        };
        row("dance", "There is no command \"dance\"; see panelhost --help.");
        row("play", "Usage: panelhost play FILE...");
        row("info me", "Usage: panelhost info");
        row("info --tbar round", "--tbar is \"round\", expected slider or fader.");
        row("info --size big", "--size is \"big\", expected width and height in pixels, such as 800x480.");
        row("info --size 0x480", "--size is \"0x480\", expected width and height in pixels, such as 800x480.");
        row("info --component /nowhere/lib.so", "/nowhere/lib.so: there is no such file.");
        row("info --pages /nowhere/lib.so", "/nowhere/lib.so: there is no such file.");
        row("info --share /nowhere", "--share is \"/nowhere\", expected the directory with the two XML files.");
        row("info --share-unchecked /nowhere",
            "--share-unchecked is \"/nowhere\", expected the directory with the two XML files.");
        row("info --share / --share-unchecked /", "Give --share or --share-unchecked, not both.");
        row("info --share= --tbar fader", "--share has no value.");
        row("play --report= session.yaml", "--report has no value.");
        row("--journal=", "--journal has no value.");
        row("--unit-pattern A(\\d",
            "--unit-pattern is \"A(\\d\", expected a regular expression: missing closing parenthesis at character 5.");
        row("--unit-pattern A\\d --unit A12", "--unit: \"A12\" isn't a serial number that matches A\\d.");
        row("info --wings", "Unknown option 'wings'.");
    }
    void wrongUsage()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, sentence);
        const ProcessResult result = panelhost(arguments);
        QCOMPARE(result.err, QStringLiteral("panelhost: %1\n").arg(sentence));
        QCOMPARE(result.status, 2);
        QCOMPARE(result.out, QString());
    }

    void anUnknownLanguage()
    {
        const ProcessResult result = panelhost(words("info --language xx"));
        QCOMPARE(result.status, 2);
        QVERIFY2(result.err.startsWith(QStringLiteral("panelhost: There is no catalog for the language \"xx\"")),
                 qPrintable(result.err));
    }

    void helpNamesEveryCommandWithItsOptions()
    {
        const ProcessResult result = panelhost(words("--help"));
        QCOMPARE(result.status, 0);
        for (const char *text : {"play FILE...", "[--report DIR] [--journal FILE] [--screenshots DIR] [--realtime]",
                                 "record FILE", "[--speed SPEED]", "check [DIR]", "[--strict]", "info", "--component",
                                 "--share", "--share-unchecked", "--language", "--version", "--tbar", "--size"})
            QVERIFY2(result.out.contains(QString::fromUtf8(text)), text);
    }

    void version()
    {
        const ProcessResult result = panelhost(words("--version"));
        QCOMPARE(result.status, 0);
        QCOMPARE(result.out, QStringLiteral("panelhost 1.0.0\n"));
    }

    void infoTellsHowFarLoadingGot_data()
    {
        QTest::addColumn<QString>("sentence");
        QTest::addColumn<QStringList>("states");
        const auto row = [](const char *name, const char *sentence, const char *states) {
            QTest::newRow(name) << QString::fromUtf8(sentence) << words(states);
        };
        row("constructor_throws", "opening it crashed the process: Aborted.", "located");
        row("constructor_exits", "opening it ended the process with status 0.", "located");
        row("info_throws", "pluginfo() threw: out of paper.", "located opened");
        row("info_is_data", "the symbol \"pluginfo\" is data, expected a function.", "located opened");
        row("info_exits", "pluginfo() ended the process with status 0.", "located opened");
        row("init_throws", "pluginit() threw: out of glue.", "located opened checked");
        row("init_crashes", "pluginit() crashed the process: Segmentation fault.", "located opened checked");
        row("creator_throws", "the creator of \"lcd.factory.mode\" threw: out of paint.",
            "located opened checked initialised");
    }
    void infoTellsHowFarLoadingGot()
    {
        QFETCH(QString, sentence);
        QFETCH(QStringList, states);
        const QString path =
            QStringLiteral(LCD_BUILD_DIR "/tests/fixtures/%1.so").arg(QString::fromLatin1(QTest::currentDataTag()));
        const ProcessResult result = panelhost({QStringLiteral("info"), QStringLiteral("--component"), path});
        QCOMPARE(result.err, QStringLiteral("panelhost: %1: %2\n").arg(path, sentence));
        QCOMPARE(result.status, 2);
        QStringList lines = result.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.takeFirst(), QStringLiteral("loading"));
        QStringList names;
        for (const QString &line : qAsConst(lines))
            names << line.simplified().section(QLatin1Char(' '), 0, 0);
        QCOMPARE(names, states);
    }

    void infoListsBothLibraries()
    {
        const ProcessResult both = panelhost(words("info"));
        QCOMPARE(both.status, 0);
        QVERIFY2(both.out.contains(QStringLiteral("\"lcd.factory.mode\"")), qPrintable(both.out));
        QVERIFY2(both.out.contains(QStringLiteral("\"lcd.repair.mode\"")), qPrintable(both.out));
        QVERIFY2(both.out.contains(QStringLiteral("LCD::RepairPages::RepairMode")), qPrintable(both.out));
        const ProcessResult one = panelhost(words("info --pages none"));
        QCOMPARE(one.status, 0);
        QVERIFY2(!one.out.contains(QStringLiteral("lcd.repair.mode")), qPrintable(one.out));
    }

    // The component's own library has no pages, and a library that crashes is met in a process of its own.
    void wrongPagesAreRefused_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("component") << QStringLiteral(LCD_BUILD_DIR "/lib/liblcdfactorymodeimpl.so")
                                   << QStringLiteral("has no symbol \"repairpages_mirel_componentInfoTable\".");
        QTest::newRow("crash") << QStringLiteral(LCD_BUILD_DIR "/tests/fixtures/constructor_exits.so")
                               << QStringLiteral("opening it ended the process with status 0.");
    }
    void wrongPagesAreRefused()
    {
        QFETCH(QString, path);
        QFETCH(QString, sentence);
        const ProcessResult result = panelhost({QStringLiteral("info"), QStringLiteral("--pages"), path});
        QCOMPARE(result.err, QStringLiteral("panelhost: %1: %2\n").arg(path, sentence));
        QCOMPARE(result.status, 2);
    }

    void playRefusesALibraryThatEndsTheProcess()
    {
        const QString path = QStringLiteral(LCD_BUILD_DIR "/tests/fixtures/info_exits.so");
        const ProcessResult result =
            panelhost({QStringLiteral("play"), QStringLiteral(LCD_SOURCE_DIR "/scenarios/tour.yaml"),
                       QStringLiteral("--component"), path});
        QCOMPARE(result.status, 2);
        QVERIFY2(result.out.contains(path + QStringLiteral(": pluginfo() ended the process with status 0.")),
                 qPrintable(result.out));
    }

    void infoTellsOfEachStep()
    {
        const ProcessResult result =
            panelhost(words("info --tbar fader --size 640x480 --share " LCD_SOURCE_DIR "/share"));
        QCOMPARE(result.err, QString());
        QCOMPARE(result.status, 0);
        for (const char *text : {"located", "opened", "checked", "initialised", "created", "interfaceVersion  0.1",
                                 "pluginName        lcdfactorymodeimpl", "componentName     lcd.factory.mode",
                                 "componentMeta     {\"end\":0 }\\r\\n", "lcdMemoryCacheNodeUSB",
                                 "lcdFactoryModeWidget", "menu on screen"})
            QVERIFY2(result.out.contains(QString::fromUtf8(text)), text);
    }
};

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
