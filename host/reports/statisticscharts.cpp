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
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtWidgets/QGraphicsLayout>

#include <algorithm>
#include <cmath>

namespace panelhost {

namespace {

constexpr int Width = 1064; // of a section on the page
constexpr int Height = 340;
constexpr int Scale = 2;
constexpr int MaxLevelLabels = 12; // more labels than these stand upright
constexpr int FontSize = 12;

constexpr QRgb PassedColor = 0xff2e9e55;
constexpr QRgb FailedColor = 0xffd0453b;
constexpr QRgb AbortedColor = 0xffb9c0ca;
constexpr QRgb FirstColor = 0xff1f5fbf;
constexpr QRgb SecondColor = 0xff8fb4ea;
constexpr QRgb TextColor = 0xff5a6577;

QFont font()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(FontSize);
    return font;
}

// Labels that are too wide for their place would be cut off.
int labelAngle(const QStringList &names)
{
    constexpr int Upright = -90;
    constexpr int Slanting = -20;
    const QFontMetrics metrics(font());
    const auto isWide = [&](const QString &name) {
        return metrics.horizontalAdvance(name) > Width / names.size() * 3 / 4;
    };
    if (names.size() > MaxLevelLabels)
        return Upright;
    return std::any_of(names.begin(), names.end(), isWide) ? Slanting : 0;
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
        m_names->append(names);
        m_names->setLabelsAngle(labelAngle(names));
        m_values->setTitleText(unit);
        m_values->setMin(0);
        addAxis(m_names, Qt::AlignBottom);
        addAxis(m_values, Qt::AlignLeft);
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
    /// Makes the left axis end at a round number that is not below @p most.
    void setMaximum(double most)
    {
        m_values->setRange(0, qMax(1.0, most));
        m_values->applyNiceNumbers();
        m_values->setLabelFormat(m_values->max() < 10 && !isCount() ? QStringLiteral("%.1f") : QStringLiteral("%.0f"));
    }
    QtCharts::QValueAxis *values() { return m_values; }

    QByteArray png()
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
        return buffer.data();
    }

private:
    bool isCount() const { return m_values->titleText() == QLatin1String("runs"); }
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

QByteArray runsChart(const Statistics &statistics)
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
    chart.setMaximum(double(most));
    return chart.png();
}

// Yields are near 100 %: the axis begins at the ten below the lowest one.
QByteArray yieldChart(const Statistics &statistics)
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
    chart.values()->setRange(qMin(90.0, std::floor(least / 10) * 10), 100);
    chart.values()->setLabelFormat(QStringLiteral("%.0f"));
    return chart.png();
}

QByteArray paretoChart(const RunCounts &counts)
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
    chart.setMaximum(failing.isEmpty() ? 0 : double(failing.first().runs));
    auto *axis = chart.addRightAxis(QStringLiteral("%"));
    axis->setRange(0, 100);
    axis->setLabelFormat(QStringLiteral("%.0f"));
    chart.add(share, axis);
    return chart.png();
}

QByteArray durationsChart(const QVector<PhaseDuration> &durations)
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
    chart.setMaximum(most);
    return chart.png();
}

}
