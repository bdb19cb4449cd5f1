#include "application/processsetup.h"
#include "panel/lcdinput.h"
#include "panel/lcdview.h"
#include "panel/theme.h"
#include "panelfixture.h"
#include "records/recordstore.h"
#include "records/storereader.h"
#include "session/session.h"
#include "window/panelwindow.h"
#include "window/unitbar.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

using namespace panelhost;

static QString q(const char *text)
{
    return QString::fromUtf8(text);
}

/// The strip that asks for serial numbers, in a window on a session with the real component.
class UnitBarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void withoutItEverythingIsAsBefore();
    void factoryModeNeedsAUnit();
    void numbersAreChecked_data();
    void numbersAreChecked();
    void aScannerTypesWhileTheLcdHasTheFocus();
    void enterDoesNotReachTheLcd();
    void escapeReturnsToTheLcd();
    void leavingFactoryModeAsksAgain();
    void verdictStaysUntilTheNextUnit();
    void aLongNumberIsElided();
    void aUnitThatPassedInThisSession();
    void aUnitThatPassedBefore();

private:
    void open(const char *pattern = "", const char *unit = "");
    void scan(const char *text);
    QStringList actions() const;
    QString label(const char *name) const { return m_window->findChild<QLabel *>(q(name))->text(); }
    QLineEdit *input() const { return m_window->findChild<QLineEdit *>(q("unit-input")); }
    QColor fieldColor() const;
    static Run run(const char *unit, RunOutcome outcome);

    std::unique_ptr<Session> m_session;
    std::unique_ptr<PanelWindow> m_window;
};

void UnitBarTest::init()
{
    Session::Options options;
    options.component = QStringLiteral(LCD_BUILD_DIR "/lib/liblcdfactorymodeimpl.so");
    options.share = QStringLiteral(LCD_BUILD_DIR "/share");
    options.startsInFactoryMode = QTest::currentTestFunction() == QByteArray("withoutItEverythingIsAsBefore");
    QString error;
    m_session = Session::open(options, &error);
    QVERIFY2(m_session, qPrintable(error));
    m_window = std::make_unique<PanelWindow>(*m_session);
    m_window->setSpeed(-1);
}

void UnitBarTest::cleanup()
{
    m_window.reset();
    m_session.reset();
}

void UnitBarTest::open(const char *pattern, const char *unit)
{
    QString error;
    const auto parsed = UnitPattern::fromText(q(pattern), &error);
    QVERIFY2(parsed, qPrintable(error));
    m_window->askForUnits(*parsed, q(unit));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

// Key by key to whatever has the focus, as a keyboard does.
void UnitBarTest::scan(const char *text)
{
    for (const char *character = text; *character; ++character)
        QTest::keyClick(QApplication::focusWidget(), *character);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
}

QStringList UnitBarTest::actions() const
{
    QStringList lines;
    const auto entries = m_session->journal().entries();
    for (const Journal::Entry &entry : entries) {
        if (entry.kind == Journal::Kind::Action)
            lines << (entry.name + QLatin1Char(' ') + entry.data.value(q("unit")).toString()).trimmed();
    }
    return lines;
}

QColor UnitBarTest::fieldColor() const
{
    const QImage image = m_window->findChild<QWidget *>(q("verdict"))->grab().toImage();
    return image.pixelColor(4, image.height() / 2);
}

Run UnitBarTest::run(const char *unit, RunOutcome outcome)
{
    Run run;
    run.id = QUuid::createUuid();
    run.session.id = QUuid::createUuid();
    run.session.begin = QDateTime({2026, 3, 1}, {8, 0}, Qt::UTC);
    run.session.unit = q(unit);
    run.outcome = outcome;
    run.end = 61000;
    run.position = 1;
    run.phases.append({q("tbar"), outcome, 0, 61000, VerdictSource::Test});
    return run;
}

void UnitBarTest::withoutItEverythingIsAsBefore()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QVERIFY(!m_window->findChild<UnitBar *>());
    m_window->showRun(run("A1", RunOutcome::Passed));
    scan("A1");
    QCOMPARE(actions(), QStringList{q("navigate")});
}

