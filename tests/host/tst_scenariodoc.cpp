#include "expectations/properties.h"
#include "lcd/screenreader.h"
#include "lcd/widget/factorytestframe.h"
#include "scenario/scenarioloader.h"
#include "scenario/stepreader.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryFile>
#include <QtTest/QtTest>

#include <algorithm>

using namespace panelhost;

/// The tables of docs/scenarios.md against what the program reads and shows.
class ScenarioDocTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void steps();
    void navigation();
    void deviceOptions();
    void tbarTypes();
    void properties();
    void ledProperties();
    void pages();
    void stepMarks();
    void portStates();

private:
    struct Row
    {
        QStringList names;  ///< the words in code type in the first cell
        QStringList values; ///< those in the second
    };
    QVector<Row> table(const QString &heading) const;
    /// The row of the table under @p heading whose first cell begins with @p name.
    Row row(const QString &heading, const QString &name) const;
    QStringList wordsOf(const QString &cell) const;

    QString m_document;
};

namespace {

const QString DeviceTable = QStringLiteral("## The device");
const QString StepTable = QStringLiteral("## Steps");
const QString SubjectTable = QStringLiteral("## What can be expected");

QStringList sorted(QStringList words)
{
    words.sort();
    return words;
}

/// The words that the loader's message offers in place of the wrong one in @p scenario.
QStringList offeredWords(const QByteArray &scenario)
{
    QTemporaryFile file;
    if (!file.open() || file.write(scenario) != scenario.size() || !file.flush())
        return {};
    QStringList errors;
    loadScenario(file.fileName(), {}, &errors);
    const auto list = errors.value(0).section(QStringLiteral("expected "), 1).section(QStringLiteral("one of "), 1);
    return list.split(QStringLiteral(", "));
}

/// The mark of a step line, as an expectation sees it.
QString markOf(LCD::Widget::IconType icon)
{
    QWidget lcd;
    LCD::Widget::FactoryTestFrame frame(&lcd);
    frame.addTestSteps({QStringLiteral("step")});
    frame.setStepIcon(0, icon);
    QCoreApplication::processEvents();
    return propertyValue({readScreen(&lcd), {}}, QStringLiteral("steps.marks")).toStringList().value(0);
}

QString stateOf(const PortState &port)
{
    DeviceState device;
    device.usbPorts.append(port);
    return propertyValue({{}, device}, QStringLiteral("port.") + port.name).toString();
}

}

void ScenarioDocTest::initTestCase()
{
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/docs/scenarios.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_document = QString::fromUtf8(file.readAll());
}

QVector<ScenarioDocTest::Row> ScenarioDocTest::table(const QString &heading) const
{
    QVector<Row> rows;
    const int begin = m_document.indexOf(heading + QLatin1Char('\n'));
    const auto section = m_document.mid(begin).section(QStringLiteral("\n## "), 0, 0);
    for (const auto &line : section.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("| `")))
            rows.append({wordsOf(line.section(QLatin1Char('|'), 1, 1)), wordsOf(line.section(QLatin1Char('|'), 2, 2))});
    }
    return rows;
}

ScenarioDocTest::Row ScenarioDocTest::row(const QString &heading, const QString &name) const
{
    const auto rows = table(heading);
    const auto isWanted = [&name](const Row &row) { return row.names.first().startsWith(name); };
    const auto found = std::find_if(rows.begin(), rows.end(), isWanted);
    return found == rows.end() ? Row() : *found;
}

QStringList ScenarioDocTest::wordsOf(const QString &cell) const
{
    static const QRegularExpression code(QStringLiteral("`([^`]+)`"));
    QStringList words;
    for (auto matches = code.globalMatch(cell); matches.hasNext();)
        words.append(matches.next().captured(1));
    return words;
}

// "plug: [net1, usb1]", "unplug:" and a further value alone, such as "exit".
void ScenarioDocTest::steps()
{
    QStringList names;
    for (const auto &row : table(StepTable)) {
        for (const auto &word : row.names) {
            if (word.contains(QLatin1Char(':')))
                names.append(word.section(QLatin1Char(':'), 0, 0));
        }
    }
    QCOMPARE(sorted(names), sorted(StepReader::stepNames()));
}

void ScenarioDocTest::navigation()
{
    QCOMPARE(row(StepTable, QStringLiteral("navigate:")).values, offeredWords("steps:\n  - navigate: nowhere\n"));
}

void ScenarioDocTest::deviceOptions()
{
    QStringList names;
    for (const auto &row : table(DeviceTable))
        names += row.names;
    QCOMPARE(sorted(names), sorted(offeredWords("device: {wings: 2}\nsteps: []\n")));
}

void ScenarioDocTest::tbarTypes()
{
    QCOMPARE(row(DeviceTable, QStringLiteral("tbar")).values, offeredWords("device: {tbar: round}\nsteps: []\n"));
}

// Of the screens and keys one stands for all.
void ScenarioDocTest::properties()
{
    QStringList names;
    for (const auto &row : table(SubjectTable))
        names += row.names;
    QStringList known;
    for (const auto &name : propertyNames()) {
        if (name.startsWith(QLatin1String("led.")))
            known.append(QStringLiteral("led.CUT.color"));
        else if (name.startsWith(QLatin1String("port.")))
            known.append(QStringLiteral("port.net1"));
        else if (!name.startsWith(QLatin1String("screen.")) || name.contains(QLatin1Char('0')))
            known.append(name);
    }
    QCOMPARE(sorted(names), sorted(known));
}

void ScenarioDocTest::ledProperties()
{
    const auto names = propertyNames().filter(QStringLiteral("led."));
    QCOMPARE(names.size(), 1);
    const auto properties = names.first().section(QLatin1Char('.'), -1).split(QLatin1Char('|'));
    const auto documented = row(SubjectTable, QStringLiteral("led."));
    QCOMPARE(documented.values + QStringList{documented.names.value(0).section(QLatin1Char('.'), -1)},
             properties.mid(1) + properties.mid(0, 1));
}

void ScenarioDocTest::pages()
{
    QCOMPARE(sorted(row(SubjectTable, QStringLiteral("page")).values), sorted(pageNames()));
}

void ScenarioDocTest::stepMarks()
{
    using namespace LCD::Widget;
    auto documented = row(SubjectTable, QStringLiteral("steps")).values;
    QCOMPARE(documented.takeFirst(), QStringLiteral("#rrggbb"));
    QCOMPARE(documented, (QStringList{markOf(IconPass), markOf(IconNotPass), markOf(IconNone)}));
}

void ScenarioDocTest::portStates()
{
    const auto name = QStringLiteral("usb1");
    const QStringList states{stateOf({name, 1, true, false}), stateOf({name, 1, false, false}),
                             stateOf({name, 1, true, true})};
    QCOMPARE(row(SubjectTable, QStringLiteral("port.")).values, states);
}

QTEST_MAIN(ScenarioDocTest)
#include "tst_scenariodoc.moc"
