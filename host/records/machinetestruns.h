#pragma once

#include "records/sessionstate.h"

#include <optional>

namespace panelhost {

/// Returns the names of the phases of the complete machine test, in their order.
QStringList machineTestPhases();

/// Extracts the runs of the complete machine test from the screens and the log of its page.
class MachineTestRuns
{
public:
    explicit MachineTestRuns(SessionState &session) : m_session(session) {}

    /// Reads @p entry. Call it after SessionState::add() with the same entry.
    void add(const Journal::Entry &entry);
    /// Ends an open run as aborted.
    void endSession();

private:
    enum class Screen {
        Other,
        Entry,
        Passed,
        Failed
    };

    void readScreen(const QJsonObject &changes);
    void readLogLine(const QString &line);
    void readPhaseScreen(const QString &icon);
    Screen shownScreen() const;
    void start();
    void beginPhase();
    void endPhase(RunOutcome outcome, VerdictSource source);
    void advanceTo(int phase);
    void finish(RunOutcome outcome);
    VerdictSource passSource() const;
    void readKeys(const Journal::Entry &entry);
    void countKeys(const Journal::Entry &entry, int key);

    SessionState &m_session;
    std::optional<Run> m_run;
    int m_phase = 0;
    QStringList m_log; ///< log of the page; the page keeps it while it isn't shown
    Screen m_screen = Screen::Other;
    bool m_hasStarted = false; ///< whether phase 0 has started since the last screen line
    int m_awaitedKey = -1;
};

}
