#include "factorymenuconfigparser.h"

#include <QtCore/QLoggingCategory>
#include <QtXml/QDomDocument>

#include <benchmark/benchmark.h>

using namespace LCD::FactoryModeImpl;

// What reading a menu costs, beside QDomDocument and a plain walk over its elements.

namespace {

QByteArray menu(qint64 items)
{
    QByteArray document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<LCD version=\"1.0\">\n  <MenuBar>\n";
    for (qint64 i = 0; i < items; ++i)
        document += "    <MenuItem Key=\"em.factorytest.Item" + QByteArray::number(i) + "\"/>\n";
    return document + "  </MenuBar>\n</LCD>\n";
}

void menuParser(benchmark::State &bench)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QByteArray document = menu(bench.range(0));
    for (auto _ : bench) {
        QList<FactoryMenuLevel1Item> items;
        FactoryMenuConfigParser().parseDocument(document, QString(), items);
        benchmark::DoNotOptimize(items.size());
    }
}

FactoryMenuLevel1Item menuItem(const QString &key)
{
    const QString tail = key.mid(key.lastIndexOf(QLatin1Char('.')) + 1);
    return {key, tail, QStringLiteral("container.") + tail.toLower(), {}};
}

void menuWalk(benchmark::State &bench)
{
    const QByteArray data = menu(bench.range(0));
    for (auto _ : bench) {
        QDomDocument document;
        document.setContent(data, true);
        QList<FactoryMenuLevel1Item> items;
        const QDomElement bar = document.documentElement().firstChildElement(QStringLiteral("MenuBar"));
        for (QDomElement item = bar.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
            items.append(menuItem(item.attribute(QStringLiteral("Key"))));
        benchmark::DoNotOptimize(items.size());
    }
}

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->Arg(30)->Arg(1000)->Arg(10000);
}

BENCHMARK(menuParser)->Name("parse a menu/component")->Apply(sizes);
BENCHMARK(menuWalk)->Name("parse a menu/bare")->Apply(sizes);

}

BENCHMARK_MAIN();
