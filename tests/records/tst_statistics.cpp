#include "prooflength.h"
#include "records/recordstore.h"
#include "records/statistics.h"
#include "runfactory.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>
#include <QtTest/QtTest>

#include <algorithm>
#include <cmath>

using namespace panelhost;

/// Statistics of saved runs: worked out by hand, and computed again from what the command runs prints.
class StatisticsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void durationsAreRounded_data();
    void durationsAreRounded();
    void percentiles_data();
    void percentiles();
    void byHand();
    void groupsByHand_data();
    void groupsByHand();
    void runsMaySaveInAnyOrder();
    void aRecountFindsTheSame();
    void sameAsFromTheRuns_data();
    void sameAsFromTheRuns();
    void csvHasOneLinePerGroup();
    void tablesOfAStore();
    void oneUnitOnOneDay();
    void aStoreWithoutRuns();
    void thePageIsSelfContained();
    void wrongOptions_data();
    void wrongOptions();

private:
    struct Result
    {
        int status = -1;
        QByteArray out;
        QString err;
    };
    static Result panelhost(const QStringList &arguments);
    Result stats(const QStringList &arguments) const;
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    QTemporaryDir m_directory;
    QVector<QJsonObject> m_runs; ///< of many.sqlite, as the command runs prints them
};

namespace {

const int manyRuns = proofLength(2000, 10000, 100000);

QString q(const char *text)
{
    return QString::fromUtf8(text);
}

std::unique_ptr<RecordStore> store(const QString &path, const QVector<Run> &runs)
{
    QString error;
    auto store = RecordStore::open(path, &error);
    QVector<StoredRun> stored;
    for (const Run &run : runs)
        stored.append({run, qCompress(QByteArray())});
    if (!store || !store->saveAll(stored, RecordStore::Forwarding::None, &error))
        qFatal("%s", qPrintable(error));
    return store;
}

/// A machine test of @p unit that begins at noon on day @p day of March 2026. Each phase takes a second more than the
/// one before; @p failed is the one that fails.
Run machineRun(const char *unit, const char *station, int day, RunOutcome outcome, int failed = -1)
{
    static int minute = 0;
    const QStringList names{q("brightness"), q("pattern"), q("tbar"), q("net-port")};
    Run run;
    run.id = QUuid::createUuid();
    run.session.id = QUuid::createUuid();
    run.session.begin = QDateTime({2026, 3, day}, {12, 0}, Qt::UTC).addSecs(60 * minute++);
    run.session.unit = q(unit);
    run.session.station = q(station);
    run.position = 1;
    run.outcome = outcome;
    for (int phase = 0; phase < names.size(); ++phase) {
        const qint64 duration = 1000 * (day + phase);
        const bool isLast = outcome == RunOutcome::Failed ? phase == failed : outcome == RunOutcome::Aborted;
        run.phases.append({names.at(phase), isLast ? outcome : RunOutcome::Passed, run.end, duration, {}});
        run.end += duration;
        if (isLast)
            break;
    }
    return run;
}

QVector<Run> runsByHand()
{
    constexpr int TBar = 2;
    constexpr int Net = 3;
    return {machineRun("A1", "S1", 1, RunOutcome::Failed, TBar), machineRun("B2", "S1", 1, RunOutcome::Passed),
            machineRun("", "S1", 1, RunOutcome::Passed),         machineRun("A1", "S1", 2, RunOutcome::Passed),
            machineRun("C3", "S2", 2, RunOutcome::Failed, Net),  machineRun("D4", "S2", 2, RunOutcome::Aborted),
            machineRun("C3", "S2", 9, RunOutcome::Failed, TBar)};
}

Statistics read(RecordStore &store, const StatisticsQuery &query = {})
{
    QString error;
    const auto statistics = readStatistics(store, query, &error);
    if (!statistics)
        qFatal("%s", qPrintable(error));
    return *statistics;
}

QString text(const RunCounts &counts)
{
    return q("runs %1/%2/%3 days %4 units %5 first %6 final %7 top %8")
        .arg(counts.passed)
        .arg(counts.failed)
        .arg(counts.aborted)
        .arg(counts.days)
        .arg(counts.units)
        .arg(counts.firstPassed)
        .arg(counts.finallyPassed)
        .arg(counts.topFailingPhase())
        .trimmed();
}

QStringList texts(const QVector<PhaseDuration> &durations)
{
    QStringList list;
    for (const PhaseDuration &duration : durations)
        list << q("%1 %2 %3 %4").arg(duration.phase).arg(duration.count).arg(duration.median).arg(duration.ninetieth);
    return list;
}

// A unit may have been counted at a later run before its first one came.
QStringList rowsOf(RecordStore &store, const QString &table)
{
    QStringList list;
    const QString condition = table == q("unit_count") ? q(" WHERE units > 0") : QString();
    StoreRows rows = store.connection().execute(q("SELECT * FROM %1%2").arg(table, condition));
    while (rows && rows.next()) {
        QStringList row;
        for (int column = 0; rows.value(column).isValid(); ++column)
            row << rows.value(column).toString();
        list << row.join(QLatin1Char('|'));
    }
    list.sort();
    return list;
}

// What follows computes the figures from the printed runs, by sorting and counting all of them.

struct Selection
{
    QString kind;
    QString station;
    QString since;
    QString until;
    QString by;
};

QString dayOf(const QJsonObject &run)
{
    return run.value(q("begin")).toString().left(10);
}

bool isSelected(const QJsonObject &run, const Selection &selection)
{
    return run.value(q("kind")).toString() == selection.kind
        && (selection.station.isEmpty() || run.value(q("station")).toString() == selection.station)
        && (selection.since.isEmpty() || dayOf(run) >= selection.since)
        && (selection.until.isEmpty() || dayOf(run) <= selection.until);
}

QString groupOf(const QJsonObject &run, const QString &by)
{
    if (by == q("station"))
        return run.value(q("station")).toString();
    if (by == q("day"))
        return dayOf(run);
    if (by == q("month"))
        return dayOf(run).left(7);
    int year = 0;
    const int week = QDate::fromString(dayOf(run), Qt::ISODate).weekNumber(&year);
    return by == q("week") ? QString::asprintf("%d-W%02d", year, week) : QString();
}

QJsonArray phasesOf(const QVector<QJsonObject> &runs)
{
    QStringList order;
    QMap<QString, QVector<double>> durations;
    for (const QJsonObject &run : runs) {
        const QJsonArray phases = run.value(q("phases")).toArray();
        for (const QJsonValue &phase : phases) {
            if (phase[q("outcome")].toString() != q("aborted"))
                durations[phase[q("name")].toString()] << phase[q("duration")].toDouble();
        }
    }
    QJsonArray array;
    for (const char *name : {"brightness", "pattern", "key-light", "key-walk", "tbar", "net-port", "usb-port",
                             "typec-communication", "typec-power", "poe"}) {
        QVector<double> values = durations.value(q(name));
        if (values.isEmpty())
            continue;
        std::sort(values.begin(), values.end());
        // All durations of the invented runs are below 100 s.
        const auto rounded = [&values](double share) {
            const int rank = int(std::ceil(share * values.size() - 1e-9));
            return std::floor(values.at(rank - 1) / 100 + 0.5) * 100;
        };
        array.append(QJsonObject{{q("name"), q(name)},
                                 {q("count"), values.size()},
                                 {q("median"), rounded(0.5)},
                                 {q("percentile90"), rounded(0.9)}});
    }
    return array;
}

QJsonArray paretoOf(const QVector<QJsonObject> &runs)
{
    QMap<QString, int> counts;
    double failed = 0;
    for (const QJsonObject &run : runs) {
        if (run.value(q("outcome")).toString() != q("failed"))
            continue;
        ++failed;
        const QJsonArray phases = run.value(q("phases")).toArray();
        for (const QJsonValue &phase : phases) {
            if (phase[q("outcome")].toString() == q("failed"))
                ++counts[phase[q("name")].toString()];
        }
    }
    QJsonArray array;
    double sum = 0;
    while (!counts.isEmpty()) {
        auto most = counts.begin();
        for (auto each = counts.begin(); each != counts.end(); ++each)
            most = each.value() > most.value() ? each : most;
        sum += most.value();
        array.append(QJsonObject{{q("phase"), most.key()},
                                 {q("runs"), most.value()},
                                 {q("share"), most.value() / failed},
                                 {q("cumulativeShare"), sum / failed}});
        counts.erase(most);
    }
    return array;
}

/// The figures of @p runs. @p units are those whose first run with a verdict is one of them, with the outcomes of the
/// first and the last such run.
QJsonObject figuresOf(const QVector<QJsonObject> &runs, const QVector<QPair<QString, QString>> &units)
{
    QMap<QString, int> outcomes;
    QSet<QString> days;
    for (const QJsonObject &run : runs) {
        ++outcomes[run.value(q("outcome")).toString()];
        days << dayOf(run);
    }
    int firstPassed = 0;
    int finallyPassed = 0;
    for (const auto &unit : units) {
        firstPassed += unit.first == q("passed") ? 1 : 0;
        finallyPassed += unit.second == q("passed") ? 1 : 0;
    }
    const auto ratio = [](int part, int whole) { return whole > 0 ? QJsonValue(double(part) / whole) : QJsonValue(); };
    return {{q("runs"), runs.size()},
            {q("passed"), outcomes.value(q("passed"))},
            {q("failed"), outcomes.value(q("failed"))},
            {q("aborted"), outcomes.value(q("aborted"))},
            {q("days"), days.size()},
            {q("runsPerDay"), ratio(runs.size(), days.size())},
            {q("units"), units.size()},
            {q("unitsPerDay"), ratio(units.size(), days.size())},
            {q("firstPassed"), firstPassed},
            {q("firstPassYield"), ratio(firstPassed, units.size())},
            {q("finallyPassed"), finallyPassed},
            {q("finalYield"), ratio(finallyPassed, units.size())},
            {q("failingPhases"), paretoOf(runs)}};
}

QJsonObject computed(const QVector<QJsonObject> &all, const Selection &selection)
{
    QMap<QString, QVector<QJsonObject>> ofUnit;
    QMap<QString, QVector<QJsonObject>> groups;
    QVector<QJsonObject> selected;
    for (const QJsonObject &run : all) {
        const QString unit = run.value(q("unit")).toString();
        const bool hasVerdict = run.value(q("outcome")).toString() != q("aborted");
        if (run.value(q("kind")).toString() == selection.kind && hasVerdict && !unit.isEmpty())
            ofUnit[unit] << run;
        if (isSelected(run, selection)) {
            selected << run;
            groups[groupOf(run, selection.by)] << run;
        }
    }
    QMap<QString, QVector<QPair<QString, QString>>> unitsOfGroups;
    QVector<QPair<QString, QString>> units;
    for (const QVector<QJsonObject> &runs : qAsConst(ofUnit)) {
        if (!isSelected(runs.first(), selection))
            continue;
        units.append({runs.first().value(q("outcome")).toString(), runs.last().value(q("outcome")).toString()});
        unitsOfGroups[groupOf(runs.first(), selection.by)] << units.last();
    }
    const auto textOrNull = [](const QString &value) { return value.isEmpty() ? QJsonValue() : QJsonValue(value); };
    QJsonObject object = figuresOf(selected, units);
    object.insert(q("kind"), selection.kind);
    object.insert(q("station"), textOrNull(selection.station));
    object.insert(q("since"), textOrNull(selection.since));
    object.insert(q("until"), textOrNull(selection.until));
    object.insert(q("phases"), phasesOf(selected));
    if (selection.by.isEmpty())
        return object;
    QJsonArray array;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        QJsonObject figures = figuresOf(group.value(), unitsOfGroups.value(group.key()));
        figures.insert(q("name"), group.key());
        const QJsonArray phases = phasesOf(group.value());
        if ((selection.by == q("station") || selection.by == q("month")) && !phases.isEmpty())
            figures.insert(q("phases"), phases);
        array.append(figures);
    }
    object.insert(q("by"), selection.by);
    object.insert(q("groups"), array);
    return object;
}

