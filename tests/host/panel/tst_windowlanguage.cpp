#include "../shippedscenarios.h"
#include "application/processsetup.h"
#include "session/session.h"
#include "window/faultview.h"
#include "window/journalview.h"
#include "window/panelwindow.h"
#include "window/unitbar.h"
#include "window/unitpattern.h"
#include "window/windowlanguage.h"
#include "window/windowsettings.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTreeWidget>
#include <QtXml/QDomDocument>

using namespace panelhost;

/// The languages of the window: their catalogs, and the window in each of them.
class WindowLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theClosestLanguageIsTaken_data();
    void theClosestLanguageIsTaken();
    void catalogsAreComplete_data() { eachCatalog(); }
    void catalogsAreComplete();
    void theWholeWindowChanges_data() { eachCatalog(); }
    void theWholeWindowChanges();
    void theMessageAboutTheUnitChanges();
    void theMenuChangesTheLanguage();
    void theLanguageIsRemembered();
    void theJournalStaysTheSame();

private:
    static void eachCatalog();

    QTemporaryDir m_settings;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<PanelWindow> m_window;
};

void WindowLanguageTest::init()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    setWindowLanguage(QStringLiteral("en"));
    QString error;
    m_session = Session::open(shippedOptions(), &error);
    QVERIFY2(m_session, qPrintable(error));
    m_window = std::make_unique<PanelWindow>(*m_session);
    m_window->setOpensScenarios(shippedOptions());
    m_window->askForUnits({}, QString());
    m_window->setSpeed(-1);
    m_window->findChild<FaultView *>()->show();
    m_window->findChild<JournalView *>()->show();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void WindowLanguageTest::cleanup()
{
    m_window.reset();
    m_session.reset();
}

void WindowLanguageTest::eachCatalog()
{
    QTest::addColumn<QString>("code");
    for (const char *code : {"de", "ja", "zh_CN"})
        QTest::newRow(code) << QString::fromLatin1(code);
}

void WindowLanguageTest::theClosestLanguageIsTaken_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("code");
    const QPair<const char *, const char *> rows[] = {
        {"de_AT.UTF-8", "de"}, {"de", "de"},          {"zh_CN.UTF-8", "zh_CN"},
        {"zh_TW", "zh_CN"},    {"ja_JP.UTF-8", "ja"}, {"en_GB", "en"},
        {"fr_FR.UTF-8", "en"}, {"C", "en"},           {"", "en"},
    };
    for (const auto &row : rows)
        QTest::newRow(row.first) << QString::fromLatin1(row.first) << QString::fromLatin1(row.second);
}

void WindowLanguageTest::theClosestLanguageIsTaken()
{
    QFETCH(QString, locale);
    QFETCH(QString, code);
    QCOMPARE(windowLanguageOf(locale), code);
}

static QStringList placesIn(const QString &text)
{
    QStringList places;
    auto matches = QRegularExpression(QStringLiteral("%\\d|\\*\\.\\w+")).globalMatch(text);
    while (matches.hasNext())
        places << matches.next().captured();
    places.sort();
    return places;
}

// Each text is translated, has the same places for values, and a letter for the keyboard if the original has one.
void WindowLanguageTest::catalogsAreComplete()
{
    QFETCH(QString, code);
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/host/translations/panelhost_%1.ts").arg(code));
    QDomDocument document;
    QVERIFY(file.open(QIODevice::ReadOnly) && document.setContent(&file));
    const QDomNodeList messages = document.elementsByTagName(QStringLiteral("message"));
    QVERIFY(messages.size() > 200);
    for (int index = 0; index < messages.size(); ++index) {
        const QDomElement message = messages.at(index).toElement();
        const QString source = message.firstChildElement(QStringLiteral("source")).text();
        const QDomElement translation = message.firstChildElement(QStringLiteral("translation"));
        const QString text = translation.text();
        QVERIFY2(!translation.hasAttribute(QStringLiteral("type")) && !text.isEmpty(), qPrintable(source));
        QVERIFY2(placesIn(text) == placesIn(source), qPrintable(source));
        QVERIFY2(text.contains(QLatin1Char('&')) == source.contains(QLatin1Char('&')), qPrintable(source));
        QVERIFY2(text.endsWith(QChar(0x2026)) || text.endsWith(QStringLiteral("\u2026)"))
                     || !source.endsWith(QChar(0x2026)),
                 qPrintable(source));
    }
}

namespace {

using Texts = QHash<QPair<const QObject *, QByteArray>, QString>;

// All that the widgets and actions below @p window say, except the LCD and the lines of the journal.
Texts textsOf(const PanelWindow &window)
{
    Texts texts;
    const auto objects = window.findChildren<QObject *>();
    for (const QObject *object : objects) {
        // Qt doesn't translate these buttons again.
        if (object->inherits("QDockWidgetTitleButton"))
            continue;
        for (const char *property : {"text", "toolTip", "windowTitle", "title", "accessibleName", "placeholderText"}) {
            const QString text = object->property(property).toString();
            if (!text.isEmpty())
                texts.insert({object, property}, text);
        }
    }
    const auto trees = window.findChildren<QTreeWidget *>();
    for (const QTreeWidget *tree : trees) {
        for (int column = 0; column < tree->columnCount(); ++column) {
            texts.insert({tree, "header" + QByteArray::number(column)}, tree->headerItem()->text(column));
            for (int row = 0; row < tree->topLevelItemCount(); ++row)
                texts.insert({tree, QByteArray::number(column) + ':' + QByteArray::number(row)},
                             tree->topLevelItem(row)->text(column));
        }
    }
    return texts;
}

// The window's name, names of keys and ports, signs, kinds of journal lines, and names of languages.
bool isName(const QString &text)
{
    static const QRegularExpression names(
        QStringLiteral("^(panelhost|[A-Z0-9 ]+|[^A-Za-z]*|call|event|signal|log|screen|action|\\w+ \\([a-z_A-Z]+\\)|"
                       "[^\\x00-\\x7f]+ \\([a-z_A-Z]+\\)|/.*|OK|REC|[0-9:.]+|10×|● REC.*)$"));
    return names.match(text).hasMatch();
}

}

