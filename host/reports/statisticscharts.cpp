#include "reports/statisticscharts.h"

#include "records/statisticstext.h"

#include <QtCharts/QBarCategoryAxis>
#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QStackedBarSeries>
#include <QtCharts/QValueAxis>
#include <QtCore/QBuffer>
#include <QtCore/QRegularExpression>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtWidgets/QGraphicsLayout>
#include <QtWidgets/QGraphicsTextItem>

#include <algorithm>
#include <array>
#include <cmath>

namespace panelhost {

namespace {

constexpr int Width = 1064; // of a section on the page
constexpr int Height = 340;
constexpr int Scale = 2;
constexpr int FontSize = 12;

constexpr QRgb PassedColor = 0xff2e9e55;
constexpr QRgb FailedColor = 0xffd0453b;
constexpr QRgb AbortedColor = 0xffb9c0ca;
constexpr QRgb FirstColor = 0xff1f5fbf;
constexpr QRgb SecondColor = 0xff8fb4ea;
constexpr QRgb TextColor = 0xff5a6577;

QFont font(int pixelSize = FontSize)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    return font;
}

/// How the names below a chart are shown.
struct NameLabels
{
    QStringList texts; ///< HTML
    int pixelSize;
    bool isUpright;
};

// Dates have no words.
QStringList wordsOf(const QString &name)
{
    static const QRegularExpression betweenWords(QStringLiteral("(?<=[a-z]-)(?=[a-z])|(?<=[a-z] )"));
    return name.split(betweenWords);
}

bool haveRoom(const QStringList &texts, int pixelSize, int room)
{
    const QFontMetrics metrics(font(pixelSize));
    return std::all_of(texts.begin(), texts.end(),
                       [&](const QString &text) { return metrics.horizontalAdvance(text) <= room; });
}

// Qt cuts labels off that are too large for their place. So the words of a name stand one below the other if its line
// is too long, or the names stand upright, and the letters are as large as there is room for.
NameLabels nameLabels(const QStringList &names)
{
    constexpr int SideAxes = 130;
    constexpr int SideMargins = 18;
    constexpr int Margins = 10; // above and below
    constexpr std::array<int, 5> sizes = {FontSize, 11, 10, 9, 8};
    const int place = (Width - SideAxes) / qMax(1, names.size());
    QStringList levelTexts;
    QStringList wordTexts;
    QStringList words;
    for (const QString &name : names) {
        const QString text = name.toHtmlEscaped();
        levelTexts << text;
        wordTexts << wordsOf(text).join(QStringLiteral("<br>"));
        words += wordsOf(name);
    }
    for (const int size : {FontSize, 11, 10, 9}) {
        if (haveRoom(names, size, place - SideMargins))
            return {levelTexts, size, false};
        if (haveRoom(words, size, place - SideMargins))
            return {wordTexts, size, false};
    }
    const auto *size = std::find_if(sizes.begin(), sizes.end(), [&](int pixelSize) {
        return QFontMetrics(font(pixelSize)).height() + Margins <= place
            && haveRoom(names, pixelSize, Height / 4 - Margins); // labels get a quarter of the chart
    });
    return {levelTexts, size == sizes.end() ? sizes.back() : *size, true};
}

/// A chart with one place on the horizontal axis for each name.
class CategoryChart
{
public:
    CategoryChart(const QStringList &names, const QString &unit)
        : m_chart(new QtCharts::QChart), m_names(new QtCharts::QBarCategoryAxis), m_values(new QtCharts::QValueAxis)
    {
        m_chart->setBackgroundRoundness(0);
        m_chart->legend()->setAlignment(Qt::AlignTop);
        m_chart->legend()->setFont(font());
        const NameLabels labels = nameLabels(names);
        m_names->append(labels.texts);
        m_names->setLabelsAngle(labels.isUpright ? -90 : 0);
        m_values->setTitleText(unit);
        addAxis(m_names, Qt::AlignBottom);
        addAxis(m_values, Qt::AlignLeft);
        m_names->setLabelsFont(font(labels.pixelSize));
        m_names->setGridLineVisible(false);
    }