// Says where two values differ, because a whole object is too long to read.
QString difference(const QJsonValue &found, const QJsonValue &expected, const QString &place = {})
{
    if (expected.isDouble() && found.isDouble() && std::abs(expected.toDouble() - found.toDouble()) < 1e-9)
        return {};
    if (expected.isArray() && found.isArray() && expected.toArray().size() == found.toArray().size()) {
        for (int index = 0; index < expected.toArray().size(); ++index) {
            const QString text = difference(found[index], expected[index], place + q("[%1]").arg(index));
            if (!text.isEmpty())
                return text;
        }
        return {};
    }
    if (expected.isObject() && found.isObject() && expected.toObject().keys() == found.toObject().keys()) {
        for (const QString &key : expected.toObject().keys()) {
            const QString text = difference(found[key], expected[key], place + QLatin1Char('.') + key);
            if (!text.isEmpty())
                return text;
        }
        return {};
    }
    if (found == expected)
        return {};
    const auto toText = [](const QJsonValue &value) {
        return QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).left(300));
    };
    return q("%1: found %2, expected %3").arg(place, toText(found), toText(expected));
}

}

StatisticsTest::Result StatisticsTest::panelhost(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral(PANELHOST), arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
}

StatisticsTest::Result StatisticsTest::stats(const QStringList &arguments) const
{
    return panelhost(QStringList{q("stats"), q("--records"), q("sqlite:") + path("many.sqlite")} + arguments);
}

