#include "device/faults.h"
#include "diagnostics/diagnosticcollector.h"
#include "diagnostics/excerpt.h"
#include "expectations/journalproperties.h"
#include "expectations/properties.h"
#include "scenario/scenarioloader.h"
#include "scenario/stepreader.h"
#include "yaml/limits.h"
#include "yaml/yamldocument.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryFile>
#include <QtTest/QtTest>

using namespace panelhost;

/// Scenario files, bad ones by number with everything that is said about them, and what good ones become.
class ScenarioLoaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void wrong_data();
    void wrong();
    void aQuotationEndsWithAWholeCharacter();
    void missingFile();
    void stepsAreCountedOverAllFiles();
    void deviceDescription();
    void stepsInOrder();
    void stepAsText_data();
    void stepAsText();
    void usedFileKeepsItsPlaces();
    void valuesAreCountedWithAliases();
    void limitsStandInTheManual();
    void schemaKnowsTheSameWords();
    void shipped_data();
    void shipped();

private:
    std::optional<Scenario> load(const QString &path, QStringList *errors = nullptr);
    std::optional<Scenario> loadText(const QByteArray &text);

    Session::Options m_base;
};

namespace {

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

QStringList sorted(const QVariantList &list)
{
    return sorted(QVariant(list).toStringList());
}

}

void ScenarioLoaderTest::initTestCase()
{
    m_base.share = QStringLiteral(LCD_SOURCE_DIR "/share");
    QVERIFY(QDir::setCurrent(QStringLiteral(LCD_SOURCE_DIR "/tests/host/data/scenarios")));
}

std::optional<Scenario> ScenarioLoaderTest::load(const QString &path, QStringList *errors)
{
    QStringList found;
    const auto scenario = loadScenario(path, m_base, &found);
    if (errors)
        *errors = found;
    else if (!found.isEmpty())
        qWarning("%s", qPrintable(found.join(QLatin1Char('\n'))));
    return scenario;
}

std::optional<Scenario> ScenarioLoaderTest::loadText(const QByteArray &text)
{
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush())
        return std::nullopt;
    return load(file.fileName());
}

void ScenarioLoaderTest::wrong_data()
{
    QTest::addColumn<QString>("file");
    const auto files = QDir().entryList({QStringLiteral("wrong*.yaml")}, QDir::Files, QDir::Name);
    QVERIFY(files.size() >= 25);
    for (const auto &file : files)
        QTest::newRow(qPrintable(file)) << file;
}