void UnitBarTest::factoryModeNeedsAUnit()
{
    open();
    QVERIFY(!m_session->isInFactoryMode());
    QVERIFY(input()->hasFocus());
    QTest::keyClick(input(), Qt::Key_Return);
    QCOMPARE(label("unit-message"), q("A serial number can't be empty."));
    QTest::mouseClick(m_window->findChild<LcdInput *>(), Qt::LeftButton, {}, {400, 240});
    QCOMPARE(label("message"), q("Enter the serial number of the unit first."));
    QCOMPARE(actions(), QStringList());
    scan("A1");
    QVERIFY(m_session->isInFactoryMode());
    QCOMPARE(actions(), (QStringList{q("unit A1"), q("enter-factory-mode")}));
    QCOMPARE(label("verdict-headline"), q("A1"));
    QVERIFY(isViewOfLcd(*QApplication::focusWidget(), *m_session->lcd()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(actions().last(), q("navigate"));
}

void UnitBarTest::numbersAreChecked_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("short") << q("A1") << q("\"A1\" isn't a serial number that matches [A-Z]\\d{3}.");
    QTest::newRow("part") << q("xA123") << q("\"xA123\" isn't a serial number that matches [A-Z]\\d{3}.");
    QTest::newRow("long") << QString(101, QLatin1Char('7'))
                          << q("The serial number has 101 characters; at most 100 are allowed.");
    QTest::newRow("right") << q("A123") << QString();
}

void UnitBarTest::numbersAreChecked()
{
    QFETCH(QString, number);
    QFETCH(QString, sentence);
    open("[A-Z]\\d{3}");
    scan(qPrintable(number));
    QCOMPARE(label("unit-message"), sentence);
    QCOMPARE(actions().isEmpty(), !sentence.isEmpty());
    // What was wrong is replaced by the next scan.
    scan("B456");
    QCOMPARE(label("verdict-headline"), q("B456"));
    QCOMPARE(label("unit-message"), QString());
}

void UnitBarTest::aScannerTypesWhileTheLcdHasTheFocus()
{
    open();
    scan("A1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    scan("B 2");
    QCOMPARE(actions(),
             (QStringList{q("unit A1"), q("enter-factory-mode"), q("navigate"), q("exit-factory-mode"), q("unit B 2"),
                          q("enter-factory-mode")}));
    QCOMPARE(m_session->journal().tail(1).first().data.value(q("menu.row")).toInt(-1), 0);
}

void UnitBarTest::enterDoesNotReachTheLcd()
{
    open("\\d");
    scan("1");
    scan("wrong");
    QCOMPARE(actions(), (QStringList{q("unit 1"), q("enter-factory-mode")}));
}

void UnitBarTest::escapeReturnsToTheLcd()
{
    open({}, "A1");
    scan("A2");
    QTest::keyClick(QApplication::focusWidget(), 'x');
    QVERIFY(input()->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!input()->hasFocus());
    QCOMPARE(input()->text(), QString());
    QVERIFY(!actions().contains(q("navigate")));
}

void UnitBarTest::leavingFactoryModeAsksAgain()
{
    open();
    scan("A1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!m_session->isInFactoryMode());
    QVERIFY(input()->hasFocus());
    scan("A1");
    QVERIFY(m_session->isInFactoryMode());
    QCOMPARE(actions().count(q("unit A1")), 2);
}

void UnitBarTest::verdictStaysUntilTheNextUnit()
{
    open();
    scan("A1");
    const QColor none = fieldColor();
    m_window->showRun(run("B2", RunOutcome::Passed));
    QCOMPARE(label("verdict-headline"), q("A1"));
    m_window->showRun(run("A1", RunOutcome::Failed));
    QCOMPARE(label("verdict-headline"), q("FAILED  A1"));
    QCOMPARE(label("verdict-detail"), q("Complete machine test: tbar"));
    QCOMPARE(fieldColor(), QColor(theme::Red));
    m_window->showRun(run("A1", RunOutcome::Aborted));
    QCOMPARE(fieldColor(), QColor(theme::Red));
    m_window->showRun(run("A1", RunOutcome::Passed));
    QCOMPARE(label("verdict-headline"), q("PASSED  A1"));
    QCOMPARE(fieldColor(), QColor(theme::Green));
    scan("B2");
    QCOMPARE(label("verdict-headline"), q("B2"));
    QCOMPARE(fieldColor(), none);
}

void UnitBarTest::aLongNumberIsElided()
{
    open();
    const QByteArray number(100, 'W');
    scan(number.constData());
    const auto *headline = m_window->findChild<QLabel *>(q("verdict-headline"));
    QCOMPARE(headline->toolTip(), QString::fromLatin1(number));
    QVERIFY(headline->text().endsWith(QChar(0x2026)));
    QTRY_VERIFY(headline->width() >= headline->sizeHint().width());
}

void UnitBarTest::aUnitThatPassedInThisSession()
{
    open();
    scan("A1");
    m_window->showRun(run("A1", RunOutcome::Passed));
    scan("B2");
    QCOMPARE(label("unit-message"), QString());
    scan("A1");
    QCOMPARE(label("unit-message"), q("A1 has already passed the complete machine test: 2026-03-01 08:01 UTC"));
}

void UnitBarTest::aUnitThatPassedBefore()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(q("runs.sqlite"));
    QString error;
    const auto store = RecordStore::open(path, &error);
    QVERIFY2(store, qPrintable(error));
    QVERIFY2(store->save(run("A1", RunOutcome::Passed), {}, &error), qPrintable(error));
    QVERIFY2(store->save(run("B2", RunOutcome::Failed), {}, &error), qPrintable(error));
    StoreReader reader(RecordsLocation{path, false, {}});
    QStringList read;
    connect(m_window.get(), &PanelWindow::unitBegun, &reader, &StoreReader::readPassed);
    connect(&reader, &StoreReader::passedRead, m_window.get(), &PanelWindow::warnThatUnitPassed);
    connect(&reader, &StoreReader::passedRead, this, [&read](const QString &unit) { read << unit; });
    open();
    scan("B2");
    scan("A1");
    QTRY_COMPARE(read, QStringList{q("A1")});
    QTRY_COMPARE(label("unit-message"), q("A1 has already passed the complete machine test: 2026-03-01 08:01 UTC"));
}

int main(int argc, char **argv)
{
    prepareProcess(false);
    QApplication application(argc, argv);
    prepareApplication();
    QApplication::setQuitOnLastWindowClosed(false);
    UnitBarTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_unitbar.moc"