void StatisticsTest::initTestCase()
{
    RunFactory factory(manyRuns);
    QVector<Run> runs;
    for (int index = 0; index < manyRuns; ++index)
        runs << factory.run(index);
    store(path("many.sqlite"), runs);
    store(path("hand.sqlite"), runsByHand());
    const Result result = panelhost({q("runs"), q("--json"), q("--records"), q("sqlite:") + path("many.sqlite")});
    QCOMPARE(result.status, 0);
    for (const QByteArray &line : result.out.split('\n')) {
        if (!line.isEmpty())
            m_runs << QJsonDocument::fromJson(line).object();
    }
    QCOMPARE(m_runs.size(), manyRuns);
}

void StatisticsTest::durationsAreRounded_data()
{
    QTest::addColumn<qint64>("duration");
    QTest::addColumn<qint64>("rounded");
    const QVector<QPair<qint64, qint64>> rows{
        {0, 0},           {49, 0},          {50, 100},         {99949, 99900},     {99999, 100000},
        {100499, 100000}, {100500, 101000}, {999999, 1000000}, {1004999, 1000000}, {1005000, 1010000}};
    for (const auto &row : rows)
        QTest::addRow("%lld", row.first) << row.first << row.second;
}

void StatisticsTest::durationsAreRounded()
{
    QFETCH(qint64, duration);
    QTEST(roundedDuration(duration), "rounded");
}

