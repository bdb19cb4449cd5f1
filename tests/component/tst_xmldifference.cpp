#include "shellbench.h"
#include "xmlfile.h"
#include "xmllimits.h"

#include <QtTest/QtTest>

using LCD::FactoryModeImpl::findXmlExcess;
using LCD::FactoryModeImpl::XmlFile;

// Small documents come out as QDomDocument alone takes them, and with its own words where it doesn't.

namespace {

QString plainResult(const QByteArray &data)
{
    QDomDocument document;
    QString warning;
    QString error;
    int line = 0;
    int column = 0;
    if (!document.setContent(data, true, &error, &line, &column))
        QDebug(&warning) << "[Test] Failed to parse XML:" << QStringLiteral("path") << "Error:" << error << "at line"
                         << line << "column" << column;
    if (!warning.isEmpty())
        return warning.trimmed();
    return document.documentElement().tagName() == QLatin1String("LCD") ? document.toString() : QString();
}

QString ourResult(const QByteArray &data)
{
    const LogCapture log;
    const QDomDocument document = XmlFile("[Test]").document(data, QStringLiteral("path"));
    if (!document.isNull())
        return document.toString();
    const QString warning = log.warnings().value(0);
    return warning.contains(QStringLiteral("Root element is not")) ? QString() : warning;
}

}

class tst_XmlDifference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void corpus_data()
    {
        QTest::addColumn<QByteArray>("document");
        const std::pair<const char *, const char *> documents[] = {
            {"plain", "<LCD version='1.0'><A b=\"c\">text</A><!-- c --><![CDATA[<&]]><?p i?></LCD>"},
            {"another root", "<x/>"},
            {"empty", ""},
            {"blank", "  \n "},
            {"text", "hello"},
            {"no root", "<?xml version='1.0'?>"},
            {"mismatch", "<LCD><A></B></LCD>"},
            {"not closed", "<LCD><A>"},
            {"half a tag", "<LCD><A b='"},
            {"two roots", "<LCD/><LCD/>"},
            {"attribute twice", "<LCD a='1' a='2'/>"},
            {"no quotes", "<LCD a=1/>"},
            {"bare ampersand", "<LCD>&</LCD>"},
            {"unknown entity", "<LCD>&x;</LCD>"},
            {"numbers", "<LCD>&#65;&#x42;</LCD>"},
            {"predefined", "<LCD>&lt;&gt;&amp;&quot;&apos;</LCD>"},
            {"namespace", "<LCD xmlns:x='u'><x:A x:b='c'/></LCD>"},
            {"prefix not bound", "<x:LCD/>"},
            {"space in an end tag", "<LCD></LCD  >"},
            {"comment not closed", "<LCD><!-- </LCD>"},
            {"dashes", "<LCD><!-- a -- b --></LCD>"},
            {"cdata not closed", "<LCD><![CDATA[ </LCD>"},
            {"entity", "<!DOCTYPE LCD [<!ENTITY e 'v<a/>'>]><LCD b='x'>&e;</LCD>"},
            {"entity in an attribute", "<!DOCTYPE LCD [<!ENTITY e \"v'\">]><LCD b='&e;'/>"},
            {"entity of itself", "<!DOCTYPE LCD [<!ENTITY e '&e;'>]><LCD>&e;</LCD>"},
            {"entity of numbers", "<!DOCTYPE LCD [<!ENTITY e '&#60;a/>'>]><LCD>&e;</LCD>"},
            {"entity too large",
             "<!DOCTYPE LCD [<!ENTITY a '0123456789012345678901234567890123456789'><!ENTITY b "
             "'&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c "
             "'&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'>]><LCD>&c;</LCD>"},
            {"parameter entity", "<!DOCTYPE LCD [<!ENTITY % p \"<!ENTITY e 'v'>\">%p;]><LCD>&e;</LCD>"},
            {"declarations",
             "<!DOCTYPE LCD SYSTEM 'x.dtd' [<!ELEMENT LCD (a|(b,c))*><!ATTLIST LCD d CDATA 'e' f (g|h) "
             "#IMPLIED><!NOTATION n SYSTEM 'n'><?p?><!-- ]> -->]><LCD/>"},
            {"broken declaration", "<!DOCTYPE LCD [<!ENTITY>]><LCD/>"},
            {"doctype not closed", "<!DOCTYPE LCD [<!ENTITY e 'x'"},
            {"declared Latin-1", "<?xml version='1.0' encoding='ISO-8859-1'?><LCD>\xe4</LCD>"},
            {"unknown encoding", "<?xml version='1.0' encoding='nonsense'?><LCD/>"},
            {"wrong UTF-8", "<LCD>\xff\xfe</LCD>"},
            {"UTF-8 with a mark", "\xef\xbb\xbf<LCD>\xc3\xa4</LCD>"},
        };
        for (const auto &[name, document] : documents)
            QTest::newRow(name) << QByteArray(document);
        for (const char *codec : {"UTF-16", "UTF-16LE", "UTF-16BE", "UTF-32", "UTF-32LE", "ISO-8859-1"})
            QTest::newRow(codec) << QTextCodec::codecForName(codec)->fromUnicode(QStringLiteral("<LCD>\u00e4</LCD>"));
    }
    void corpus()
    {
        QFETCH(QByteArray, document);
        QVERIFY(!findXmlExcess(document));
        QCOMPARE(ourResult(document), plainResult(document));
    }
};

QTEST_GUILESS_MAIN(tst_XmlDifference)
#include "tst_xmldifference.moc"
