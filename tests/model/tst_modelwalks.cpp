#include "drivercomparison.h"
#include "prooflength.h"

namespace {

constexpr int StepsOfWalk = 200;

/// Runs a session of @p steps without each combination of services. Returns the first difference.
template <class Pair>
QString withoutServices(const std::vector<WalkStep> &session)
{
    for (quint32 services = 0; services < 64; ++services) {
        std::vector<WalkStep> steps = {stepOf<Pair>("services", services & 31U), stepOf<Pair>("menu", services >> 5)};
        steps.insert(steps.end(), session.begin(), session.end());
        if (const auto found = runWalk<Pair>(steps))
            return QStringLiteral("services %1: %2").arg(services, 6, 2, QLatin1Char('0')).arg(found->text);
    }
    return {};
}

template <class Pair>
QString describeWalk(const std::vector<WalkStep> &steps)
{
    QString text;
    for (const WalkStep &step : steps)
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(Pair::operations()[static_cast<std::size_t>(step.operation)].name))
                    .arg(step.value);
    return text;
}

/// Walks @p count steps. Returns the shrunk walk and its difference as text if there is one.
template <class Pair>
QString walk(quint32 seed, int count)
{
    std::vector<int> weights;
    for (const auto &operation : Pair::operations())
        weights.push_back(operation.weight);
    std::mt19937 random(seed);
    for (int done = 0; done < count; done += StepsOfWalk) {
        const auto steps = randomWalk(random, weights, std::min(StepsOfWalk, count - done));
        if (!runWalk<Pair>(steps))
            continue;
        const auto shortest = shrunkWalk(steps, runWalk<Pair>);
        return QStringLiteral("LCD_PROOF_SEED=%1 after %2 steps, shrunk to\n%3%4")
            .arg(seed)
            .arg(done)
            .arg(describeWalk<Pair>(shortest), runWalk<Pair>(shortest)->text);
    }
    return {};
}

}

/// Random walks of operations and events: the component does what the models do, call by call.
class ModelWalksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qInfo("LCD_PROOF_SEED=%u, %d steps of each driver", m_seed, m_steps); }

    void agingTest()
    {
        const QString failure = walk<AgePair>(m_seed, m_steps);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
    void machineTest()
    {
        const QString failure = walk<MachinePair>(m_seed, m_steps);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }

    void theAgingTestWithoutEachCombinationOfServices()
    {
        const WalkStep longTime = stepOf<AgePair>("advance", 9);
        const QString difference =
            withoutServices<AgePair>({stepOf<AgePair>("start"), longTime, longTime, stepOf<AgePair>("net changed", 1),
                                      stepOf<AgePair>("usb changed", 1), stepOf<AgePair>("recount"), longTime,
                                      stepOf<AgePair>("stop"), longTime});
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
    void theMachineTestWithoutEachCombinationOfServices()
    {
        std::vector<WalkStep> session(14, stepOf<MachinePair>("pass phase"));
        for (const quint32 value : {0U, 1U})
            session.insert(session.end(),
                           {stepOf<MachinePair>("net report", value), stepOf<MachinePair>("usb report", value),
                            stepOf<MachinePair>("press", 3), stepOf<MachinePair>("left"), stepOf<MachinePair>("right"),
                            stepOf<MachinePair>("pass phase"), stepOf<MachinePair>("pass phase")});
        const QString difference = withoutServices<MachinePair>(session);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    // The ending is in all texts of the component and in none of the model.
    void aDifferenceIsFoundAndShrunk()
    {
        setTestEnding(QStringLiteral("!"));
        const QString aging = walk<AgePair>(1, StepsOfWalk);
        const QString machine = walk<MachinePair>(1, StepsOfWalk);
        setTestEnding({});
        QCOMPARE(aging.count(QLatin1Char('\n')), 4); // one step, and the difference in three lines
        QVERIFY(aging.contains(QStringLiteral("actual:   white [FCAging]!")));
        QCOMPARE(machine.count(QLatin1Char('\n')), 4);
        QVERIFY(machine.contains(QStringLiteral("actual:   phase title=[FCScreenLight]! 10%")));
    }

    void aWalkIsShrunkToTheStepsThatMatter()
    {
        std::mt19937 random(1);
        const auto run = [](const std::vector<WalkStep> &steps) -> std::optional<WalkDifference> {
            bool first = false;
            for (std::size_t i = 0; i < steps.size(); ++i) {
                if (first && steps[i].operation == 7)
                    return WalkDifference{i, QStringLiteral("7 after 3")};
                first = first || steps[i].operation == 3;
            }
            return std::nullopt;
        };
        const auto shortest = shrunkWalk(randomWalk(random, std::vector<int>(10, 1), 500), run);
        QCOMPARE(shortest.size(), std::size_t(2));
        QCOMPARE(shortest[0].operation, 3);
        QCOMPARE(shortest[1].operation, 7);
    }

private:
    const quint32 m_seed = proofSeed();
    const int m_steps = proofLength(2000, 50000, 1000000);
};

VIRTUAL_TIME_TEST_MAIN(ModelWalksTest)
#include "tst_modelwalks.moc"
