#include "records/machinetestruns.h"
#include "reports/statisticscharts.h"

#include <QtCore/QDate>
#include <QtGui/QImage>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

using namespace panelhost;

/// The charts of the statistics page: each label is shown whole, and no two labels of an axis are the same.
class StatisticsChartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void labelsOfAnAxisDiffer_data();
    void labelsOfAnAxisDiffer();
    void labelsAreWhole_data();
    void labelsAreWhole();
    void durations_data();
    void durations();
    void aName();
};

namespace {

Statistics periods(const QStringList &names, qint64 runs)
{
    Statistics statistics;
    for (const QString &name : names) {
        StatisticsGroup group{name, {}, {}};
        group.counts.passed = group.counts.units = group.counts.firstPassed = runs;
        group.counts.finallyPassed = runs / 2;
        statistics.counts += group.counts;
        statistics.groups.append(group);
    }
    return statistics;
}

QStringList days(int count)
{
    QStringList names;
    for (int day = 0; day < count; ++day)
        names << QDate(2026, 3, 1).addDays(day).toString(Qt::ISODate);
    return names;
}

void verify(const ChartImage &chart, const QStringList &names)
{
    const QImage image = QImage::fromData(chart.png, "PNG");
    QCOMPARE(image.size(), QSize(2128, 680));
    const QString shown = chart.labels.join(QLatin1Char('|'));
    QVERIFY2(!shown.contains(QStringLiteral("...")), qPrintable(shown));
    for (const QString &name : names)
        QVERIFY2(chart.labels.contains(name), qPrintable(name + QStringLiteral(" in ") + shown));
}

// The axes of one chart have different ranges, but each number of an axis is there once.
void verifyNumbers(const ChartImage &chart, const QStringList &numbers)
{
    QStringList found;
    for (const QString &label : chart.labels) {
        bool isNumber = false;
        label.toDouble(&isNumber);
        if (isNumber)
            found << label;
    }
    std::sort(found.begin(), found.end(),
              [](const QString &a, const QString &b) { return a.toDouble() < b.toDouble(); });
    QCOMPARE(found, numbers);
}

}

void StatisticsChartsTest::labelsOfAnAxisDiffer_data()
{
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::addColumn<double>("minStep");
    QTest::addColumn<QString>("labels");
    const auto row = [](const char *name, double least, double most, double minStep, const char *labels) {
        QTest::newRow(name) << least << most << minStep << QString::fromLatin1(labels);
    };
    row("nothing", 0, 0, 1, "0 1");
    row("one run", 0, 1, 1, "0 1");
    row("three runs", 0, 3, 1, "0 1 2 3");
    row("runs", 0, 7, 1, "0 2 4 6 8");
    row("many runs", 0, 263, 1, "0 100 200 300");
    row("a million runs", 0, 1000000, 1, "0 200000 400000 600000 800000 1000000");
    row("high yields", 90, 100, 1, "90 92 94 96 98 100");
    row("yields", 82.3, 100, 1, "80 85 90 95 100");
    row("low yields", 31, 100, 1, "20 40 60 80 100");
    row("no yield", 0, 100, 1, "0 20 40 60 80 100");
    row("short phases", 0, 0.3, 0.01, "0.0 0.1 0.2 0.3");
    row("very short phases", 0, 0.04, 0.01, "0.00 0.01 0.02 0.03 0.04");
    row("phases", 0, 38, 0.01, "0 10 20 30 40");
    row("seven seconds", 0, 7.1, 0.01, "0 2 4 6 8");
    row("two seconds", 0, 2.1, 0.01, "0.0 0.5 1.0 1.5 2.0 2.5");
}

void StatisticsChartsTest::labelsOfAnAxisDiffer()
{
    QFETCH(double, least);
    QFETCH(double, most);
    QFETCH(double, minStep);
    const AxisTicks ticks = axisTicks(least, most, minStep);
    QStringList labels;
    for (int tick = 0; tick < ticks.count; ++tick)
        labels << QString::number(ticks.least + (ticks.most - ticks.least) * tick / (ticks.count - 1), 'f',
                                  ticks.decimals);
    QTEST(labels.join(QLatin1Char(' ')), "labels");
}

void StatisticsChartsTest::labelsAreWhole_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<qint64>("runs");
    for (const int count : {1, 2, 12, 13, 40}) {
        for (const qint64 runs : {1LL, 3LL, 1000000LL})
            QTest::addRow("%d days, %lld runs", count, runs) << count << qint64(runs);
    }
}

void StatisticsChartsTest::labelsAreWhole()
{
    QFETCH(int, count);
    QFETCH(qint64, runs);
    const Statistics statistics = periods(days(count), runs);
    const ChartImage chart = runsChart(statistics);
    verify(chart, days(count) + QStringList{QStringLiteral("passed"), QStringLiteral("aborted")});
    verify(yieldChart(statistics), days(count));
    if (runs == 1)
        verifyNumbers(chart, {QStringLiteral("0"), QStringLiteral("1")});
    if (runs == 3)
        verifyNumbers(chart, {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
}

void StatisticsChartsTest::durations_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::newRow("machine test") << machineTestPhases();
    QTest::newRow("one") << QStringList{QStringLiteral("typec-communication")};
    QTest::newRow("repair pages") << QStringList{QStringLiteral("screen-light"),
                                                 QStringLiteral("screen-bad-pixel"),
                                                 QStringLiteral("button-light"),
                                                 QStringLiteral("button-function"),
                                                 QStringLiteral("tbar"),
                                                 QStringLiteral("net"),
                                                 QStringLiteral("usb"),
                                                 QStringLiteral("touch-screen"),
                                                 QStringLiteral("log-export"),
                                                 QStringLiteral("factory-reset"),
                                                 QStringLiteral("joystick"),
                                                 QStringLiteral("knob"),
                                                 QStringLiteral("a page with a long name")};
}

void StatisticsChartsTest::durations()
{
    QFETCH(QStringList, names);
    QVector<PhaseDuration> list;
    RunCounts counts;
    for (const QString &name : qAsConst(names)) {
        list.append({name, 10, 1300, 2100});
        counts.phases.insert(name, 3);
        counts.failed += 3;
    }
    const ChartImage chart = durationsChart(list);
    verify(chart, names);
    verifyNumbers(chart, QStringLiteral("0.0 0.5 1.0 1.5 2.0 2.5").split(QLatin1Char(' ')));
    verify(paretoChart(counts), names);
}

// Labels are texts, not HTML.
void StatisticsChartsTest::aName()
{
    verify(runsChart(periods({QStringLiteral("<b>&amp;")}, 1)), {QStringLiteral("<b>&amp;")});
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    StatisticsChartsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_statisticscharts.moc"