void ScenarioLoaderTest::wrong()
{
    QFETCH(QString, file);
    QFile expected(QString(file).replace(QStringLiteral(".yaml"), QStringLiteral(".expected")));
    QVERIFY2(expected.open(QIODevice::ReadOnly), qPrintable(expected.fileName()));
    const auto lines = QString::fromUtf8(expected.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QStringList errors;
    QVERIFY(!load(file, &errors));
    QCOMPARE(errors, lines);
}

void ScenarioLoaderTest::aQuotationEndsWithAWholeCharacter()
{
    const QString smile = QString::fromUcs4(U"\U0001F600");
    const QString text = QStringLiteral("ab") + smile + QStringLiteral("c");
    QCOMPARE(beginningOf(text, 0), QString());
    QCOMPARE(beginningOf(text, 2), QStringLiteral("ab"));
    QCOMPARE(beginningOf(text, 3), QStringLiteral("ab"));
    QCOMPARE(beginningOf(text, 4), QStringLiteral("ab") + smile);
    QCOMPARE(beginningOf(text, 5), text);
    QCOMPARE(beginningOf(text, 60), text);
}

void ScenarioLoaderTest::missingFile()
{
    QStringList errors;
    QVERIFY(!load(QStringLiteral("nowhere.yaml"), &errors));
    QCOMPARE(errors, QStringList{QStringLiteral("nowhere.yaml:1:1: error: No such file or directory")});
}

void ScenarioLoaderTest::stepsAreCountedOverAllFiles()
{
    const QTemporaryDir directory;
    const auto write = [&directory](const char *name, const QByteArray &text) {
        QFile file(directory.filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? file.fileName() : QString();
    };
    // A list of 1000 steps that stands there forty times.
    const auto part =
        write("part.yaml",
              "steps:\n- repeat: &a\n    times: 1\n    steps:\n" + QByteArray("    - note: x\n").repeated(1000)
                  + QByteArray("- repeat: *a\n").repeated(39));
    const auto path = write("all.yaml", "steps:\n" + QByteArray("- use: part.yaml\n").repeated(5));
    QStringList errors;
    QVERIFY(!load(path, &errors));
    // In the third part: 100000 = 2 * (1 + 40 * 1001) + 1 + 19 * 1001 + 1 + 897
    QCOMPARE(errors,
             QStringList{part
                         + QStringLiteral(":1023:11: error: more than 100000 steps in all files; the alias "
                                          "refers to line 902")});
}

void ScenarioLoaderTest::deviceDescription()
{
    const auto scenario = loadText("title: A device\n"
                                   "unit: 4711\n"
                                   "device:\n"
                                   "  tbar: fader\n"
                                   "  tbar-tolerance: 0.1\n"
                                   "  lcd: 1280x800\n"
                                   "  language: zh_CN\n"
                                   "  net-ports: 2\n"
                                   "  usb-ports: 8\n"
                                   "  changed-on-subscribe: off\n"
                                   "  factory-mode: false\n"
                                   "  usb-stick: sticks/one\n"
                                   "  plugged: [net2, usb8]\n"
                                   "  blocked: usb1\n"
                                   "  faults:\n"
                                   "    - duplicate-reports\n"
                                   "    - {name: key-dead, key: CUT}\n"
                                   "steps: []\n");
    QVERIFY(scenario);
    QCOMPARE(scenario->title, QStringLiteral("A device"));
    QCOMPARE(scenario->unit, QStringLiteral("4711"));
    const auto &device = scenario->device;
    QCOMPARE(device.tbarType, TBarType::Fader);
    QCOMPARE(device.tbarTolerance, 0.1);
    QCOMPARE(device.lcdSize, QSize(1280, 800));
    QCOMPARE(device.language, QStringLiteral("zh_CN"));
    QCOMPARE(device.netPorts, 2);
    QCOMPARE(device.usbPorts, 8);
    QVERIFY(!device.changedOnSubscribe);
    QVERIFY(!device.startsInFactoryMode);
    QCOMPARE(device.usbStick, QFileInfo(scenario->file).absoluteDir().absoluteFilePath(QStringLiteral("sticks/one")));
    QCOMPARE(device.faults.size(), 2);
    QCOMPARE(device.faults.at(1).name, QStringLiteral("key-dead"));
    QCOMPARE(device.faults.at(1).arguments, (QVariantMap{{QStringLiteral("key"), 33}}));
    const QVector<OperatorAction> preparation{
        {OperatorAction::Kind::Plug, {{QStringLiteral("port"), QStringLiteral("net2")}}},
        {OperatorAction::Kind::Plug, {{QStringLiteral("port"), QStringLiteral("usb8")}}},
        {OperatorAction::Kind::Block, {{QStringLiteral("port"), QStringLiteral("usb1")}}}};
    QVERIFY(scenario->preparation == preparation);
}

void ScenarioLoaderTest::stepsInOrder()
{
    const auto scenario =
        loadText("steps:\n"
                 "  - press: [CUT, 1]\n"
                 "  - soft: right\n"
                 "    times: 3\n"
                 "  - wait: 1.5s\n"
                 "  - expect: {title: {not: {contains: [a, b]}}}\n"
                 "    within: 2min\n"
                 "  - repeat: {times: 4, steps: [{tbar: top}, {repeat: {times: 2, steps: [{tbar: 0}]}}]}\n");
    QVERIFY(scenario);
    const auto &steps = scenario->steps;
    QCOMPARE(steps.size(), 5);
    const QVector<OperatorAction> presses{{OperatorAction::Kind::Press, {{QStringLiteral("key"), 33}}},
                                          {OperatorAction::Kind::Press, {{QStringLiteral("key"), 1}}}};
    QVERIFY(steps.at(0).actions == presses);
    QCOMPARE(steps.at(1).times, 3);
    QCOMPARE(steps.at(1).where.line, 3);
    QCOMPARE(steps.at(1).where.column, 5);
    QCOMPARE(steps.at(2).duration, 1500);
    QCOMPARE(*steps.at(3).within, 120000);
    const auto &conditions = steps.at(3).expectations.first().conditions;
    QCOMPARE(conditions.size(), 2);
    QVERIFY(conditions.first().isNegated);
    QVERIFY(!conditions.first().holds(QStringLiteral("cab")));
    QVERIFY(conditions.first().holds(QStringLiteral("c")));
    QCOMPARE(playedSteps(steps), 4 + 4 * (1 + 2));
}

void ScenarioLoaderTest::stepAsText_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *step, const char *text) {
        QTest::newRow(name) << QByteArray(step) << QString::fromUtf8(text);
    };
    row("plain words", "note: one two-three, four", "note: \"one two-three, four\"");
    row("path", "note: a/b_c.d", "note: a/b_c.d");
    row("number", "wait: 1.5s", "wait: 1.5s");
    row("nothing", "mark:", "mark: ~");
    row("the word null", "note: 'null'", "note: \"null\"");
    row("the word NULL", "note: 'NULL'", "note: \"NULL\"");
    row("empty text", "note: ''", "note: \"\"");
    row("colon", "note: 'a: b'", "note: \"a: b\"");
    row("hyphen", "note: '- a'", "note: \"- a\"");
    row("space at the end", "note: 'a '", "note: \"a \"");
    row("comment sign", "note: 'a #b'", "note: \"a #b\"");
    row("bracket", "note: 'a]'", "note: \"a]\"");
    row("other alphabet", "note: ü 日本", "note: ü 日本");
    row("list", "note: [a, b, [c]]", "note: [a, b, [c]]");
    row("empty list and map", "note: [[], {}]", "note: [[], {}]");
    row("block style", "expect:\n    page: menu\n    menu.row: 0", "expect: {page: menu, menu.row: 0}");
    row("two keys", "soft: right\n  times: 2", "soft: right, times: 2");
}

