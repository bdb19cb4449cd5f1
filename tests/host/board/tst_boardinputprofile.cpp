#include "profile/boardprofile.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <linux/input-event-codes.h>
#include <valijson/adapters/qtjson_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

using namespace panelhost;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

}

/// Board profiles: the parts for input and links. The rows are JSON, which is YAML too, so that the schema for editors
/// is checked with them.
class tst_BoardInputProfile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void readsKeys();
    void readsNavigation();
    void readsAxisOfTBar();
    void readsChannelOfTBar();
    void readsPorts();
    void namesWhatIsWrong_data();
    void namesWhatIsWrong();
    void schemaAgrees_data();
    void schemaAgrees();

private:
    bool read(const QByteArray &text);
    bool fitsSchema(const QByteArray &text) const;

    QTemporaryDir m_directory;
    QString m_path;
    Session::Options m_options;
    QStringList m_errors;
    valijson::Schema m_schema;
};

void tst_BoardInputProfile::initTestCase()
{
    QFile file(q(LCD_SOURCE_DIR "/share/board.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    valijson::SchemaParser parser;
    parser.populateSchema(valijson::adapters::QtJsonAdapter(document.object()), m_schema);
}

void tst_BoardInputProfile::init()
{
    m_path = m_directory.filePath(q("board.yaml"));
    m_options = {};
    m_options.share = q(LCD_SOURCE_DIR "/share");
    m_errors.clear();
}

bool tst_BoardInputProfile::read(const QByteArray &text)
{
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        return false;
    file.close();
    return readBoardProfile(m_path, q("/state"), m_options, &m_errors);
}

bool tst_BoardInputProfile::fitsSchema(const QByteArray &text) const
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    valijson::Validator validator;
    return validator.validate(m_schema, valijson::adapters::QtJsonAdapter(document.object()), nullptr);
}

#define READ(text) QVERIFY2(read(text), qPrintable(m_errors.join(QLatin1Char('\n'))))

void tst_BoardInputProfile::readsKeys()
{
    READ("keys:\n"
         "  - device: {name: gpio-keys}\n"
         "    events: {KEY_F1: CUT, 60: 12}\n"
         "  - device: {property: ID_PATH=platform-i2c}\n"
         "    events: {KEY_A: AUTO}\n");
    const auto &inputs = m_options.board->inputs;
    QCOMPARE(inputs.size(), 2);
    QCOMPARE(inputs.at(0).part, q("keys"));
    QCOMPARE(inputs.at(0).where, m_path + q(":2:5"));
    QCOMPARE(inputs.at(0).input.device.description(), q("input device named \"gpio-keys\""));
    QCOMPARE(inputs.at(0).input.keys, (QMap<unsigned, int>{{KEY_F1, 33}, {KEY_F2, 12}}));
    QCOMPARE(inputs.at(1).input.device.description(), q("input device with the udev property ID_PATH=platform-i2c"));
    QCOMPARE(inputs.at(1).input.keys, (QMap<unsigned, int>{{KEY_A, 26}}));
    QVERIFY(m_options.board->isReal(q("keys")));
}

void tst_BoardInputProfile::readsNavigation()
{
    READ("navigation:\n"
         "  device: {path: /dev/input/by-path/knob}\n"
         "  events: {REL_DIAL+: down, REL_DIAL-: up, KEY_ENTER: enter, ABS_HAT0X+: right}\n");
    const auto &input = m_options.board->inputs.at(0).input;
    QCOMPARE(input.device.description(), q("input device at /dev/input/by-path/knob"));
    QStringList events;
    for (const EvdevInput::Navigation &each : input.navigation)
        events << q("%1 %2 %3 %4").arg(each.type).arg(each.code).arg(each.direction).arg(each.key);
    QCOMPARE(
        events,
        (QStringList{q("%1 %2 1 down").arg(EV_REL).arg(REL_DIAL), q("%1 %2 -1 up").arg(EV_REL).arg(REL_DIAL),
                     q("%1 %2 0 enter").arg(EV_KEY).arg(KEY_ENTER), q("%1 %2 1 right").arg(EV_ABS).arg(ABS_HAT0X)}));
}

void tst_BoardInputProfile::readsAxisOfTBar()
{
    READ("tbar: {type: fader, device: {name: t}, axis: ABS_THROTTLE, tolerance: 0.1}\n");
    const TBarConfiguration &tbar = m_options.board->tbar;
    QCOMPARE(m_options.tbarType, TBarType::Fader);
    QCOMPARE(m_options.tbarTolerance, 0.1);
    QCOMPARE(tbar.slider.tolerance, 0.1);
    QCOMPARE(*tbar.input.axis, unsigned(ABS_THROTTLE));
    QVERIFY(!tbar.slider.iio);
    QVERIFY(!tbar.slider.range);
    QCOMPARE(tbar.slider.stateFile, q("/state/tbar.json"));
    QVERIFY(m_options.hasCalibrationResults);
}

void tst_BoardInputProfile::readsChannelOfTBar()
{
    READ("tbar: {iio: {device: ads1015, channel: voltage1, rate: 100, events: false}, range: [4095, 0], resolution: "
         "0.02}\n");
    const SliderInput::Configuration &slider = m_options.board->tbar.slider;
    QCOMPARE(slider.iio->device, q("ads1015"));
    QCOMPARE(slider.iio->channel, q("voltage1"));
    QCOMPARE(slider.iio->readingsPerSecond, 100);
    QVERIFY(!slider.iio->usesEvents);
    QCOMPARE(*slider.range, (SliderEnds{4095, 0}));
    QCOMPARE(slider.resolution, 0.02);
    QCOMPARE(m_options.tbarType, TBarType::Slider);
}

void tst_BoardInputProfile::readsPorts()
{
    READ("net: [eth0, lan1]\nusb:\n  - 1-1.2\n  - [1-1.3, 2-1.3]\n  - 3-1\n");
    QCOMPARE(m_options.board->net.interfaces, (QStringList{q("eth0"), q("lan1")}));
    QCOMPARE(m_options.board->netWhere.at(1), m_path + q(":1:13"));
    QCOMPARE(m_options.board->usb.ports, (QList<QStringList>{{q("1-1.2")}, {q("1-1.3"), q("2-1.3")}, {q("3-1")}}));
    QCOMPARE(m_options.netPorts, 2);
    QCOMPARE(m_options.usbPorts, 3);
}

// Everything that a file can have wrong and a schema can't see.
void tst_BoardInputProfile::namesWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *text, const char *error) {
        QTest::newRow(name) << QByteArray(text) << q(error);
    };
    const char *const device = "expected a device such as {name: \"gpio-keys\"}, {path: /dev/input/event3} or "
                               "{property: \"ID_PATH=platform-keys\"}";
    QTest::newRow("no device") << QByteArray("keys: {device: gpio-keys, events: {KEY_F1: CUT}}\n")
                               << q(":1:16: error: found \"gpio-keys\", ") + q(device);
    QTest::newRow("two selections") << QByteArray("keys: {device: {name: a, path: /b}, events: {KEY_F1: CUT}}\n")
                                    << q(":1:16: error: found a map, ") + q(device);
    QTest::newRow("relative path") << QByteArray("keys: {device: {path: event3}, events: {KEY_F1: CUT}}\n")
                                   << q(":1:16: error: found a map, ") + q(device);
    row("events missing", "keys: {device: {name: a}}\n",
        ":1:7: error: an input device needs \"device\" and \"events\"");
    row("no list", "keys: []\n", ":1:7: error: found a list, expected an input device or a list of them");
    row("unknown code", "keys: {device: {name: a}, events: {F1: CUT}}\n",
        ":1:36: error: found \"F1\", expected a key code such as KEY_F1, or its number");
    row("unknown key", "keys: {device: {name: a}, events: {KEY_F1: CUTT}}\n",
        ":1:44: error: found \"CUTT\", expected a key");
    row("key with two codes", "keys: {device: {name: a}, events: {KEY_F1: CUT, KEY_F2: 33}}\n",
        ":1:57: error: the key 33 has two codes");
    row("axis without direction", "navigation: {device: {name: a}, events: {REL_DIAL: up}}\n",
        ":1:42: error: found \"REL_DIAL\", expected an event such as KEY_ENTER, REL_DIAL+, REL_DIAL-, ABS_HAT0X+ or "
        "ABS_HAT0X-");
    row("unknown movement", "navigation: {device: {name: a}, events: {REL_DIAL+: sideways}}\n",
        ":1:53: error: found \"sideways\", expected one of up, down, left, right, enter, back, home, end, page-up, "
        "page-down");
    row("axis missing", "tbar: {device: {name: a}}\n",
        ":1:7: error: a T-Bar needs either \"device\" and \"axis\", or \"iio\"");
    row("both", "tbar: {device: {name: a}, axis: ABS_X, iio: {device: a, channel: voltage1}, range: [0, 1]}\n",
        ":1:7: error: a T-Bar needs either \"device\" and \"axis\", or \"iio\"");
    row("no range", "tbar: {iio: {device: a, channel: voltage1}}\n",
        ":1:7: error: an IIO channel states no limits; the T-Bar needs \"range\"");
    row("range without travel", "tbar: {iio: {device: a, channel: voltage1}, range: [5, 5]}\n",
        ":1:52: error: the values at bottom and top must be different");
    row("channel", "tbar: {iio: {device: a, channel: in_voltage1_raw}, range: [0, 5]}\n",
        ":1:34: error: found \"in_voltage1_raw\", expected a channel such as voltage1");
    row("rate", "tbar: {iio: {device: a, channel: voltage1, rate: 0}, range: [0, 5]}\n",
        ":1:50: error: found \"0\", expected a whole number from 1 to 1000");
    row("no interface", "net: [eth0, \"\"]\n",
        ":1:13: error: found \"\", expected the name of a network interface such as eth0");
    row("interface twice", "net: [eth0, eth0]\n", ":1:13: error: the interface \"eth0\" is that of another port");
    row("no ports", "usb: []\n", ":1:6: error: found a list, expected a list of one to 16 USB ports");
    row("no path", "usb: [usb1]\n",
        ":1:7: error: found \"usb1\", expected the path of a USB port such as 1-1.2, or a list of paths");
    row("path twice", "usb: [1-1, [2-1, 1-1]]\n", ":1:12: error: the path 1-1 is that of another port");
}

