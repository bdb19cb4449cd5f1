#include "scenario/scenarioloader.h"
#include "scenario/stepreader.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryFile>
#include <QtTest/QtTest>

#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

using namespace panelhost;

/// The loader against the schema that editors use: each kind of step with values of each kind.
class ScenarioSchemaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void stepsAgree_data();
    void stepsAgree();
    void titlesAgree_data();
    void titlesAgree();

private:
    bool loads(const QJsonObject &scenario);
    bool fitsSchema(const QJsonObject &scenario);

    valijson::Schema m_schema;
    Session::Options m_base;
};

namespace {

QJsonArray values()
{
    const QByteArray text = R"([
        null, true, 0, 1, 5, 0.5, -1, 1.5, "", "text", "two words", "a/b", "a/b/c", "right", "left", "up", "top", "enter",
        "exit", "net1", "usb1", "CUT", "en", "20s", "20", "1.5min", "duplicate-reports",
        [], ["right"], ["up", "down"], ["net1", "usb1"], ["usb1"], [1, 2], [[]], [null], [true],
        {}, {"x": 1, "y": 2}, {"x": 1}, {"x": "a", "y": 2}, {"times": 2, "steps": []}, {"times": 0, "steps": []},
        {"steps": [{"note": "x"}]}, {"steps": [{"note": null}]}, {"times": 2}, {"max": 3, "pace": "1s"}, {"max": 0},
        {"page": "menu"}, {"page": 5}, {"page": ["a", true]}, {"page": {"not": {"contains": "a"}}}, {"page": {}},
        {"page": null}, {"nothing": 1}, {"call": "a"}, {"call": 5}, {"call": {"name": "a", "times": 0}}, {"call": {}},
        {"call": {"name": 5}}, {"call": {"times": -1}}, {"call": []}, {"log-line": 5}, {"log-line": {"contains": "a"}},
        {"log-line": {"times": 1.5}}, {"name": "duplicate-reports"}, {"name": "duplicate-reports", "active": false},
        {"name": "duplicate-reports", "active": "off"}, {"name": "duplicate-reports", "active": 0},
        {"active": true}, {"name": "nothing"}, {"command": 1, "ok": true},
        {"command": 1, "ok": "off", "message": "late"}, {"command": 1}, {"ok": true}, {"command": 1001, "ok": true},
        {"command": 1, "ok": 1}, {"command": 1, "ok": true, "message": ""}, {"command": 1, "ok": true, "message": []},
        {"name": "keys", "present": false}, {"name": "keys"}, {"present": true}, {"name": "lcd", "present": true},
        {"port": "usb1", "speed": 480}, {"port": "usb1", "speed": 1.5}, {"port": "usb1"}, {"speed": 480},
        {"port": "net1", "speed": 480}, {"port": "usb1", "speed": -1}, {"port": "usb1", "speed": 100001},
        {"port": "usb1", "speed": "fast"}
    ])";
    return QJsonDocument::fromJson(text).array();
}

// What the loader knows and a schema can't: the keys, ports and languages that there are, the files, and what a
// single fault needs.
const QStringList Known{QStringLiteral("press"), QStringLiteral("hold"), QStringLiteral("release"),
                        QStringLiteral("use"), QStringLiteral("language")};

QJsonObject scenarioOf(const QJsonObject &step)
{
    return {{QStringLiteral("steps"), QJsonArray{step}}};
}

QByteArray shown(const QJsonValue &value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
}

}

void ScenarioSchemaTest::initTestCase()
{
    m_base.share = QStringLiteral(LCD_SOURCE_DIR "/share");
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/share/scenario.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonValue schema = QJsonDocument::fromJson(file.readAll()).object();
    valijson::SchemaParser().populateSchema(valijson::adapters::QtJsonAdapter(schema), m_schema);
    QVERIFY(!values().isEmpty());
}

// JSON is YAML.
bool ScenarioSchemaTest::loads(const QJsonObject &scenario)
{
    QTemporaryFile file;
    if (!file.open() || file.write(QJsonDocument(scenario).toJson()) < 0 || !file.flush())
        return false;
    QStringList errors;
    return loadScenario(file.fileName(), m_base, &errors).has_value();
}

bool ScenarioSchemaTest::fitsSchema(const QJsonObject &scenario)
{
    const QJsonValue document = scenario;
    return valijson::Validator().validate(m_schema, valijson::adapters::QtJsonAdapter(document), nullptr);
}

void ScenarioSchemaTest::stepsAgree_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name : StepReader::stepNames())
        QTest::newRow(qPrintable(name)) << name;
}

void ScenarioSchemaTest::stepsAgree()
{
    QFETCH(QString, name);
    QByteArray differences;
    for (const auto &value : values()) {
        const auto scenario = scenarioOf({{name, value}});
        const bool fits = fitsSchema(scenario);
        const bool plays = loads(scenario);
        if (plays && !fits)
            differences += "plays, but doesn't fit the schema: " + shown(value) + '\n';
        if (fits && !plays && !Known.contains(name))
            differences += "fits the schema, but doesn't play: " + shown(value) + '\n';
    }
    QVERIFY2(differences.isEmpty(), differences.constData());
}

void ScenarioSchemaTest::titlesAgree_data()
{
    QTest::addColumn<QJsonValue>("title");
    for (const auto &value : values())
        QTest::newRow(shown(value).constData()) << QJsonValue(value);
}

void ScenarioSchemaTest::titlesAgree()
{
    QFETCH(QJsonValue, title);
    const QJsonObject scenario{{QStringLiteral("title"), title}, {QStringLiteral("steps"), QJsonArray()}};
    QCOMPARE(loads(scenario), fitsSchema(scenario));
}

QTEST_GUILESS_MAIN(ScenarioSchemaTest)
#include "tst_scenarioschema.moc"
