#include "profile/boardprofile.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace panelhost;

namespace {

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

}

/// Board profiles: what they say, and what is said of their errors.
class tst_BoardProfile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsLedsOfEveryKind();
    void readsScreens();
    void timesLinksAndCalibrationAsOnABoard();
    void absentPartsHaveNoService_data();
    void absentPartsHaveNoService();
    void namesFileLineAndColumn_data();
    void namesFileLineAndColumn();
    void directoryAndMissingFileAreErrors();
    void exampleCanBeRead();

private:
    bool read(const char *text);

    QTemporaryDir m_directory;
    QString m_path;
    Session::Options m_options;
    QStringList m_errors;
};

void tst_BoardProfile::init()
{
    m_path = m_directory.filePath(q("board.yaml"));
    m_options = {};
    m_options.share = q(LCD_SOURCE_DIR "/share");
    m_errors.clear();
}

bool tst_BoardProfile::read(const char *text)
{
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        return false;
    file.close();
    return readBoardProfile(m_path, q("/state"), m_options, &m_errors);
}

void tst_BoardProfile::readsLedsOfEveryKind()
{
    QVERIFY2(read("leds:\n  CUT: panel:cut\n  AUTO: {red: r, green: g}\n  12: {multicolor: m}\n"),
             qPrintable(m_errors.join(QLatin1Char('\n'))));
    const auto &leds = m_options.board->leds;
    QCOMPARE(leds.size(), 3);
    QCOMPARE(leds.at(0).names(), QStringList{q("panel:cut")});
    QCOMPARE(leds.at(0).single, q("panel:cut"));
    QCOMPARE(leds.at(1).names(), (QStringList{q("r"), q("g")}));
    QCOMPARE(leds.at(2).halKey, 12);
    QCOMPARE(leds.at(2).multicolor, q("m"));
    QCOMPARE(leds.at(1).where, m_path + q(":3:9"));
    QCOMPARE(m_options.board->stateDirectory, q("/state"));
}

void tst_BoardProfile::readsScreens()
{
    QVERIFY(read("screens:\n  - {backlight: lcd0, output: HDMI-1}\n  - {output: HDMI-2}\n"));
    const auto &screens = m_options.board->screens;
    QCOMPARE(screens.size(), 2);
    QCOMPARE(screens.at(0).backlight, q("lcd0"));
    QCOMPARE(screens.at(0).output, q("HDMI-1"));
    QCOMPARE(screens.at(1).backlight, QString());
}

void tst_BoardProfile::timesLinksAndCalibrationAsOnABoard()
{
    QVERIFY(read("tbar: simulated\nnet: simulated\n"));
    QCOMPARE(m_options.linkDelay, 0);
    QVERIFY(!m_options.hasCalibrationResults);
    QCOMPARE(m_options.netPorts, 4);
}

void tst_BoardProfile::absentPartsHaveNoService_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("absent");
    const QString keyboard = q("lcdKeyboardEvent");
    const QString net = q("lcdMemoryCacheNetworkPort");
    const QString usb = q("lcdMemoryCacheNodeUSB");
    const QString tbar = q("lcdTBarCalibration");
    QTest::newRow("nothing but the knob")
        << QByteArray("navigation: simulated\n") << QStringList{keyboard, net, usb, tbar};
    QTest::newRow("keys") << QByteArray("keys: simulated\n") << QStringList{net, usb, tbar};
    QTest::newRow("LEDs") << QByteArray("leds: simulated\n") << QStringList{net, usb, tbar};
    QTest::newRow("screens") << QByteArray("screens: simulated\n") << QStringList{net, usb, tbar};
    QTest::newRow("all") << QByteArray("keys: simulated\nnet: simulated\nusb: simulated\ntbar: simulated\n")
                         << QStringList();
}

void tst_BoardProfile::absentPartsHaveNoService()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, absent);
    QVERIFY(read(text.constData()));
    QStringList found;
    for (const auto &fault : qAsConst(m_options.faults)) {
        QCOMPARE(fault.name, q("service-absent"));
        found << fault.arguments.value(q("service")).toString();
    }
    QCOMPARE(found, absent);
}

void tst_BoardProfile::namesFileLineAndColumn_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *name, const char *text, const char *error) {
        QTest::newRow(name) << QByteArray(text) << q(error);
    };
    row("empty", "", ":1:1: error: found nothing, expected a map");
    row("a list", "- keys\n", ":1:1: error: found a list, expected a map");
    row("unknown part", "lids: simulated\n",
        ":1:1: error: found \"lids\", expected one of keys, navigation, leds, screens, tbar, net, usb; did you mean "
        "\"leds\"?");
    row("part twice", "leds: simulated\nleds: simulated\n", ":2:1: error: \"leds\" occurs twice");
    row("misspelled", "leds: simulate\n",
        ":1:7: error: found \"simulate\", expected simulated, or what the part consists of; did you mean "
        "\"simulated\"?");
    row("part without value", "screens:\n",
        ":1:1: error: found nothing, expected simulated, or what the part consists of");
    row("LED with a path", "leds:\n  CUT: /sys/class/leds/x\n",
        ":2:8: error: found \"/sys/class/leds/x\", expected a name in /sys/class, without a slash");
    row("LED outside", "leds:\n  CUT: ..\n",
        ":2:8: error: found \"..\", expected a name in /sys/class, without a slash");
    row("LED of two keys", "leds:\n  CUT: a\n  AUTO: a\n", ":3:9: error: the LED \"a\" is that of another key");
    row("one color", "leds:\n  CUT: {red: a}\n",
        ":2:8: error: an LED needs multicolor, or two or three of red, green, blue");
    row("multicolor and more", "leds:\n  CUT: {multicolor: a, red: b}\n",
        ":2:8: error: a multicolor LED has no other LEDs beside it");
    row("unknown color", "leds:\n  CUT: {red: a, pink: b}\n",
        ":2:17: error: found \"pink\", expected one of multicolor, red, green, blue");
    row("screens as a map", "screens: {backlight: a}\n",
        ":1:10: error: found a map, expected a list of one to 3 screens");
    row("four screens", "screens: [{}, {}, {}, {}]\n",
        ":1:10: error: found a list, expected a list of one to 3 screens");
    row("not YAML", "leds: [\n", ":2:1: error: ");
}

void tst_BoardProfile::namesFileLineAndColumn()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QVERIFY(!read(text.constData()));
    QVERIFY(!m_options.board);
    QVERIFY2(m_errors.first().startsWith(m_path + error), qPrintable(m_errors.first()));
}

void tst_BoardProfile::directoryAndMissingFileAreErrors()
{
    QVERIFY(!readBoardProfile(m_directory.path(), {}, m_options, &m_errors));
    QCOMPARE(m_errors, QStringList{m_directory.path() + q(":1:1: error: not a file")});
    QVERIFY(!readBoardProfile(q("/nowhere.yaml"), {}, m_options, &m_errors));
    QCOMPARE(m_errors, QStringList{q("/nowhere.yaml:1:1: error: No such file or directory")});
}

void tst_BoardProfile::exampleCanBeRead()
{
    QVERIFY2(readBoardProfile(q(LCD_SOURCE_DIR "/share/board/board.yaml"), {}, m_options, &m_errors),
             qPrintable(m_errors.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(tst_BoardProfile)
#include "tst_boardprofile.moc"
