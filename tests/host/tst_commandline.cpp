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
        row("plya", "There is no command \"plya\"; see panelhost --help. Did you mean \"play\"?");
        row("info --shar /", "Unknown option 'shar'. Did you mean --share?");
        row("play --reprot out a.yaml", "Unknown option 'reprot'. Did you mean --report?");
        row("play --poem a.yaml", "Unknown option 'poem'.");
        row("play", "Usage: panelhost play FILE...");
        row("generate poem", "Usage: panelhost generate man [COMMAND], generate bash or generate zsh");
        row("generate man dance", "There is no command \"dance\"; see panelhost --help.");
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

    // What is printed has each command and each of its options: it is generated from the same tables as --help.
    void manualPagesNameEveryOption()
    {
        const QString page = panelhost(words("generate man")).out;
        QVERIFY(page.startsWith(QStringLiteral(".TH \"PANELHOST\" 1")));
        for (const char *name :
             {"panelhost\\-play (1)", ".B \\-\\-component PATH", ".B \\-\\-kiosk", "Default: 800x480."})
            QVERIFY2(page.contains(QLatin1String(name)), name);
        const ProcessResult play = panelhost(words("generate man play"));
        QCOMPARE(play.status, 0);
        QVERIFY(play.out.contains(QStringLiteral(".B \\-\\-report DIR\nWrite a report")));
        QVERIFY(!play.out.contains(QStringLiteral("kiosk")));
    }

    // The manual has each command and each option, and each command has a page that is installed.
    void documentsNameEveryCommandAndOption()
    {
        QString manual;
        const QDir documents(QStringLiteral(LCD_SOURCE_DIR "/docs"));
        for (const QString &name : documents.entryList({QStringLiteral("*.md")})) {
            QFile file(documents.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            manual += QString::fromUtf8(file.readAll());
        }
        const QString completion = panelhost(words("generate bash")).out;
        static const QRegularExpression options(QStringLiteral("--[a-z-]+(?=[ '])"));
        int count = 0;
        for (auto match = options.globalMatch(completion); match.hasNext(); ++count) {
            const QString option = match.next().captured();
            QVERIFY2(manual.contains(QStringLiteral("`") + option) || manual.contains(QLatin1Char(' ') + option),
                     qPrintable(option));
        }
        QVERIFY(count > 100);
        static const QRegularExpression names(QStringLiteral("compgen -W '([a-z ]+)' -- \"\\$current\"\\)\n    else"));
        const QStringList commands = names.match(completion).captured(1).split(QLatin1Char(' '));
        QVERIFY(commands.size() > 10);
        for (const QString &command : commands) {
            QVERIFY2(manual.contains(QStringLiteral("\n    panelhost ") + command), qPrintable(command));
            const QString page = QStringLiteral(LCD_BUILD_DIR "/host/generated/man/panelhost-%1.1.gz").arg(command);
            QVERIFY2(QFile::exists(page), qPrintable(page));
        }
    }

    void bashCompletes_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("completions");
        QTest::newRow("command") << QStringLiteral("panelhost re") << QStringLiteral("record restore");
        QTest::newRow("option") << QStringLiteral("panelhost play --rea") << QStringLiteral("--realtime");
        QTest::newRow("option of the window") << QStringLiteral("panelhost --kio") << QStringLiteral("--kiosk");
        QTest::newRow("value") << QStringLiteral("panelhost info --tbar f") << QStringLiteral("fader");
        QTest::newRow("file") << QStringLiteral("panelhost play /etc/hostn") << QStringLiteral("/etc/hostname");
        QTest::newRow("other command's option") << QStringLiteral("panelhost info --rea") << QString();
    }

    void bashCompletes()
    {
        QFETCH(QString, line);
        const QString script = QStringLiteral("eval \"$1\"; read -ra COMP_WORDS <<<\"$2\"\n"
                                              "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _panelhost\n"
                                              "echo \"${COMPREPLY[@]}\"");
        QProcess bash;
        bash.start(QStringLiteral("bash"),
                   {QStringLiteral("-c"), script, QStringLiteral("bash"), panelhost(words("generate bash")).out, line});
        QVERIFY(bash.waitForFinished());
        QFETCH(QString, completions);
        QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()).simplified(), completions);
    }

    void zshReadsTheCompletion()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("zsh")).isEmpty())
            QSKIP("zsh is not installed");
        const QString script = panelhost(words("generate zsh")).out;
        QVERIFY(script.startsWith(QStringLiteral("#compdef panelhost\n")));
        QVERIFY(script.contains(QStringLiteral("'--report[Write a report with screenshots to DIR.]:DIR:_files -/'")));
        QProcess zsh;
        zsh.start(QStringLiteral("zsh"), {QStringLiteral("-n"), QStringLiteral("-c"), script});
        QVERIFY(zsh.waitForFinished());
        QCOMPARE(QString::fromUtf8(zsh.readAllStandardError()), QString());
        QCOMPARE(zsh.exitCode(), 0);
    }

    void helpNamesEveryCommandWithItsOptions()
    {
        const ProcessResult result = panelhost(words("--help"));
        QCOMPARE(result.status, 0);
        for (const char *text :
             {"play FILE...", "[--report DIR] [--journal FILE] [--screenshots DIR] [--realtime]", "record FILE",
              "view FILE [OTHER] ", "[--speed SPEED]", "check [DIR]", "[--strict]", "info", "--component", "--share",
              "--share-unchecked", "--language", "--version", "--tbar", "--size"})
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
