#pragma once

#include "records/sessionfollower.h"

#include <optional>

namespace panelhost {

/// Follows the aging sessions by the screens of their page, the test types and the link changes.
class AgingRuns
{
public:
    explicit AgingRuns(SessionFollower &session) : m_session(session) {}

    /// After the session has taken @p entry over.
    void add(const Journal::Entry &entry);
    void endSession();

private:
    void readScreen();
    void readTestType(int type);
    void readLinkChange(const Journal::Entry &entry);

    SessionFollower &m_session;
    std::optional<Run> m_run;
    bool m_hasLeftButton = false; ///< of the page: it is there while the test runs
    int m_testType = -1;
    qint64 m_failedAt = -1; ///< the last failure, of
    QStringList m_failedPorts;
};

}
