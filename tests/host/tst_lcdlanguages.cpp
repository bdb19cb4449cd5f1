#include "hosttest.h"
#include "lcd/screenreader.h"
#include "playing/player.h"
#include "scenario/scenarioloader.h"
#include "shippedscenarios.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

using namespace panelhost;

using Texts = QSet<QString>;

/// What an operator reads on the LCD, on all pages and in each language.
class LcdLanguagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nothingStaysEnglish_data();
    void nothingStaysEnglish();
    void thePageThatIsShownChanges();

private:
    Texts m_english;
};

namespace {

// Not the log, which is English in all languages.
Texts textsOn(QWidget &lcd)
{
    Texts texts;
    const QVariantMap screen = readScreen(&lcd);
    for (const char *property : {"title", "stepTitle", "left", "right"})
        texts << screen.value(QLatin1String(property)).toString();
    const QStringList items = screen.value(QStringLiteral("menu.items")).toStringList();
    texts.unite(Texts(items.begin(), items.end()));
    const QVariantList steps = screen.value(QStringLiteral("steps")).toList();
    for (const QVariant &step : steps)
        texts << step.toMap().value(QStringLiteral("text"), step).toString();
    const auto widgets = lcd.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const bool hasText = qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget);
        if (hasText && widget->isVisibleTo(&lcd))
            texts << widget->property("text").toString();
    }
    return texts;
}

// Without what it expects, which is in English, but with the time that it gives to that.
QVector<Step> withoutExpectations(const QVector<Step> &steps)
{
    QVector<Step> rest;
    for (Step step : steps) {
        step.steps = withoutExpectations(step.steps);
        if (step.kind == Step::Kind::Expect) {
            step.kind = Step::Kind::Wait;
            step.duration = step.within.value_or(0);
        }
        if (step.path == QStringList{QStringLiteral("Machine test")})
            step.path = QStringList{QStringLiteral("completemachine")};
        if (step.path == QStringList{QStringLiteral("Aging test")})
            step.path = QStringList{QStringLiteral("AgingMode")};
        rest << step;
    }
    return rest;
}

void play(const QString &file, const QString &language, Texts *texts)
{
    QStringList errors;
    auto scenario = loadScenario(file, shippedOptions(), &errors);
    QVERIFY2(scenario, qPrintable(errors.join(QLatin1Char('\n'))));
    scenario->steps = withoutExpectations(scenario->steps);
    scenario->device.language = language;
    scenario->device.turnListener = [texts](OperatorTarget &session) { texts->unite(textsOn(*session.lcd())); };
    const ScenarioResult result = Player(*scenario, {}, [](const StepResult &, qint64) {}).play();
    QVERIFY2(result.passed, qPrintable(file + QStringLiteral(": ") + result.failureText()));
}

// The pages of the host: outside factory mode, and where no library has a page.
void visitHostPages(const QString &language, Texts *texts)
{
    Session::Options options = shippedOptions();
    options.pages = Session::noPages;
    options.language = language;
    options.turnListener = [texts](OperatorTarget &session) { texts->unite(textsOn(*session.lcd())); };
    QString error;
    const auto session = Session::open(options, &error);
    QVERIFY2(session, qPrintable(error));
    const auto navigate = [&session](const char *key) {
        session->panelOperator().perform({OperatorAction::Kind::Navigate, {{q("key"), q(key)}}});
        session->clock().settle();
    };
    for (const char *key : {"down", "down", "enter", "back", "down", "enter", "back"})
        navigate(key);
    session->panelOperator().perform({OperatorAction::Kind::ExitFactoryMode, {}});
    session->clock().settle();
    texts->unite(textsOn(*session->lcd()));
}

Texts textsIn(const QString &language)
{
    Texts texts;
    QStringList files = QDir(QStringLiteral(LCD_SOURCE_DIR "/scenarios")).entryList({q("repair-*.yaml")});
    files << q("aging.yaml") << q("machine-pass.yaml") << q("machine-fail-6.yaml") << q("machine-retest.yaml");
    for (const QString &file : qAsConst(files))
        play(QStringLiteral(LCD_SOURCE_DIR "/scenarios/") + file, language, &texts);
    visitHostPages(language, &texts);
    return texts;
}

// The titles of the menu that the component doesn't translate, the same on its T-Bar page, names of keys and files,
// and numbers.
bool isSameInAllLanguages(const QString &text)
{
    static const QStringList titles{
        q("Log Export"),      q("Factory Reset"), q("RepairMode"), q("Screen Light"), q("Screen Bad Pixel"),
        q("Button Light"),    q("Factory Knob"),  q("JoyStick"),   q("T-Bar"),        q("Factory Net"),
        q("Button Function"), q("Touch Screen"),  q("USB")};
    static const QRegularExpression names(q("^([^A-Za-z]*|lcd-logs-.*)$"));
    return titles.contains(text) || names.match(text).hasMatch();
}

}

void LcdLanguagesTest::initTestCase()
{
    m_english = textsIn(q("en"));
    QVERIFY2(m_english.size() > 120, qPrintable(QString::number(m_english.size())));
}

void LcdLanguagesTest::nothingStaysEnglish_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"de", "ja", "zh_CN"})
        QTest::newRow(language) << q(language);
}

void LcdLanguagesTest::nothingStaysEnglish()
{
    QFETCH(QString, language);
    const Texts texts = textsIn(language);
    QVERIFY2(texts.size() > 120, qPrintable(QString::number(texts.size())));
    const QStringList sameInGerman{q("Joystick")};
    QStringList english;
    for (const QString &text : texts) {
        const bool maySame = isSameInAllLanguages(text) || (language == q("de") && sameInGerman.contains(text));
        if (m_english.contains(text) && !maySame)
            english << text;
    }
    QVERIFY2(english.isEmpty(), qPrintable(english.join(QLatin1Char('\n'))));
}

// A page of the host, at once.
void LcdLanguagesTest::thePageThatIsShownChanges()
{
    Session::Options options = shippedOptions();
    options.startsInFactoryMode = false;
    QString error;
    const auto session = Session::open(options, &error);
    QVERIFY2(session, qPrintable(error));
    QVERIFY(textsOn(*session->lcd()).contains(q("Press Enter to go to factory mode.")));
    QVERIFY(session->setLanguage(q("zh_CN")));
    QVERIFY(textsOn(*session->lcd()).contains(q("按确认键进入工厂模式。")));
}

PANELHOST_TEST_MAIN(LcdLanguagesTest)
#include "tst_lcdlanguages.moc"