void tst_BoardInputProfile::namesWhatIsWrong()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QVERIFY(!read(text));
    QVERIFY2(m_errors.first().startsWith(m_path + error), qPrintable(m_errors.first()));
}

void tst_BoardInputProfile::schemaAgrees_data()
{
    QTest::addColumn<QByteArray>("text");
    const char *const rows[] = {
        R"({"keys": "simulated"})",
        R"({"keys": "real"})",
        R"({"keys": {"device": {"name": "a"}, "events": {"KEY_F1": "CUT"}}})",
        R"({"keys": [{"device": {"path": "/a"}, "events": {"KEY_F1": 33}}]})",
        R"({"keys": [{"device": {"path": "a"}, "events": {"KEY_F1": 33}}]})",
        R"({"keys": {"device": {"property": "A"}, "events": {"KEY_F1": 33}}})",
        R"({"keys": {"device": {"property": "A=b"}, "events": {"KEY_F1": 33}}})",
        R"({"keys": {"device": {}, "events": {"KEY_F1": 33}}})",
        R"({"keys": {"device": {"name": ""}, "events": {"KEY_F1": 33}}})",
        R"({"keys": {"device": {"name": "a", "path": "/b"}, "events": {"KEY_F1": 33}}})",
        R"({"keys": {"events": {"KEY_F1": 33}}})",
        R"({"keys": {"device": {"name": "a"}, "codes": {"KEY_F1": 33}}})",
        R"({"keys": []})",
        R"({"navigation": {"device": {"name": "a"}, "events": {"KEY_UP": "up"}}})",
        R"({"navigation": {"device": {"name": "a"}, "events": {"KEY_UP": "sideways"}}})",
        R"({"tbar": {"device": {"name": "a"}, "axis": "ABS_X"}})",
        R"({"tbar": {"device": {"name": "a"}, "axis": 6}})",
        R"({"tbar": {"device": {"name": "a"}}})",
        R"({"tbar": {"axis": "ABS_X"}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "voltage0-voltage1"}, "range": [0, 4095]}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "voltage1"}}})",
        R"({"tbar": {"iio": {"device": "a"}, "range": [0, 4095]}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "../x"}, "range": [0, 4095]}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "voltage1", "rate": 1001}, "range": [0, 4095]}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "voltage1", "events": false}, "range": [0, 4095]}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "voltage1", "events": 5}, "range": [0, 4095]}})",
        R"({"tbar": {"iio": {"device": "a", "channel": "voltage1"}, "range": [0]}})",
        R"({"tbar": {"device": {"name": "a"}, "axis": "ABS_X", "iio": {"device": "a", "channel": "b"}, "range": [0, 1]}})",
        R"({"tbar": {"device": {"name": "a"}, "axis": "ABS_X", "tolerance": 0.6}})",
        R"({"tbar": {"device": {"name": "a"}, "axis": "ABS_X", "type": "fader", "resolution": 0.5}})",
        R"({"tbar": {"device": {"name": "a"}, "axis": "ABS_X", "type": "lever"}})",
        R"({"net": ["eth0", "eth1"]})",
        R"({"net": ["eth0", "eth0"]})",
        R"({"net": []})",
        R"({"net": ["a name with spaces"]})",
        R"({"net": ["aninterfacenametoolong"]})",
        R"({"usb": ["1-1.2", ["1-1.3", "2-1.3"]]})",
        R"({"usb": ["1-1.2:1.0"]})",
        R"({"usb": [[]]})",
        R"({"usb": "1-1"})",
    };
    for (const char *text : rows)
        QTest::newRow(text) << QByteArray(text);
}

void tst_BoardInputProfile::schemaAgrees()
{
    QFETCH(QByteArray, text);
    const bool isAccepted = read(text);
    QVERIFY2(fitsSchema(text) == isAccepted, qPrintable(m_errors.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(tst_BoardInputProfile)
#include "tst_boardinputprofile.moc"
