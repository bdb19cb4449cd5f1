#pragma once

#include "records/sessionstate.h"

#include <optional>

namespace panelhost {

/// Extracts the tests on repair pages: the pages that the second level of the menu opens. A page shows its verdict as
/// the mark of its first step line. After that, another test can be started on it. Containers without a page have no
/// verdict.
class RepairPageRuns
{
public:
    explicit RepairPageRuns(SessionState &session) : m_session(session) {}

    /// Reads @p entry. Call it after SessionState::add() with the same entry.
    void add(const Journal::Entry &entry);
    /// Ends an open run as aborted.
    void endSession();

private:
    void readScreen();
    void open();
    void finish(RunOutcome outcome, VerdictSource source);

    SessionState &m_session;
    std::optional<Run> m_run;
    QString m_container; ///< key of the page that was requested last
    bool m_isOnPage = false;
    bool m_isJudged = false;
    int m_menuLevel = 0; ///< the level that was shown last
};

}
