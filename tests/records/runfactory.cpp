#include "runfactory.h"

#include <array>

using namespace panelhost;

namespace {

constexpr std::array<const char *, 10> phases = {"brightness", "pattern",  "key-light",           "key-walk",    "tbar",
                                                 "net-port",   "usb-port", "typec-communication", "typec-power", "poe"};
constexpr std::array<int, 10> durations = {20000, 12000, 20000, 12600, 3500, 1550, 1020, 900, 900, 1200};
constexpr qint64 ThreeYears = 3LL * 365 * 24 * 3600 * 1000;
constexpr int StationCount = 50;
constexpr int FailsPercent = 8;  // of the machine tests
constexpr int UnitsPercent = 80; // of the number of runs

}

RunFactory::RunFactory(int count, quint32 seed) : m_count(count), m_seed(seed), m_random(seed)
{
}

// The standard library's distributions differ between implementations.
int RunFactory::random(int least, int most)
{
    return least + static_cast<int>(m_random() % static_cast<quint32>(most - least + 1));
}

Run RunFactory::run(int index)
{
    const int unit = random(0, qMax(0, m_count * UnitsPercent / 100 - 1));
    const int kind = random(0, 99);
    Run run;
    run.session.id = QUuid::createUuidV5(QUuid(), QStringLiteral("%1/%2").arg(m_seed).arg(index));
    run.id = QUuid::createUuidV5(run.session.id, QStringLiteral("1"));
    run.session.begin = QDateTime({2023, 1, 2}, {6, 0}, Qt::UTC).addMSecs(ThreeYears / qMax(1, m_count) * index);
    run.session.unit = QStringLiteral("SN%1").arg(unit, 8, 10, QLatin1Char('0'));
    run.session.station = QStringLiteral("S%1").arg(random(1, StationCount));
    run.session.operatorName = QStringLiteral("operator %1").arg(random(1, 120));
    run.session.language = QStringLiteral("en");
    run.session.panelhostVersion = QStringLiteral("1.0.0");
    run.session.componentVersion = QStringLiteral("1.0.0");
    run.session.configuration = QString(64, QLatin1Char('a'));
    run.position = 1;
    run.kind = kind < 90 ? RunKind::Machine : kind < 95 ? RunKind::Aging : RunKind::Repair;
    run.outcome = RunOutcome::Passed;
    for (int port = 1; port <= 4; ++port)
        run.ports.insert(QStringLiteral("net%1").arg(port), QStringLiteral("plugged"));
    if (run.kind == RunKind::Aging) {
        run.rounds = random(0, 20);
        run.end = 78000LL * run.rounds + 1000;
        run.outcome = run.rounds > 0 ? RunOutcome::Passed : RunOutcome::Aborted;
    } else {
        addPhases(run);
    }
    return run;
}

void RunFactory::addPhases(Run &run)
{
    const bool isMachine = run.kind == RunKind::Machine;
    const int first = isMachine ? 0 : random(0, 6);
    const int count = isMachine ? static_cast<int>(phases.size()) : 1;
    const int failed = random(0, 99) < FailsPercent ? first + random(0, count - 1) : -1;
    for (int phase = first; phase < first + count; ++phase) {
        const qint64 duration = durations.at(static_cast<std::size_t>(phase)) * random(90, 200) / 100;
        const RunOutcome outcome = phase == failed ? RunOutcome::Failed : RunOutcome::Passed;
        run.phases.append({QString::fromLatin1(phases.at(static_cast<std::size_t>(phase))), outcome, run.end, duration,
                           VerdictSource::Operator});
        run.end += duration;
        run.outcome = outcome;
        if (phase == failed)
            return;
    }
}
