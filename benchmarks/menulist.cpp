#include "factorymenuconfigparser.h"
#include "factorymodeitemdelegate.h"
#include "factorymodewidget.h"
#include "processortime.h"

#include <QtCore/QFile>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTemporaryDir>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

#include <benchmark/benchmark.h>

#include <optional>

// What showing the menu costs, beside plain lists of Qt with the same rows.

using namespace LCD::FactoryModeImpl;

namespace {

const QSize LcdSize(800, 480);

// The beginnings of the lines that the menu logs before and after it fills its list.
constexpr auto BeginLine = "[FactoryModeWidget] buildLevel1List: Starting, _level1Items";
constexpr auto EndLine = "[FactoryModeWidget] buildLevel1List: Completed, _listLevel1";

/// A directory with a menu of @p items entries.
class MenuDirectory
{
public:
    explicit MenuDirectory(qint64 items)
    {
        QFile file(m_directory.filePath(QStringLiteral("factorymenu.xml")));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("The menu file can't be written.");
        file.write("<LCD version=\"1.0\"><MenuBar>\n");
        for (qint64 i = 0; i < items; ++i)
            file.write("<MenuItem Key=\"em.factorytest.Item" + QByteArray::number(i) + "\"/>\n");
        file.write("</MenuBar></LCD>\n");
    }
    QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
};

/// The same two lists without the component.
class BareMenu : public QWidget
{
public:
    explicit BareMenu(const QString &directory)
    {
        FactoryMenuConfigParser().load(directory, m_items);
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        for (QListWidget *list : {m_level1, m_level2}) {
            list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            layout->addWidget(list, 1);
        }
        m_level2->hide();
    }

    void fill()
    {
        m_level1->clear();
        qDebug() << BeginLine << "count:" << m_items.size();
        for (int i = 0; i < m_items.size(); ++i) {
            const FactoryMenuLevel1Item &item = m_items.at(i);
            auto *row = new QListWidgetItem(item.titleKey);
            row->setData(Qt::ForegroundRole, QBrush(Qt::white));
            row->setData(Qt::UserRole, item.key);
            row->setData(Qt::UserRole + 1, i);
            m_level1->addItem(row);
            qDebug() << "[FactoryModeWidget] buildLevel1List: Added item" << i << "- title:" << item.titleKey
                     << "key:" << item.key << "titleKey:" << item.titleKey;
        }
        qDebug() << EndLine << "now has" << m_level1->count() << "items";
    }

    void enter()
    {
        m_level1->setFocus(Qt::OtherFocusReason);
        m_level1->setCurrentRow(0);
        show();
    }

private:
    QList<FactoryMenuLevel1Item> m_items;
    QListWidget *m_level1 = new QListWidget(this);
    QListWidget *m_level2 = new QListWidget(this);
};

/// Measures the processor time between the first and the last log line about a list that is filled. Drops all lines.
class FillClock
{
public:
    FillClock()
    {
        QLoggingCategory::setFilterRules(QString());
        s_last = qInstallMessageHandler(&FillClock::onLine);
    }
    ~FillClock()
    {
        qInstallMessageHandler(s_last);
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    }
    FillClock(const FillClock &) = delete;
    FillClock &operator=(const FillClock &) = delete;

    static double seconds() { return s_end - s_begin; }

private:
    static void onLine(QtMsgType, const QMessageLogContext &, const QString &line)
    {
        if (line.startsWith(QLatin1String(BeginLine)))
            s_begin = processorTime();
        else if (line.startsWith(QLatin1String(EndLine)))
            s_end = processorTime();
    }

    inline static QtMessageHandler s_last = nullptr;
    inline static double s_begin = 0;
    inline static double s_end = 0;
};

// Parsing the file isn't measured.
void fillComponent(benchmark::State &bench)
{
    const MenuDirectory directory(bench.range(0));
    FactoryModeWidget menu(nullptr);
    const FillClock clock;
    for (auto _ : bench) {
        menu.setFactoryModeData(QStringLiteral("menuConfigPath"), directory.path());
        bench.SetIterationTime(FillClock::seconds());
    }
}

void fillBare(benchmark::State &bench)
{
    const MenuDirectory directory(bench.range(0));
    BareMenu menu(directory.path());
    const FillClock clock;
    for (auto _ : bench) {
        menu.fill();
        bench.SetIterationTime(FillClock::seconds());
    }
}

void enterComponent(benchmark::State &bench)
{
    const MenuDirectory directory(bench.range(0));
    for (auto _ : bench) {
        bench.PauseTiming();
        std::optional<FactoryModeWidget> menu(std::in_place, nullptr);
        menu->setFactoryModeData(QStringLiteral("menuConfigPath"), directory.path());
        menu->setFactoryModeSize(LcdSize);
        QCoreApplication::processEvents(); // the menu hides itself
        bench.ResumeTiming();
        menu->enterFactoryMode();
        benchmark::DoNotOptimize(menu->grab());
        bench.PauseTiming();
        menu.reset();
        bench.ResumeTiming();
    }
}

void enterBare(benchmark::State &bench)
{
    const MenuDirectory directory(bench.range(0));
    for (auto _ : bench) {
        bench.PauseTiming();
        std::optional<BareMenu> menu(std::in_place, directory.path());
        menu->fill();
        menu->resize(LcdSize);
        bench.ResumeTiming();
        menu->enter();
        benchmark::DoNotOptimize(menu->grab());
        bench.PauseTiming();
        menu.reset();
        bench.ResumeTiming();
    }
}

void paintRow(benchmark::State &bench, const QStyledItemDelegate &delegate)
{
    QListWidget list;
    auto *row = new QListWidgetItem(QStringLiteral("Screen Bad Pixel"), &list);
    row->setData(Qt::ForegroundRole, QBrush(Qt::white));
    QImage image(LcdSize.width(), 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.initFrom(&list);
    option.widget = &list;
    option.font = list.font();
    option.rect = image.rect();
    const QModelIndex index = list.model()->index(0, 0);
    for (auto _ : bench)
        delegate.paint(&painter, option, index);
}

void rowComponent(benchmark::State &bench)
{
    paintRow(bench, FactoryModeItemDelegate());
}

void rowBare(benchmark::State &bench)
{
    paintRow(bench, QStyledItemDelegate());
}

void sizes(benchmark::internal::Benchmark *bench)
{
    bench->Arg(30)->Arg(1000)->Arg(10000);
}

BENCHMARK(fillComponent)->Name("fill the list/component")->Apply(sizes)->UseManualTime();
BENCHMARK(fillBare)->Name("fill the list/bare")->Apply(sizes)->UseManualTime();
BENCHMARK(enterComponent)->Name("enter and first paint/component")->Apply(sizes);
BENCHMARK(enterBare)->Name("enter and first paint/bare")->Apply(sizes);
BENCHMARK(rowComponent)->Name("paint a row/component");
BENCHMARK(rowBare)->Name("paint a row/bare");

}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