void StatisticsTest::percentiles_data()
{
    using Counts = QMap<qint64, qint64>;
    QTest::addColumn<Counts>("counts");
    QTest::addColumn<qint64>("median");
    QTest::addColumn<qint64>("ninetieth");
    QTest::newRow("none") << Counts{} << qint64(-1) << qint64(-1);
    QTest::newRow("one") << Counts{{7, 1}} << qint64(7) << qint64(7);
    QTest::newRow("two") << Counts{{7, 1}, {9, 1}} << qint64(7) << qint64(9);
    QTest::newRow("ten") << Counts{{1, 4}, {2, 1}, {3, 4}, {4, 1}} << qint64(2) << qint64(3);
    QTest::newRow("eleven") << Counts{{1, 5}, {2, 1}, {3, 3}, {4, 2}} << qint64(2) << qint64(4);
}

void StatisticsTest::percentiles()
{
    using Counts = QMap<qint64, qint64>;
    QFETCH(Counts, counts);
    QTEST(percentile(counts, 50), "median");
    QTEST(percentile(counts, 90), "ninetieth");
}

// A1 fails at the T-Bar and passes the next day, B2 passes, C3 fails twice, D4 has no verdict, and one run has no unit.
void StatisticsTest::byHand()
{
    QString error;
    const auto records = RecordStore::openExisting(path("hand.sqlite"), &error);
    const Statistics all = read(*records);
    QCOMPARE(text(all.counts), q("runs 3/3/1 days 3 units 3 first 1 final 2 top tbar"));
    QStringList failing;
    for (const FailingPhase &phase : failingPhases(all.counts))
        failing << q("%1 %2 %3 %4")
                       .arg(phase.phase)
                       .arg(phase.runs)
                       .arg(phase.share, 0, 'f', 2)
                       .arg(phase.cumulativeShare, 0, 'f', 2);
    QCOMPARE(failing, (QStringList{q("tbar 2 0.67 0.67"), q("net-port 1 0.33 1.00")}));
    // Brightness takes 1 s three times, 2 s twice and 9 s once; the aborted one doesn't count.
    QCOMPARE(texts(all.durations),
             (QStringList{q("brightness 6 1000 9000"), q("pattern 6 2000 10000"), q("tbar 6 3000 11000"),
                          q("net-port 4 4000 5000")}));
    StatisticsQuery query;
    query.until = QDate(2026, 3, 2);
    QCOMPARE(text(read(*records, query).counts), q("runs 3/2/1 days 2 units 3 first 1 final 2 top net-port"));
    QCOMPARE(texts(read(*records, query).durations).first(), q("brightness 5 1000 2000"));
    query.since = query.until;
    QCOMPARE(text(read(*records, query).counts), q("runs 1/1/1 days 1 units 1 first 0 final 0 top net-port"));
    query = {};
    query.station = q("S1");
    QCOMPARE(text(read(*records, query).counts), q("runs 3/1/0 days 2 units 2 first 1 final 2 top tbar"));
    query.kind = RunKind::Aging;
    QCOMPARE(text(read(*records, query).counts), q("runs 0/0/0 days 0 units 0 first 0 final 0 top"));
}

