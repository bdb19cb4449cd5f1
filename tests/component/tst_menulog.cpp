#include "emulation.h"
#include "log.h"
#include "menufixture.h"

#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <cstdio>

using LCD::FactoryModeImpl::componentLog;
using LCD::FactoryModeImpl::FactoryModeWidget;

namespace {

const QString LogWhileExiting = QStringLiteral("--log-while-exiting");
bool logsWhileExiting = false;

// Created before Qt's default category and therefore deleted after it, like a service's thread at the end of the
// process.
struct AfterTheDefaultCategory
{
    ~AfterTheDefaultCategory()
    {
        if (!logsWhileExiting)
            return;
        std::fputs(QLoggingCategory::defaultCategory() ? "still there\n" : "gone\n", stderr);
        qCDebug(componentLog) << "a late line";
        qCWarning(componentLog) << "a late warning";
    }
} const afterTheDefaultCategory;

}

class tst_MenuLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLoggingCategory::setFilterRules(QString()); }

    void linesSayWhereTheyComeFrom()
    {
        const ShareDirectory share;
        ShareDirectory::writeMenu(SampleMenu);
        const LogCapture log;
        FactoryModeWidget widget(nullptr);
        widget.enterFactoryMode();
        QTest::keyClick(MenuView(widget).level1, Qt::Key_Escape);
        widget.exitFactoryMode();
        QVERIFY(log.entries().size() > 20);
        for (const LogCapture::Entry &entry : log.entries()) {
            QCOMPARE(entry.category, QByteArray("default"));
            QVERIFY2(entry.file.startsWith("framework/src/libs/lcdfactorymodeimpl/"), entry.file);
            QVERIFY(entry.line > 0);
            QVERIFY2(entry.function.contains("LCD::FactoryModeImpl::"), entry.function);
            QVERIFY(entry.type == QtDebugMsg || entry.type == QtWarningMsg);
        }
    }
    void nothingIsPutTogetherForALineThatIsOff_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::newRow("the category") << QStringLiteral("default.debug=false");
        QTest::newRow("every category") << QStringLiteral("*.debug=false");
    }
    void nothingIsPutTogetherForALineThatIsOff()
    {
        QFETCH(QString, rule);
        int built = 0;
        const auto text = [&built] {
            ++built;
            return QStringLiteral("text");
        };
        QLoggingCategory::setFilterRules(rule);
        qCDebug(componentLog) << text();
        QCOMPARE(built, 0);
        QLoggingCategory::setFilterRules(QString());
        const LogCapture log;
        qCDebug(componentLog) << text();
        QCOMPARE(built, 1);
    }
    void debugLinesCanBeSwitchedOff()
    {
        const ShareDirectory share;
        ShareDirectory::writeMenu(SampleMenu);
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        const LogCapture log;
        FactoryModeWidget widget(nullptr);
        widget.enterFactoryMode();
        QCOMPARE(log.lines(),
                 log.warnings().replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("warning|")));
        QVERIFY(!log.warnings().isEmpty());
    }
    void linesWrittenDuringTheExitAreSafe()
    {
        SKIP_IF_EMULATED();
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {LogWhileExiting});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), 0);
        const QByteArray written = child.readAllStandardError();
        QVERIFY2(written.endsWith("gone\na late line\na late warning\n"), written);
    }
    // qDebug() and qWarning() always format their text.
    void everyLineGoesThroughTheCategory()
    {
        QDirIterator files(QStringLiteral(LCD_SOURCE_DIR "/framework"),
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files, QDirIterator::Subdirectories);
        const QRegularExpression plain(QStringLiteral("\\bq(Debug|Warning|Info|Critical)\\(\\) *<<"));
        int count = 0;
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY2(!plain.match(QString::fromUtf8(file.readAll())).hasMatch(), qPrintable(file.fileName()));
            ++count;
        }
        QVERIFY(count > 20);
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    logsWhileExiting = QCoreApplication::arguments().contains(LogWhileExiting);
    if (logsWhileExiting)
        return componentLog().isDebugEnabled() ? 0 : 1;
    tst_MenuLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_menulog.moc"
