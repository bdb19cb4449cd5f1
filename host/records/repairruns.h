#pragma once

#include "records/sessionfollower.h"

#include <optional>

namespace panelhost {

/// Follows the tests on repair pages: the pages that the second level of the menu opens. A page marks its verdict on
/// its first step line, and is there for another test then. The host's empty containers give no verdict.
class RepairRuns
{
public:
    explicit RepairRuns(SessionFollower &session) : m_session(session) {}

    /// After the session has taken @p entry over.
    void add(const Journal::Entry &entry);
    void endSession();

private:
    void readScreen();
    void open();
    void finish(RunOutcome outcome, VerdictSource source);

    SessionFollower &m_session;
    std::optional<Run> m_run;
    QString m_container; ///< the key of the page that was asked for last
    bool m_isOnPage = false;
    bool m_isJudged = false;
    int m_menuLevel = 0; ///< the last one that was shown
};

}
