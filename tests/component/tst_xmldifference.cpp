#include "xmloutcome.h"

#include <QtTest/QtTest>

// Documents of normal size give the same result and the same errors as QDomDocument alone.

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
            {"entities in a default",
             "<!DOCTYPE LCD [<!ENTITY e '\"x'><!ATTLIST LCD a CDATA '&e;&e;'>]><LCD>&e;</LCD>"},
            {"entity of a predefined name", "<!DOCTYPE LCD [<!ENTITY lt '<a>'>]><LCD>&lt;</LCD>"},
            {"parameter entity of a predefined name",
             "<!DOCTYPE LCD [<!ENTITY % lt '<!ENTITY e \"v\">'>%lt;]><LCD>&e;</LCD>"},
            {"entity declared twice", "<!DOCTYPE LCD [<!ENTITY e 'a'><!ENTITY e '<b>'>]><LCD>&e;</LCD>"},
            {"tag that begins in an entity", "<!DOCTYPE LCD [<!ENTITY e '<a b=\"c'>]><LCD>&e;d\">&e;\"/></a></LCD>"},
            {"external entity", "<!DOCTYPE LCD [<!ENTITY e SYSTEM 'file:///e'>]><LCD>&e;</LCD>"},
            {"undeclared entity in an attribute", "<LCD a='&x;'/>"},
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
        QCOMPARE(componentOutcome(document), plainOutcome(document));
    }

    void largeDocuments_data()
    {
        QTest::addColumn<QByteArray>("document");
        const auto row = [](const char *name, const QByteArray &content,
                            const QByteArray &documentType = QByteArray()) {
            QTest::newRow(name) << documentType + "<LCD>" + content + "</LCD>";
        };
        row("items", QByteArray("<MenuItem Key='em.factorytest.X'/>\n").repeated(29000));
        row("cut within an item", QByteArray("<MenuItem Key='em.factorytest.X'/>").repeated(29000) + "<MenuItem Ke");
        row("five namespaces",
            "<n a:a='' xmlns:a='1' xmlns:b='2' xmlns:c='3' xmlns:d='4' xmlns:e='5'>"
                + QByteArray("<MenuItem Key='em.factorytest.X'/>").repeated(29000) + "</n>");
        row("a namespace for each", QByteArray("<x:a xmlns:x='u'/>").repeated(29000));
        row("predefined characters", QByteArray("R&amp;D ").repeated(30000));
        row("undeclared references", QByteArray("&x; y").repeated(30000));
        row("plain entities", QByteArray("&company; ").repeated(100000), "<!DOCTYPE LCD [<!ENTITY company 'ACME'>]>");
        row("entities with tags", QByteArray("&e;").repeated(20000), "<!DOCTYPE LCD [<!ENTITY e '<a b=\"c\"/>'>]>");
        QTest::newRow("UTF-16") << QTextCodec::codecForName("UTF-16")->fromUnicode(
            QStringLiteral("<LCD>") + QString(1024 * 1024, QChar(0x4e2d)) + QStringLiteral("</LCD>"));
    }
    void largeDocuments()
    {
        QFETCH(QByteArray, document);
        QVERIFY(componentOutcome(document) == plainOutcome(document));
    }
};

QTEST_GUILESS_MAIN(tst_XmlDifference)
#include "tst_xmldifference.moc"