    Q_DISABLE_COPY(CategoryChart)

    /// Adds @p series to the left axis, or to @p axis.
    void add(QtCharts::QAbstractSeries *series, QtCharts::QValueAxis *axis = nullptr)
    {
        m_chart->addSeries(series);
        series->attachAxis(m_names);
        series->attachAxis(axis ? axis : m_values);
    }
    QtCharts::QValueAxis *addRightAxis(const QString &unit)
    {
        auto *axis = new QtCharts::QValueAxis;
        axis->setTitleText(unit);
        axis->setGridLineVisible(false);
        addAxis(axis, Qt::AlignRight);
        return axis;
    }
    QtCharts::QValueAxis *leftAxis() { return m_values; }
    /// Makes @p axis go from @p least to @p most, or a bit further, with labels at round numbers.
    static void setRange(QtCharts::QValueAxis *axis, double least, double most, double minStep)
    {
        const AxisTicks ticks = axisTicks(least, most, minStep);
        axis->setRange(ticks.least, ticks.most);
        axis->setTickCount(ticks.count);
        axis->setLabelFormat(QStringLiteral("%.%1f").arg(ticks.decimals));
    }

    ChartImage image()
    {
        QtCharts::QChartView view(m_chart);
        view.setRenderHint(QPainter::Antialiasing);
        view.setFrameShape(QFrame::NoFrame);
        view.setBackgroundBrush(Qt::white);
        m_chart->layout()->setContentsMargins(0, 0, 0, 0);
        view.resize(Width, Height);
        QImage image(QSize(Width, Height) * Scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(Scale);
        image.fill(Qt::white);
        // QGraphicsView::render() doesn't lay out a view that was never shown.
        view.QWidget::render(&image);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        return {buffer.data(), shownTexts(*view.scene())};
    }

private:
    static QStringList shownTexts(const QGraphicsScene &scene)
    {
        QStringList texts;
        const QList<QGraphicsItem *> items = scene.items();
        for (const QGraphicsItem *item : items) {
            const auto *text = qgraphicsitem_cast<const QGraphicsTextItem *>(item);
            if (text && text->isVisible() && !text->toPlainText().isEmpty())
                texts << text->toPlainText().remove(QLatin1Char('\n'));
        }
        return texts;
    }
    void addAxis(QtCharts::QAbstractAxis *axis, Qt::Alignment side)
    {
        axis->setLabelsFont(font());
        axis->setTitleFont(font());
        axis->setLabelsColor(QColor(TextColor));
        axis->setTitleBrush(QColor(TextColor));
        m_chart->addAxis(axis, side);
    }

    QtCharts::QChart *m_chart; // the view deletes it, with its axes
    QtCharts::QBarCategoryAxis *m_names;
    QtCharts::QValueAxis *m_values;
};

QtCharts::QBarSet *barSet(const QString &name, QRgb color)
{
    auto *set = new QtCharts::QBarSet(name);
    set->setColor(QColor(color));
    set->setBorderColor(QColor(color));
    return set;
}

QtCharts::QLineSeries *line(const QString &name, QRgb color)
{
    auto *series = new QtCharts::QLineSeries;
    series->setName(name);
    series->setPen(QPen(QColor(color), 2));
    series->setPointsVisible(true);
    return series;
}

QStringList namesOf(const QVector<StatisticsGroup> &groups)
{
    QStringList names;
    for (const StatisticsGroup &group : groups)
        names << group.name;
    return names;
}

}

AxisTicks axisTicks(double least, double most, double minStep)
{
    constexpr int Intervals = 5;
    const double wanted = qMax((most - least) / Intervals, minStep);
    const int exponent = static_cast<int>(std::floor(std::log10(wanted) + 1e-9));
    const double power = std::pow(10.0, exponent);
    double step = 10 * power;
    for (const double factor : {5.0, 2.0, 1.0}) {
        if (factor * power > wanted * (1 - 1e-9))
            step = factor * power;
    }
    const double first = std::floor(least / step + 1e-9);
    const double last = qMax(first + 1, std::ceil(most / step - 1e-9));
    const int decimals = qMax(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
    return {first * step, last * step, static_cast<int>(last - first) + 1, decimals};
}

ChartImage runsChart(const Statistics &statistics)
{
    CategoryChart chart(namesOf(statistics.groups), QStringLiteral("runs"));
    auto *passed = barSet(QStringLiteral("passed"), PassedColor);
    auto *failed = barSet(QStringLiteral("failed"), FailedColor);
    auto *aborted = barSet(QStringLiteral("aborted"), AbortedColor);
    qint64 most = 0;
    for (const StatisticsGroup &group : statistics.groups) {
        *passed << double(group.counts.passed);
        *failed << double(group.counts.failed);
        *aborted << double(group.counts.aborted);
        most = qMax(most, group.counts.runs());
    }
    auto *series = new QtCharts::QStackedBarSeries;
    series->append({passed, failed, aborted});
    chart.add(series);
    CategoryChart::setRange(chart.leftAxis(), 0, double(most), 1);
    return chart.image();
}

// Yields are near 100 %: the axis doesn't begin at 0.
ChartImage yieldChart(const Statistics &statistics)
{
    QVector<StatisticsGroup> groups;
    for (const StatisticsGroup &group : statistics.groups) {
        if (group.counts.units > 0)
            groups.append(group);
    }
    CategoryChart chart(namesOf(groups), QStringLiteral("%"));
    auto *first = line(QStringLiteral("first-pass yield"), FirstColor);
    auto *final = line(QStringLiteral("final yield"), PassedColor);
    double least = 100;
    for (int index = 0; index < groups.size(); ++index) {
        const RunCounts &counts = groups.at(index).counts;
        const auto percent = [&counts](qint64 part) { return 100.0 * double(part) / double(counts.units); };
        first->append(index, percent(counts.firstPassed));
        final->append(index, percent(counts.finallyPassed));
        least = qMin(least, qMin(percent(counts.firstPassed), percent(counts.finallyPassed)));
    }
    chart.add(first);
    chart.add(final);
    CategoryChart::setRange(chart.leftAxis(), qMin(90.0, least), 100, 1);
    return chart.image();
}

ChartImage paretoChart(const RunCounts &counts)
{
    const QVector<FailingPhase> failing = failingPhases(counts);
    QStringList names;
    auto *runs = barSet(QStringLiteral("failed runs"), FailedColor);
    auto *share = line(QStringLiteral("cumulative share"), FirstColor);
    for (const FailingPhase &each : failing) {
        share->append(names.size(), 100 * each.cumulativeShare);
        names << phaseText(each.phase);
        *runs << double(each.runs);
    }
    CategoryChart chart(names, QStringLiteral("runs"));
    auto *bars = new QtCharts::QBarSeries;
    bars->append(runs);
    chart.add(bars);
    CategoryChart::setRange(chart.leftAxis(), 0, failing.isEmpty() ? 0 : double(failing.first().runs), 1);
    auto *axis = chart.addRightAxis(QStringLiteral("%"));
    CategoryChart::setRange(axis, 0, 100, 1);
    chart.add(share, axis);
    return chart.image();
}

ChartImage durationsChart(const QVector<PhaseDuration> &durations)
{
    QStringList names;
    auto *median = barSet(QStringLiteral("median"), FirstColor);
    auto *ninetieth = barSet(QStringLiteral("90th percentile"), SecondColor);
    double most = 0;
    for (const PhaseDuration &duration : durations) {
        names << duration.phase;
        *median << double(duration.median) / 1000;
        *ninetieth << double(duration.ninetieth) / 1000;
        most = qMax(most, double(duration.ninetieth) / 1000);
    }
    CategoryChart chart(names, QStringLiteral("seconds"));
    auto *bars = new QtCharts::QBarSeries;
    bars->append({median, ninetieth});
    chart.add(bars);
    CategoryChart::setRange(chart.leftAxis(), 0, most, 0.01);
    return chart.image();
}

}
