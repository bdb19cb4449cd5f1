#include "factorykeychecklistconfigparser.h"
#include "factorymenuconfigparser.h"
#include "recordinghost.h"
#include "xmllimits.h"

#include <QtTest/QtTest>
#include <QtXml/QDomDocument>

#include <random>

using namespace LCD::FactoryModeImpl;

namespace {

const std::vector<QByteArray> Seeds{
    "<?xml version='1.0' encoding='UTF-8'?><LCD version='1.0'><MenuBar><MenuItem Key='a.B'><MenuItem "
    "key='c'/></MenuItem>"
    "</MenuBar><LcdKeys><LcdKey Value='27' Name='CUT'/></LcdKeys></LCD>",
    "<!DOCTYPE LCD [<!ENTITY e '<a b=\"c\">'><!ENTITY f '&e;x</a>'><!ENTITY % p \"<!ENTITY g 'h'>\">%p;"
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

class Mutator
{
public:
    QByteArray next()
    {
        QByteArray document = Seeds[below(Seeds.size())];
        for (std::size_t changes = 1 + below(8); changes > 0; --changes)
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

}

class tst_XmlMutation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parsersAgreeWithTheDom()
    {
        Mutator mutator;
        const LogCapture quiet;
        int accepted = 0;
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 20000 && timer.elapsed() < 4000; ++i) {
            const QByteArray data = mutator.next();
            const auto excess = findXmlExcess(data);
            QDomDocument document;
            const bool parsed = !excess && document.setContent(data, true);
            if (parsed)
                QVERIFY(depthOf(document) <= XmlDepthLimit);
            QList<FactoryMenuLevel1Item> items;
            QList<QPair<int, QString>> keys;
            const bool menu = FactoryMenuConfigParser().parseDocument(data, QString(), items);
            FactoryKeyCheckListConfigParser().parseDocument(data, QString(), keys);
            QVERIFY2(!menu || parsed, data.constData());
            accepted += menu ? 1 : 0;
        }
        QVERIFY(accepted > 0);
    }
};

QTEST_GUILESS_MAIN(tst_XmlMutation)
#include "tst_xmlmutation.moc"
