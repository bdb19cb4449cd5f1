#pragma once

#include "expectations/expectation.h"
#include "time/virtualclock.h"

#include <functional>
#include <optional>

namespace panelhost {

class JournalQueryCounter;
class Session;

/// Whether an expectation holds, and what was found.
struct ExpectationResult
{
    bool holds = false;
    QString expected;
    QString found;
};

using ExpectationResults = QVector<ExpectationResult>;

/// Evaluates expectations against the LCD, the device and the journal of a session. GUI thread.
class ExpectationEvaluator
{
public:
    /// Advances virtual time by at most @p duration and calls @p done after each step. Returns true as soon as @p done
    /// returns true.
    using Advance = std::function<bool(Milliseconds duration, const std::function<bool()> &done)>;

    /// @p counter counts the entries of the session's journal.
    ExpectationEvaluator(Session &session, const JournalQueryCounter &counter) : m_session(session), m_counter(counter)
    {
    }

    /// Returns the result of each of @p expectations at the present time.
    ExpectationResults evaluate(const Expectations &expectations) const;
    /// Evaluates @p expectations now and, as long as not all of them hold, again after each step of virtual time until
    /// @p within is over. Returns true if all hold; @p results gets the results of the last evaluation.
    bool evaluateWithin(const Expectations &expectations, std::optional<Milliseconds> within, const Advance &advance,
                        ExpectationResults *results) const;

private:
    Session &m_session;
    const JournalQueryCounter &m_counter;
};

}