void ScenarioLoaderTest::stepAsText()
{
    QFETCH(QByteArray, step);
    QFETCH(QString, text);
    DiagnosticCollector diagnostics(QStringLiteral("test.yaml"));
    const auto list = parseYaml("- " + step + '\n', diagnostics);
    QVERIFY2(list, qPrintable(diagnostics.lines().join(QLatin1Char('\n'))));
    const QString line = yamlLine(list->items().constFirst());
    QCOMPARE(line, QStringLiteral("{%1}").arg(text));
}

void ScenarioLoaderTest::usedFileKeepsItsPlaces()
{
    const auto scenario = load(QStringLiteral("uses.yaml"));
    QVERIFY(scenario);
    QCOMPARE(scenario->steps.size(), 2);
    const auto &used = scenario->steps.at(0).steps;
    QCOMPARE(used.size(), 1);
    QCOMPARE(used.first().file, QStringLiteral("parts/used.yaml"));
    QCOMPARE(used.first().where.line, 3);
    QCOMPARE(scenario->steps.at(1).file, QStringLiteral("uses.yaml"));
}

void ScenarioLoaderTest::valuesAreCountedWithAliases()
{
    // Each line has ten times the values of the line before: the sixth alias line goes over the limit.
    QByteArray text = "steps: []\ntitle:\n- &a0 [x, x, x, x, x, x, x, x, x, x]\n";
    for (int line = 1; line < 8; ++line) {
        const auto alias = "*a" + QByteArray::number(line - 1);
        text += "- &a" + QByteArray::number(line) + " [" + alias + (", " + alias).repeated(9) + "]\n";
    }
    QTemporaryFile file;
    QVERIFY(file.open() && file.write(text) == text.size() && file.flush());
    QStringList errors;
    QVERIFY(!load(file.fileName(), &errors));
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.constFirst().contains(QStringLiteral(":8:"))
                 && errors.constFirst().endsWith(
                     QStringLiteral(": error: more than 500000 values, including those that aliases refer to")),
             qPrintable(errors.constFirst()));
}

