#include "behaviorpage.h"
#include "machinetestfixture.h"
#include "virtualtime.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <functional>
#include <optional>

namespace {

constexpr int Passed = 1;
constexpr int Failed = 2;

/// A phase and the state of its single test.
struct Moment
{
    int phase;
    /// Empty in a phase without a single test.
    QString state;
    /// Does what brings the phase from its first screen to this state.
    std::function<void(MachineTestFixture &)> reach;
};

std::vector<Moment> moments()
{
    const auto nothing = [](MachineTestFixture &) {};
    const auto verdict = [](MachineTestFixture &fixture) { fixture.bringToVerdict(); };
    const QString levels = QStringLiteral("levels running");
    const QString judge = QStringLiteral("verdict screen");
    return {
        {0, levels, nothing},
        {0, judge, verdict},
        {1, QStringLiteral("first pattern"), nothing},
        {1, judge, verdict},
        {2, levels, nothing},
        {2, judge, verdict},
        {3, QStringLiteral("waiting for keys"), nothing},
        {3, judge, verdict},
        {4, QStringLiteral("before the first press"), nothing},
        {4, QStringLiteral("after the seventh press"), verdict},
        {5, QStringLiteral("not started"), nothing},
        {5, QStringLiteral("running"), [](MachineTestFixture &fixture) { fixture.right(); }},
        {6, QStringLiteral("running"), nothing},
        {7, QString(), nothing},
        {9, QString(), nothing},
        {10, QString(), nothing},
    };
}

/// Returns the name of a phase for use in a sentence.
QString phaseName(int phase)
{
    static const QStringList names = {
        QStringLiteral("brightness"), QStringLiteral("pattern"),
        QStringLiteral("key light"),  QStringLiteral("key walk"),
        QStringLiteral("T-Bar"),      QStringLiteral("net port"),
        QStringLiteral("USB port"),   QStringLiteral("Type-C communication"),
        QStringLiteral("DC adapter"), QStringLiteral("Type-C power"),
        QStringLiteral("POE"),
    };
    return names.value(phase, QStringLiteral("phase %1").arg(phase));
}

QString phaseNameInRow(int phase)
{
    const QString name = phaseName(phase);
    return name.at(0).toUpper() + name.mid(1);
}

/// How the net test of an earlier run ended.
enum class History {
    None,
    NetPassed,
    NetFailed
};

void makeHistory(MachineTestFixture &fixture, History history)
{
    if (history == History::None)
        return;
    fixture.startAndPassTo(5);
    fixture.right();
    if (history == History::NetPassed)
        fixture.right();
    else
        fixture.left();
}

/// Starts a run after this history and brings it to @p moment. Clears the recorded calls.
void bringTo(MachineTestFixture &fixture, History history, const Moment &moment)
{
    makeHistory(fixture, history);
    fixture.startAndPassTo(moment.phase);
    moment.reach(fixture);
    fixture.take();
}

void add(QStringList &list, const QString &text)
{
    if (!list.contains(text))
        list << text;
}

/// Returns the name of a screen, as the page calls it.
QString screenName(const QString &record)
{
    if (record == failScreen())
        return QStringLiteral("shows the fail screen");
    if (record.contains(QStringLiteral("[FCPleaseJudgePass]")))
        return QStringLiteral("shows the verdict screen");
    if (record.startsWith(QStringLiteral("phase title=T-Bar;")))
        return QStringLiteral("shows the T-Bar screen");
    if (record.contains(QStringLiteral("statusShown")))
        return QStringLiteral("shows the result screen");
    if (record.contains(QStringLiteral("rightText=[FCAgeModeStartTest]")))
        return QStringLiteral("shows the start button");
    if (record.contains(QStringLiteral("rightText=[FCPass]")))
        return QStringLiteral("shows the verdict buttons");
    return record;
}

/// Returns the effect of a call, as the page describes it. Returns an empty string if the operator can't see the
/// effect, and the call itself if it isn't expected.
QString effectOf(const QString &call)
{
    if (call.startsWith(QStringLiteral("log ")))
        return QStringLiteral("writes \"%1\"").arg(call.mid(4));
    if (call == QStringLiteral("keyboard.setLcdTestPattern(0, 0)"))
        return QStringLiteral("clears the pattern");
    if (call.startsWith(QStringLiteral("keyboard.setLcdTestPattern(")))
        return QStringLiteral("shows the next pattern");
    if (call.startsWith(QStringLiteral("tbar.setBarCalibration(")))
        return QStringLiteral("sends a calibration command");
    if (call.startsWith(QStringLiteral("networkPort.register")))
        return QStringLiteral("starts the net test");
    if (call.startsWith(QStringLiteral("icon ")) || call == QStringLiteral("keyboard.getTBarType()"))
        return {};
    return call.startsWith(QStringLiteral("phase ")) ? screenName(call) : call;
}

/// Returns what the run did since the last take(), as the page describes it. For the start of another phase, returns
/// only its name.
QString effects(MachineTestFixture &fixture, int phaseBefore)
{
    const QStringList made = fixture.take();
    if (made == failure())
        return QStringLiteral("fails the run");
    const int phase = fixture.biz->currentPhaseIndex();
    QStringList result;
    for (const QString &call : phase == phaseBefore ? made : made.filter(QRegularExpression(QStringLiteral("^log ")))) {
        const QString effect = effectOf(call);
        if (!effect.isEmpty())
            add(result, effect);
    }
    if (phase > 10)
        add(result, QStringLiteral("passes the run"));
    else if (phase != phaseBefore)
        add(result, QStringLiteral("goes to the %1 phase").arg(phaseName(phase)));
    return result.isEmpty() ? QStringLiteral("nothing") : result.join(QStringLiteral(", "));
}

QString ordinal(int number)
{
    const QString ending = number == 2 ? QStringLiteral("nd")
        : number == 3                  ? QStringLiteral("rd")
                                       : QStringLiteral("th");
    return QString::number(number) + ending;
}

/// Returns what the right button does from now on until the phase ends: the first press, and each later press that has
/// another effect than the press before it.
QStringList pressRight(MachineTestFixture &fixture)
{
    const int phase = fixture.biz->currentPhaseIndex();
    QString first;
    QString last;
    QStringList later;
    for (int press = 1; press <= 20 && fixture.biz->currentPhaseIndex() == phase; ++press) {
        fixture.right();
        const QString does = effects(fixture, phase);
        if (press == 1)
            first = does;
        else if (does != last)
            later << QStringLiteral("%1: %2").arg(ordinal(press), does);
        last = does;
    }
    return {first, later.isEmpty() ? QStringLiteral("–") : later.join(QStringLiteral("; "))};
}

struct Failure
{
    QString name;
    std::function<void(MachineTestFixture &)> fail;
};

const std::vector<Failure> &failures()
{
    static const std::vector<Failure> all = {
        {QStringLiteral("left button"), [](MachineTestFixture &fixture) { fixture.left(); }},
        {QStringLiteral("net report"),
         [](MachineTestFixture &fixture) {
             fixture.netReport({{0, true}, {1, true}});
         }},
        {QStringLiteral("USB report"),
         [](MachineTestFixture &fixture) {
             fixture.usbReport({{1, 26, 0}});
         }},
    };
    return all;
}

/// Returns what the right button does after @p failure, or nothing if @p failure doesn't fail the run at @p moment.
std::optional<QStringList> rightAfter(const Moment &moment, const Failure &failure)
{
    MachineTestFixture fixture;
    bringTo(fixture, History::NetFailed, moment);
    failure.fail(fixture);
    fixture.take();
    if (fixture.biz->result() != Failed)
        return {};
    return pressRight(fixture);
}

/// Returns the rows of @p moment: one for each kind of failure. Failures with the same effect share a row.
QList<QStringList> rowsAfterFailure(const Moment &moment)
{
    QList<QStringList> rows;
    for (const Failure &failure : failures()) {
        const std::optional<QStringList> does = rightAfter(moment, failure);
        if (!does)
            continue;
        if (!rows.isEmpty() && rows.last().mid(3) == *does)
            rows.last()[2] += QStringLiteral(" or ") + failure.name;
        else
            rows << (QStringList{phaseNameInRow(moment.phase),
                                 moment.state.isEmpty() ? QStringLiteral("–") : moment.state, failure.name}
                     + *does);
    }
    return rows;
}

using Report = std::function<void(MachineTestFixture &)>;

const std::vector<Report> &netReports()
{
    static const std::vector<Report> all = {
        [](MachineTestFixture &fixture) {
            fixture.netReport({{0, true}, {1, true}});
        },
        [](MachineTestFixture &fixture) {
            fixture.netReport({{0, false}});
        },
        [](MachineTestFixture &fixture) {
            fixture.host.networkPort.changed.fire(RecordingNetworkPort::payload({{0, true}, {1, true}}));
        },
    };
    return all;
}

QStringList netReportCells(const Moment &moment, const Report &report)
{
    QStringList cells;
    for (const History history : {History::None, History::NetPassed, History::NetFailed}) {
        MachineTestFixture fixture;
        bringTo(fixture, history, moment);
        report(fixture);
        cells << effects(fixture, moment.phase);
    }
    return cells;
}

/// One row for each phase, or one for each state of its test if these differ.
QList<QStringList> netReportRows(const Report &report)
{
    QMap<int, QList<QStringList>> states;
    for (const Moment &moment : moments())
        states[moment.phase] << (QStringList{phaseNameInRow(moment.phase) + QStringLiteral(", ") + moment.state}
                                 + netReportCells(moment, report));
    QList<QStringList> rows;
    for (auto phase = states.cbegin(); phase != states.cend(); ++phase) {
        const QStringList cells = phase->first().mid(1);
        const bool same =
            std::all_of(phase->cbegin(), phase->cend(), [&](const QStringList &row) { return row.mid(1) == cells; });
        rows += same ? QList<QStringList>{QStringList{phaseNameInRow(phase.key())} + cells} : *phase;
    }
    return rows;
}

/// Fails and prints the expected table unless the page has it under @p heading.
void compareWithPage(const QString &heading, const QList<QStringList> &right)
{
    const QList<QStringList> written = readBehaviorPage().table(heading);
    if (written != right)
        qInfo().noquote() << QStringLiteral("the table under \"%1\" should be:\n%2").arg(heading, markdownTable(right));
    for (int row = 0; row < qMax(written.size(), right.size()); ++row)
        QCOMPARE(written.value(row), right.value(row));
}

}

