#include "factorykeychecklistconfigparser.h"
#include "factorymenuconfigparser.h"
#include "prooflength.h"
#include "xmloutcome.h"

#include <QtTest/QtTest>
#include <QtXml/QDomDocument>

#include <pthread.h>
#include <random>

using namespace LCD::FactoryModeImpl;

namespace {

const std::vector<QByteArray> Seeds{
    "<?xml version='1.0' encoding='UTF-8'?><LCD version='1.0'><MenuBar><MenuItem Key='a.B'><MenuItem "
    "key='c'/></MenuItem>"
    "</MenuBar><LcdKeys><LcdKey Value='27' Name='CUT'/></LcdKeys></LCD>",
    "<!DOCTYPE LCD [<!ENTITY company 'ACME'><!ENTITY e '<a b=\"c\">'><!ENTITY f '&e;x</a>'><!ENTITY % p \"<!ENTITY g "
    "'h'>\">%p;"
    "<!ATTLIST LCD i CDATA '&g;'>]><LCD j='&g;'>&f;&#60;<![CDATA[<x>]]><!-- <y> --><?z <w> ?></LCD>"};
const std::vector<QByteArray> Pieces{"<a>",
                                     "</a>",
                                     "<a b='",
                                     "'>",
                                     "\"",
                                     "&e;",
                                     "&f;",
                                     "&#60;",
                                     "]]>",
                                     "<![CDATA[",
                                     "-->",
                                     "<!--",
                                     "<!ENTITY q '",
                                     "%p;",
                                     "]>",
                                     "<?",
                                     "?>",
                                     "\xff",
                                     QByteArray(1, '\0'),
                                     "(",
                                     "xmlns:a='b'"};

const std::vector<QByteArray> Contents{"<MenuBar><MenuItem Key='em.factorytest.X'/>\n</MenuBar>\n",
                                       "<x:a xmlns:x='u'>text &lt; text</x:a><!-- <c> --><![CDATA[ <d> ]]>\n",
                                       "some text &company; and &amp; a reference\n"};

class Mutator
{
public:
    /// Returns a document of the size of the seeds, or one whose content is repeated up to @p size bytes.
    QByteArray next(int size)
    {
        QByteArray document = Seeds[below(Seeds.size())];
        const int end = document.lastIndexOf("</LCD>");
        const QByteArray content = Contents[below(Contents.size())];
        document.insert(end, content.repeated((size - document.size()) / content.size()));
        for (std::size_t changes = size > 0 ? below(4) : 1 + below(8); changes > 0; --changes)
            change(document);
        return document;
    }

private:
    std::size_t below(std::size_t limit) { return limit ? m_random() % limit : 0; }
    void change(QByteArray &document)
    {
        const int at = static_cast<int>(below(static_cast<std::size_t>(document.size())));
        switch (below(4)) {
        case 0:
            document.insert(at, Pieces[below(Pieces.size())].repeated(static_cast<int>(1 + below(20))));
            break;
        case 1:
            document.remove(at, static_cast<int>(1 + below(10)));
            break;
        case 2:
            document.truncate(at);
            break;
        default:
            document.insert(at, document.mid(static_cast<int>(below(100)), static_cast<int>(below(200))));
            break;
        }
    }
    std::mt19937 m_random{20240229};
};

int depthOf(const QDomNode &node)
{
    int depth = 0;
    for (QDomElement child = node.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        depth = std::max(depth, 1 + depthOf(child));
    return depth;
}

// Returns whether QDomDocument refuses a document or nests it too deeply. The stack is large enough for any depth.
struct DepthCheck
{
    QByteArray data;
    bool isTooDeep = false;

    static void *run(void *argument)
    {
        auto &check = *static_cast<DepthCheck *>(argument);
        QDomDocument document;
        check.isTooDeep = !document.setContent(check.data, true) || depthOf(document) > 512;
        return nullptr;
    }
    bool operator()()
    {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstacksize(&attributes, std::size_t(1) << 30U);
        pthread_t thread{};
        if (pthread_create(&thread, &attributes, run, this) == 0)
            pthread_join(thread, nullptr);
        return isTooDeep;
    }
};

}

class tst_XmlMutation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outcomeIsThatOfTheDom_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("documents");
        QTest::newRow("small") << 0 << proofLength(4000, 20000, 1000000);
        QTest::newRow("64 KiB") << 64 * 1024 << proofLength(60, 300, 10000);
        QTest::newRow("1 MiB") << 1024 * 1024 << proofLength(6, 30, 1000);
    }
    // A document may only violate a limit if QDomDocument refuses it, too, or if it is nested too deeply.
    void outcomeIsThatOfTheDom()
    {
        QFETCH(int, size);
        QFETCH(int, documents);
        Mutator mutator;
        int accepted = 0;
        int refusedForLimit = 0;
        for (int i = 0; i < documents; ++i) {
            const QByteArray data = mutator.next(size);
            const QString outcome = componentOutcome(data);
            if (outcome.contains(QStringLiteral("the document needs more than"))) {
                QVERIFY2(DepthCheck{data}(), data.left(4000).constData());
                ++refusedForLimit;
                continue;
            }
            const QString expected = plainOutcome(data);
            if (outcome != expected)
                QCOMPARE(outcome.left(1000) + QLatin1Char('\n') + QString::fromLatin1(data.left(4000)),
                         expected.left(1000));
            accepted += outcome.contains(QStringLiteral("Failed to parse")) ? 0 : 1;
        }
        QVERIFY(accepted > 0);
        // Each refusal is justified; they must only not be the rule. Of a few documents, one or two may be nested too
        // deeply.
        QVERIFY2(refusedForLimit <= 2 + documents / 20, qPrintable(QString::number(refusedForLimit)));
    }

    void parsersTakeWhatTheDomTakes()
    {
        Mutator mutator;
        const LogCapture quiet;
        const int documents = proofLength(4000, 20000, 1000000);
        int accepted = 0;
        for (int i = 0; i < documents; ++i) {
            const QByteArray data = mutator.next(0);
            QDomDocument document;
            const bool parsed = document.setContent(data, true);
            QList<FactoryMenuLevel1Item> items;
            QList<QPair<int, QString>> keys;
            const bool menu = FactoryMenuConfigParser().parseDocument(data, QString(), items);
            const bool list = FactoryKeyCheckListConfigParser().parseDocument(data, QString(), keys);
            QVERIFY2(!(menu || list) || (parsed && depthOf(document) <= 512), data.constData());
            accepted += menu ? 1 : 0;
        }
        QVERIFY(accepted > 0);
    }
};

QTEST_GUILESS_MAIN(tst_XmlMutation)
#include "tst_xmlmutation.moc"
