#pragma once

#include "records/sessionstate.h"

#include <optional>

namespace panelhost {

/// Extracts the runs of the aging test from the screens of its page, the test types and the link changes.
class AgingTestRuns
{
public:
    explicit AgingTestRuns(SessionState &session) : m_session(session) {}

    /// Reads @p entry. Call it after SessionState::add() with the same entry.
    void add(const Journal::Entry &entry);
    /// Ends an open run as aborted.
    void endSession();

private:
    void readScreen();
    void readTestType(int type);
    void readLinkChange(const Journal::Entry &entry);

    SessionState &m_session;
    std::optional<Run> m_run;
    bool m_hasLeftButton = false; ///< whether the page shows its left button, which it does while the test runs
    int m_testType = -1;
    qint64 m_failedAt = -1;    ///< when the last failure was reported, -1 if none was
    QStringList m_failedPorts; ///< the ports of that failure
};

}
