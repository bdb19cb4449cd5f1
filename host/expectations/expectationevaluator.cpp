#include "expectations/expectationevaluator.h"

#include "expectations/journalproperties.h"
#include "expectations/journalquerycounter.h"
#include "expectations/properties.h"
#include "lcd/screenreader.h"
#include "session/session.h"

#include <algorithm>

namespace panelhost {

namespace {

ExpectationResult resultFor(const Expectation &expectation, const Snapshot &snapshot)
{
    const auto value = propertyValue(snapshot, expectation.property);
    const auto &conditions = expectation.conditions;
    const auto holds = [&value](const Condition &condition) { return value.isValid() && condition.holds(value); };
    const auto found = value.isValid() ? textOf(value)
                                       : QStringLiteral("the page \"%1\" has no such property")
                                             .arg(snapshot.screen.value(QStringLiteral("page")).toString());
    return {std::all_of(conditions.begin(), conditions.end(), holds), expectation.toText(), found};
}

ExpectationResult resultForCount(const Expectation &expectation, int count)
{
    const auto &times = expectation.query.times;
    return {times ? count == *times : count > 0, expectation.toText(),
            QStringLiteral("%1 such entries since the last mark").arg(count)};
}

}

ExpectationResults ExpectationEvaluator::evaluate(const Expectations &expectations) const
{
    const Snapshot snapshot{readScreen(m_session.lcd()), m_session.device().state()};
    ExpectationResults results;
    for (const auto &expectation : expectations) {
        if (isJournalProperty(expectation.property))
            results.append(resultForCount(expectation, m_counter.count(expectation)));
        else
            results.append(resultFor(expectation, snapshot));
    }
    return results;
}

bool ExpectationEvaluator::evaluateWithin(const Expectations &expectations, std::optional<Milliseconds> within,
                                          const Advance &advance, ExpectationResults *results) const
{
    const auto allHold = [&] {
        *results = evaluate(expectations);
        return std::all_of(results->begin(), results->end(), [](const auto &result) { return result.holds; });
    };
    return allHold() || (within && advance(*within, allHold));
}

}
