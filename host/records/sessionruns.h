#pragma once

#include "records/runextractor.h"
#include "records/runsaver.h"

#include <deque>
#include <mutex>

namespace panelhost {

/// Extracts the runs of a live session and passes them to a saver, each with its part of the journal. add() may be
/// called on any thread, but not on two at once. All other functions belong to the GUI thread.
class SessionRuns
{
public:
    /// The largest number of journal lines that are saved with a run. Of a longer run, the newest lines are saved.
    static constexpr int MaxLines = 100000;

    explicit SessionRuns(RunSaver &saver);

    /// Begins a session. Call it before its first entry.
    void begin(const SessionInfo &info);
    void add(const Journal::Entry &entry);
    /// Ends the session, and its open runs as aborted.
    void end();

private:
    void take(const Run &run);

    RunSaver &m_saver;
    std::mutex m_mutex;
    RunExtractor m_extractor;
    QByteArray m_sessionLine;
    std::deque<QByteArray> m_lines; ///< since the end of the previous run
};

}
