#pragma once

#include "records/runextractor.h"
#include "records/runsaver.h"

#include <deque>
#include <mutex>

namespace panelhost {

/// Extracts the runs of a live session and passes them to a saver, each with its part of the journal, and to a
/// listener. add() may be called on any thread, but not on two at once. All other functions belong to the GUI thread.
class SessionRuns
{
public:
    /// The largest number of journal lines that are saved with a run. Of a longer run, the newest lines are saved.
    static constexpr int MaxLines = 100000;

    /// Runs aren't saved if @p saver is nullptr. @p listener, if given, is called with each run when it ends, on the
    /// thread of the entry that ends it.
    explicit SessionRuns(RunSaver *saver, const RunExtractor::Listener &listener = {});

    /// Begins a session. Call it before its first entry.
    void begin(const SessionInfo &info);
    void add(const Journal::Entry &entry);
    /// Ends the session. Its open runs end as aborted.
    void end();

private:
    void take(const Run &run);

    RunSaver *m_saver;
    RunExtractor::Listener m_listener;
    std::mutex m_mutex;
    RunExtractor m_extractor;
    SessionInfo m_info;       ///< with the unit that is tested now
    QByteArray m_sessionLine; ///< the first line of the next run's journal: with the unit at the start of these lines
    std::deque<QByteArray> m_lines; ///< since the end of the previous run
};

}