void ScenarioLoaderTest::limitsStandInTheManual()
{
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/docs/scenarios.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto manual = QString::fromUtf8(file.readAll());
    const auto table = manual.section(QStringLiteral("## Limits"), 1).section(QStringLiteral("\n## "), 0, 0);
    const auto number = [](qint64 value) { return QLocale(QLocale::English).toString(value); };
    const QStringList rows{
        QStringLiteral("a duration | %1 days (%2h)").arg(limits::DurationHours / 24).arg(limits::DurationHours),
        QStringLiteral("`times` of a step or a repeat, `max` of `walk-keys` | %1").arg(number(limits::Times)),
        QStringLiteral("`times` of `call`, `event`, `signal` and `log-line` | %1").arg(number(limits::JournalTimes)),
        QStringLiteral("nesting depth of `repeat` | %1").arg(limits::RepeatDepth),
        QStringLiteral("nesting depth of `not` | %1").arg(limits::NotDepth),
        QStringLiteral("steps, with those of all used files | %1").arg(number(limits::Steps)),
        QStringLiteral("steps to play; a repeated step counts each time | %1").arg(number(limits::PlayedSteps)),
        QStringLiteral("nesting depth of used files | %1").arg(limits::UsedDepth),
        QStringLiteral("used files; a file counts each time that it is used | %1").arg(limits::UsedFiles),
        QStringLiteral("size of a file | %1 MiB").arg(limits::FileSize >> 20),
        QStringLiteral("values of a file; the value of an alias counts each time | %1").arg(number(limits::Values)),
        QStringLiteral("nesting depth of lists and maps | %1").arg(limits::ValueDepth),
        QStringLiteral("length of a screenshot's name | %1 characters").arg(limits::NameLength),
        QStringLiteral("`net-ports`, `usb-ports` | %1 each").arg(limits::Ports),
        QStringLiteral("`x` and `y` of a touch | %1").arg(number(limits::TouchPixel)),
        QStringLiteral("`link-delay` | %1s").arg(limits::LinkDelay / 1000),
        QStringLiteral("`command` of `calibration` | %1").arg(number(limits::CalibrationCommand))};
    QStringList told;
    for (const auto &line : table.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(QLatin1String("| ")) && line != QLatin1String("| Limit | At most |"))
            told << line.mid(2).chopped(2);
    }
    QCOMPARE(told, rows);
}

void ScenarioLoaderTest::schemaKnowsTheSameWords()
{
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/share/scenario.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QJsonParseError error;
    const auto definitions =
        QJsonDocument::fromJson(file.readAll(), &error).object()[QLatin1String("definitions")].toObject();
    QCOMPARE(error.errorString(), QJsonParseError{}.errorString());

    QStringList steps;
    for (const auto &form : definitions[QLatin1String("step")].toObject()[QLatin1String("anyOf")].toArray())
        steps.append(form.toObject()[QLatin1String("required")].toArray().first().toString());
    QCOMPARE(sorted(steps), sorted(StepReader::stepNames()));

    QStringList faults;
    for (const auto &fault : Faults::all())
        faults.append(fault.name);
    const auto names = definitions[QLatin1String("faultName")].toObject()[QLatin1String("enum")].toArray();
    QCOMPARE(sorted(names.toVariantList()), sorted(faults));

    const auto properties =
        definitions[QLatin1String("expectations")].toObject()[QLatin1String("properties")].toObject();
    auto known = propertyNames() + journalPropertyNames();
    known = known.filter(QRegularExpression(QStringLiteral("^[^<]+$")));
    QCOMPARE(sorted(properties.keys()), sorted(known));
}

void ScenarioLoaderTest::shipped_data()
{
    QTest::addColumn<QString>("path");
    const QDir directory(QStringLiteral(LCD_SOURCE_DIR "/scenarios"));
    const auto files = directory.entryList({QStringLiteral("*.yaml")}, QDir::Files, QDir::Name);
    QVERIFY(!files.isEmpty());
    for (const auto &file : files)
        QTest::newRow(qPrintable(file)) << directory.filePath(file);
}

void ScenarioLoaderTest::shipped()
{
    QFETCH(QString, path);
    QStringList errors;
    const auto scenario = load(path, &errors);
    QCOMPARE(errors, QStringList());
    QVERIFY(!scenario->title.isEmpty());
}

QTEST_GUILESS_MAIN(ScenarioLoaderTest)
#include "tst_scenarioloader.moc"