/// Compares the tables of docs/behavior.md with the complete machine test.
class BehaviorTablesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rightAfterAFailure()
    {
        QList<QStringList> table = {{QStringLiteral("Phase"), QStringLiteral("Its test"), QStringLiteral("Failed by"),
                                     QStringLiteral("First Right"), QStringLiteral("From the n-th press on")}};
        for (const Moment &moment : moments())
            table += rowsAfterFailure(moment);
        compareWithPage(QStringLiteral("A failed run stays in its phase and still counts as running"), table);
    }

    void aFailedRunStaysFailedUntilItEndsOnThePassScreen()
    {
        for (const Moment &moment : moments()) {
            for (const Failure &failure : failures()) {
                MachineTestFixture fixture;
                bringTo(fixture, History::NetFailed, moment);
                failure.fail(fixture);
                if (fixture.biz->result() != Failed)
                    continue;
                QCOMPARE(fixture.biz->currentPhaseIndex(), moment.phase);
                QVERIFY(fixture.biz->isRunning());
                pressRight(fixture);
                QCOMPARE(fixture.biz->result(), moment.phase == 10 ? Passed : Failed);
            }
        }
    }

    void aNetReportInEachPhase()
    {
        const QList<QStringList> header = {{QStringLiteral("Phase"), QStringLiteral("No earlier net test"),
                                            QStringLiteral("Last net test passed"),
                                            QStringLiteral("Last net test failed")}};
        compareWithPage(QStringLiteral("A net report can pass or fail another phase"),
                        header + netReportRows(netReports().front()));
    }

    void aNetReportInAFailedRunDoesTheSame()
    {
        const Report report = netReports().front();
        const Report reportAfterLeft = [&](MachineTestFixture &fixture) {
            fixture.left();
            fixture.take();
            report(fixture);
        };
        for (const Moment &moment : moments()) {
            if (moment.phase != 5)
                QCOMPARE(netReportCells(moment, reportAfterLeft), netReportCells(moment, report));
        }
    }

    void everyKindOfNetReportDoesTheSame()
    {
        const QList<QStringList> rows = netReportRows(netReports().front());
        for (const Report &report : netReports())
            QCOMPARE(netReportRows(report), rows);
    }
};

VIRTUAL_TIME_TEST_MAIN(BehaviorTablesTest)
#include "tst_behaviortables.moc"