void WindowLanguageTest::theWholeWindowChanges()
{
    QFETCH(QString, code);
    m_window->refresh();
    const Texts english = textsOf(*m_window);
    QVERIFY2(english.size() > 250, qPrintable(QString::number(english.size())));
    setWindowLanguage(code);
    QCoreApplication::processEvents();
    m_window->refresh();
    const QStringList sameInGerman{QStringLiteral("Pause"),   QStringLiteral("&Pause"), QStringLiteral("T-Bar"),
                                   QStringLiteral("Journal"), QStringLiteral("Name"),   QString::fromUtf8("Details…")};
    const Texts translated = textsOf(*m_window);
    int changed = 0;
    QStringList untranslated;
    for (auto text = english.begin(); text != english.end(); ++text) {
        const bool isSame = translated.value(text.key()) == text.value();
        const bool maySame =
            isName(text.value()) || (code == QLatin1String("de") && sameInGerman.contains(text.value()));
        if (isSame && !maySame)
            untranslated << QStringLiteral("%1 %2: %3")
                                .arg(QString::fromLatin1(text.key().first->metaObject()->className()),
                                     QString::fromLatin1(text.key().second), text.value());
        changed += isSame ? 0 : 1;
    }
    QVERIFY2(untranslated.isEmpty(), qPrintable(untranslated.join(QLatin1Char('\n'))));
    QVERIFY2(changed > 150, qPrintable(QString::number(changed)));
    setWindowLanguage(QStringLiteral("en"));
    QCoreApplication::processEvents();
    m_window->refresh();
    const Texts again = textsOf(*m_window);
    for (auto text = english.begin(); text != english.end(); ++text)
        QCOMPARE(again.value(text.key()), text.value());
}

void WindowLanguageTest::theMessageAboutTheUnitChanges()
{
    auto *units = m_window->findChild<UnitBar *>();
    const auto *message = units->findChild<QLabel *>(QStringLiteral("unit-message"));
    Q_EMIT units->unitEntered(QStringLiteral("A1"));
    m_window->warnThatUnitPassed(QStringLiteral("A1"), QDateTime({2026, 3, 1}, {8, 1}, Qt::UTC));
    QCOMPARE(message->text(), QStringLiteral("A1 has already passed the complete machine test: 2026-03-01 08:01 UTC"));
    setWindowLanguage(QStringLiteral("zh_CN"));
    QTRY_COMPARE(message->text(), QString::fromUtf8("A1 已通过整机测试：2026-03-01 08:01 UTC"));
    QCOMPARE(message->toolTip(), message->text());
    setWindowLanguage(QStringLiteral("en"));
}

void WindowLanguageTest::theMenuChangesTheLanguage()
{
    auto *menu = m_window->findChild<QMenu *>(QStringLiteral("window-language"));
    Q_EMIT menu->aboutToShow();
    QAction *german = nullptr;
    QStringList codes;
    const auto actions = menu->actions();
    for (QAction *action : actions) {
        codes << action->data().toString();
        if (codes.last() == QLatin1String("de"))
            german = action;
        QCOMPARE(action->isChecked(), codes.last() == QLatin1String("en"));
    }
    codes.removeAll(QString());
    QCOMPARE(codes, windowLanguages());
    german->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(windowLanguage(), QStringLiteral("de"));
    QCOMPARE(m_window->findChild<JournalView *>()->windowTitle(), QStringLiteral("Journal"));
    QCOMPARE(m_window->findChild<FaultView *>()->windowTitle(), QStringLiteral("Fehler"));
    QCOMPARE(m_session->language(), QStringLiteral("en"));
    actions.first()->trigger();
    QCOMPARE(windowLanguage(), QString());
}

void WindowLanguageTest::theLanguageIsRemembered()
{
    setWindowLanguage(QStringLiteral("ja"));
    WindowSettings().save(*m_window, {});
    QCOMPARE(WindowSettings().windowLanguage(), QStringLiteral("ja"));
    setWindowLanguage({});
    WindowSettings().save(*m_window, {});
    QCOMPARE(WindowSettings().windowLanguage(), QString());
    setWindowLanguage(QStringLiteral("fr"));
    QCOMPARE(windowLanguage(), QString());
}

void WindowLanguageTest::theJournalStaysTheSame()
{
    const qint64 lines = m_session->journal().count();
    setWindowLanguage(QStringLiteral("zh_CN"));
    QCoreApplication::processEvents();
    m_session->clock().settle();
    QCOMPARE(m_session->journal().count(), lines);
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    QApplication::setQuitOnLastWindowClosed(false);
    WindowLanguageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowlanguage.moc"