void StatisticsTest::groupsByHand_data()
{
    using Groups = StatisticsQuery::Groups;
    QTest::addColumn<int>("groups");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("station") << int(Groups::Station)
                             << QStringList{q("S1 runs 3/1/0 days 2 units 2 first 1 final 2 top tbar 4"),
                                            q("S2 runs 0/2/1 days 2 units 1 first 0 final 0 top net-port 4")};
    QTest::newRow("day") << int(Groups::Day)
                         << QStringList{q("2026-03-01 runs 2/1/0 days 1 units 2 first 1 final 2 top tbar 0"),
                                        q("2026-03-02 runs 1/1/1 days 1 units 1 first 0 final 0 top net-port 0"),
                                        q("2026-03-09 runs 0/1/0 days 1 units 0 first 0 final 0 top tbar 0")};
    // 1 March 2026 is a Sunday.
    QTest::newRow("week") << int(Groups::Week)
                          << QStringList{q("2026-W09 runs 2/1/0 days 1 units 2 first 1 final 2 top tbar 0"),
                                         q("2026-W10 runs 1/1/1 days 1 units 1 first 0 final 0 top net-port 0"),
                                         q("2026-W11 runs 0/1/0 days 1 units 0 first 0 final 0 top tbar 0")};
    QTest::newRow("month") << int(Groups::Month)
                           << QStringList{q("2026-03 runs 3/3/1 days 3 units 3 first 1 final 2 top tbar 4")};
}

void StatisticsTest::groupsByHand()
{
    QFETCH(int, groups);
    QString error;
    const auto records = RecordStore::openExisting(path("hand.sqlite"), &error);
    StatisticsQuery query;
    query.groups = static_cast<StatisticsQuery::Groups>(groups);
    const Statistics statistics = read(*records, query);
    QStringList found;
    for (const StatisticsGroup &group : statistics.groups)
        found << q("%1 %2 %3").arg(group.name, text(group.counts)).arg(group.durations.size());
    QTEST(found, "expected");
    QCOMPARE(text(statistics.counts), q("runs 3/3/1 days 3 units 3 first 1 final 2 top tbar"));
}

// A station sends its runs to a server later, and a run that is saved again isn't counted again.
void StatisticsTest::runsMaySaveInAnyOrder()
{
    const QVector<Run> runs = runsByHand();
    const auto forward = store(path("forward.sqlite"), runs);
    QVector<Run> reversed = runs + runs.mid(0, 3);
    std::reverse(reversed.begin(), reversed.end());
    const auto backward = store(path("backward.sqlite"), reversed);
    for (const QString &table : storeCountTables()) {
        QVERIFY(!rowsOf(*forward, table).isEmpty());
        QCOMPARE(rowsOf(*backward, table), rowsOf(*forward, table));
    }
}

