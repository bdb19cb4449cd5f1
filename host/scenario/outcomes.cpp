#include "scenario/outcomes.h"

#include "lcd/screen.h"
#include "scenario/journalsubjects.h"
#include "scenario/journaltally.h"
#include "scenario/subjects.h"
#include "session/session.h"

#include <algorithm>

namespace panelhost {

namespace {

Outcome ofSight(const Expectation &expectation, const Sight &sight)
{
    const auto value = look(sight, expectation.subject);
    const auto &conditions = expectation.conditions;
    const auto holds = [&value](const Condition &condition) { return value.isValid() && condition.holds(value); };
    const auto found = value.isValid()
        ? textOf(value)
        : QStringLiteral("no such thing on the page \"%1\"").arg(sight.screen.value(QStringLiteral("page")).toString());
    return {std::all_of(conditions.begin(), conditions.end(), holds), expectation.toText(), found};
}

Outcome ofJournal(const Expectation &expectation, int count)
{
    const auto &times = expectation.query.times;
    return {times ? count == *times : count > 0, expectation.toText(),
            QStringLiteral("%1 such entries since the last mark").arg(count)};
}

}

QVector<Outcome> outcomesOf(const Expectations &expectations, Session &session, const JournalTally &tally)
{
    const Sight sight{readScreen(session.lcd()), session.device().state()};
    QVector<Outcome> outcomes;
    for (const auto &expectation : expectations) {
        if (isJournalSubject(expectation.subject))
            outcomes.append(ofJournal(expectation, tally.count(expectation)));
        else
            outcomes.append(ofSight(expectation, sight));
    }
    return outcomes;
}

bool allHold(const QVector<Outcome> &outcomes)
{
    return std::all_of(outcomes.begin(), outcomes.end(), [](const Outcome &outcome) { return outcome.holds; });
}

}
