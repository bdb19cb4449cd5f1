#include "emulation.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

// The built library, as seen by tools that don't know its source code.

namespace {

QString output(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.start(tool, arguments + QStringList{QStringLiteral(LCD_BUILD_DIR "/lib/liblcdfactorymodeimpl.so")});
    if (!process.waitForFinished() || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}

}

class tst_LibrarySymbols : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { SKIP_IF_EMULATED(); }
    void entryPointsAreExported_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::newRow("pluginfo") << QStringLiteral("^[0-9a-f]+ [0-9a-f]+ T pluginfo$");
        QTest::newRow("pluginit") << QStringLiteral("^[0-9a-f]+ [0-9a-f]+ T pluginit$");
#if !defined(__SANITIZE_ADDRESS__) || !defined(__clang__) // clang adds room behind global variables
        QTest::newRow("table of 16 bytes")
            << QStringLiteral("^[0-9a-f]+ 0*10 [DR] lcdfactorymodeimpl_mirel_componentInfoTable$");
        QTest::newRow("component record of 112 bytes") << QStringLiteral(
            "^[0-9a-f]+ 0*70 [BDu] mirel::ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::componentInfo$");
#endif
        QTest::newRow("key check list") << QStringLiteral(
            " T LCD::FactoryModeImpl::FactoryModeWidget::getFactoryKeyCheckList\\(\\) const$");
        QTest::newRow("meta-object") << QStringLiteral(" [BDR] LCD::FactoryMode::ILcdFactoryMode::staticMetaObject$");
        for (const char *name : {"creator()", "deletor(void*)", "getMessageHandler(void*)"})
            QTest::newRow(name)
                << QStringLiteral(
                       "^[0-9a-f]+ [0-9a-f]+ T mirel::ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::")
                    + QRegularExpression::escape(QString::fromLatin1(name));
    }
    void entryPointsAreExported()
    {
        QFETCH(QString, pattern);
        static const QString symbols = output(QStringLiteral("nm"), QStringLiteral("-D -C -S").split(QLatin1Char(' ')));
        QVERIFY(!symbols.isEmpty());
        QVERIFY(QRegularExpression(pattern, QRegularExpression::MultilineOption).match(symbols).hasMatch());
    }
    void staysMappedAndNamesItsLibraries()
    {
        const QString dynamic = output(QStringLiteral("readelf"), {QStringLiteral("-d")});
        QVERIFY(dynamic.contains(QStringLiteral("NODELETE")));
        for (const char *library :
             {"liblcdfactorymodeimpl.so", "liblcdwidgets.so", "liblcdtranslator.so", "libvttranslate.so"})
            QVERIFY2(dynamic.contains(QStringLiteral("[%1]").arg(QString::fromLatin1(library))), library);
    }
};

QTEST_GUILESS_MAIN(tst_LibrarySymbols)
#include "tst_librarysymbols.moc"