// The statements after prune, on the runs that were counted one by one.
void StatisticsTest::aRecountFindsTheSame()
{
    QString error;
    const QString copy = path("copy.sqlite");
    QVERIFY(QFile::copy(path("many.sqlite"), copy));
    const auto records = RecordStore::openExisting(copy, &error);
    QVERIFY2(records, qPrintable(error));
    QMap<QString, QStringList> counted;
    for (const QString &table : storeCountTables())
        counted[table] = rowsOf(*records, table);
    for (const QString &statement : storeRecount(StoreKind::File))
        QVERIFY2(records->connection().executeOnce(statement), qPrintable(records->connection().errorText()));
    for (const QString &table : storeCountTables())
        QCOMPARE(rowsOf(*records, table), counted.value(table));
}

void StatisticsTest::sameAsFromTheRuns_data()
{
    QTest::addColumn<QString>("options");
    for (const char *options :
         {"", "--by station", "--by day --since 2024-02-01 --until 2024-03-10", "--by week --station S7", "--by month",
          "--kind aging --by station", "--kind repair", "--since 2023-05-17", "--until 2024-02-29 --by station",
          "--since 2023-05-17 --until 2023-05-20 --by month", "--since 2023-05-17 --until 2024-08-03 --by month",
          "--since 2023-06-01 --until 2023-06-30 --station S3", "--since 2031-01-01"})
        QTest::newRow(*options ? options : "all") << q(options);
}

void StatisticsTest::sameAsFromTheRuns()
{
    QFETCH(QString, options);
    const QStringList arguments = options.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const auto value = [&arguments](const char *option) {
        const int index = arguments.indexOf(q(option));
        return index < 0 ? QString() : arguments.value(index + 1);
    };
    const QString kind = value("--kind");
    const Selection selection{kind.isEmpty() ? q("machine") : kind, value("--station"), value("--since"),
                              value("--until"), value("--by")};
    const Result result = stats(arguments + QStringList{q("--json")});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out.count('\n'), 1);
    const QString text = difference(QJsonDocument::fromJson(result.out).object(), computed(m_runs, selection));
    QVERIFY2(text.isEmpty(), qPrintable(text));
}

void StatisticsTest::csvHasOneLinePerGroup()
{
    const QList<QByteArray> all = stats({q("--csv")}).out.trimmed().split('\n');
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.at(0),
             QByteArray("all,runs,passed,failed,aborted,days,runsPerDay,units,unitsPerDay,firstPassed,firstPassYield,"
                        "finallyPassed,finalYield,topFailingPhase"));
    const QJsonObject figures = computed(m_runs, {q("machine"), {}, {}, {}, {}});
    QCOMPARE(all.at(1).split(',').at(1).toInt(), figures.value(q("runs")).toInt());
    QCOMPARE(all.at(1).split(',').at(10), QByteArray::number(figures.value(q("firstPassYield")).toDouble(), 'f', 4));
    QCOMPARE(stats({q("--csv"), q("--by"), q("station")}).out.trimmed().split('\n').size(), 51);
}

void StatisticsTest::tablesOfAStore()
{
    const Result result =
        panelhost({q("stats"), q("--records"), q("sqlite:") + path("hand.sqlite"), q("--by"), q("station")});
    QCOMPARE(result.status, 0);
    const QString expected =
        q("Complete machine tests (days in UTC)\n"
          "\n"
          "Runs                     7  passed 3, failed 3, aborted 1; 2.3 a day\n"
          "Units                    3  1.0 a day on 3 days\n"
          "First-pass yield    33.3 %  1 of 3 units\n"
          "Final yield         66.7 %  2 of 3 units\n"
          "\n"
          "FAILING PHASE  RUNS   SHARE  CUMULATIVE\n"
          "tbar              2  66.7 %      66.7 %\n"
          "net-port          1  33.3 %     100.0 %\n"
          "\n"
          "PHASE       COUNT  MEDIAN  90 % WITHIN\n"
          "brightness      6  0:01.0       0:09.0\n"
          "pattern         6  0:02.0       0:10.0\n"
          "tbar            6  0:03.0       0:11.0\n"
          "net-port        4  0:04.0       0:05.0\n"
          "\n"
          "STATION  RUNS  PASSED  FAILED  ABORTED  RUNS/DAY  UNITS  UNITS/DAY  FIRST PASS    FINAL  FAILS MOST\n"
          "S1          4       3       1        0       2.0      2        1.0      50.0 %  100.0 %        tbar\n"
          "S2          3       0       2        1       1.5      1        0.5       0.0 %    0.0 %    net-port\n");
    QCOMPARE(QString::fromUtf8(result.out), expected);
}

void StatisticsTest::oneUnitOnOneDay()
{
    const Result result = panelhost({q("stats"), q("--records"), q("sqlite:") + path("hand.sqlite"), q("--station"),
                                     q("S2"), q("--until"), q("2026-03-02"), q("--html"), path("one")});
    QVERIFY2(result.out.contains("Units                    1  1.0 a day on 1 day\n"
                                 "First-pass yield     0.0 %  0 of 1 unit\n"),
             result.out.constData());
    QFile page(path("one/statistics.html"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QByteArray html = page.readAll();
    QVERIFY(html.contains("A day, on 1 day<") && html.contains("(0 of 1 unit)"));
}

void StatisticsTest::aStoreWithoutRuns()
{
    store(path("empty.sqlite"), {});
    const Result result =
        panelhost({q("stats"), q("--records"), q("sqlite:") + path("empty.sqlite"), q("--html"), path("empty page")});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.status, 0);
    QVERIFY(result.out.contains("First-pass yield         -  0 of 0 units"));
    QVERIFY(QFile::exists(path("empty page/statistics.html")));
    QCOMPARE(panelhost({q("stats"), q("--records"), q("sqlite:") + path("missing.sqlite")}).status, 2);
}

void StatisticsTest::thePageIsSelfContained()
{
    QCOMPARE(stats({q("--html"), path("page")}).status, 0);
    QFile file(path("page/statistics.html"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    int images = 0;
    QString shown;
    while (!reader.atEnd()) {
        reader.readNext();
        shown += reader.isCharacters() ? reader.text().toString() : QString();
        if (!reader.isStartElement())
            continue;
        const QString source = reader.attributes().value(q("src")).toString();
        QVERIFY(!reader.attributes().hasAttribute(q("href")));
        if (source.isEmpty())
            continue;
        QVERIFY(source.startsWith(q("data:image/png;base64,")));
        const QImage image = QImage::fromData(QByteArray::fromBase64(source.mid(22).toLatin1()), "PNG");
        QCOMPARE(image.size(), QSize(2128, 680));
        ++images;
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QCOMPARE(images, 4);
    const QJsonObject figures = computed(m_runs, {q("machine"), {}, {}, {}, {}});
    QVERIFY(shown.contains(
        q("(%1 of %2 units)").arg(figures.value(q("firstPassed")).toInt()).arg(figures.value(q("units")).toInt())));
    QVERIFY(shown.contains(q("2023-01")));
    QFile blocked(path("file"));
    QVERIFY(blocked.open(QIODevice::WriteOnly));
    const Result result = stats({q("--html"), path("file/page")});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.err, q("panelhost: %1: the directory can't be created.\n").arg(path("file/page")));
}

void StatisticsTest::wrongOptions_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("day") << q("--since yesterday")
                         << q("--since is \"yesterday\", expected a day (UTC) such as 2026-01-31.");
    QTest::newRow("until") << q("--until 2026-02-30")
                           << q("--until is \"2026-02-30\", expected a day (UTC) such as 2026-01-31.");
    QTest::newRow("order") << q("--since 2026-02-02 --until 2026-02-01")
                           << q("--until 2026-02-01 is before --since 2026-02-02.");
    QTest::newRow("kind") << q("--kind car") << q("--kind is \"car\", expected machine, aging or repair.");
    QTest::newRow("group") << q("--by year") << q("--by is \"year\", expected station, day, week or month.");
    QTest::newRow("format") << q("--json --csv") << q("Give --json or --csv, not both.");
}

void StatisticsTest::wrongOptions()
{
    QFETCH(QString, options);
    QFETCH(QString, sentence);
    const Result result = stats(options.split(QLatin1Char(' ')));
    QCOMPARE(result.err, q("panelhost: %1\n").arg(sentence));
    QCOMPARE(result.status, 2);
}

QTEST_GUILESS_MAIN(StatisticsTest)

#include "tst_statistics.moc"
