#pragma once

#include "records/runextractor.h"
#include "records/runsaver.h"

#include <deque>
#include <mutex>

namespace panelhost {

/// Derives the runs of a live session and hands them to a saver, each with its part of the journal. Entries come on
/// any thread, one at a time; the others are for the GUI thread.
class SessionRecorder
{
public:
    /// Lines of the journal that are kept with one run; of longer ones the newest.
    static constexpr int MaxLines = 100000;

    explicit SessionRecorder(RunSaver &saver);

    /// Before the first entry of a session.
    void begin(const SessionInfo &info);
    void add(const Journal::Entry &entry);
    /// Open runs are aborted.
    void end();

private:
    void take(const Run &run);

    RunSaver &m_saver;
    std::mutex m_mutex;
    RunExtractor m_extractor;
    QByteArray m_sessionLine;
    std::deque<QByteArray> m_lines; ///< since the run before
};

/// What is known of a session that begins now, with a new id: @p unit, @p station and @p operatorName as given, the
/// version of panelhost, and the configuration files in @p share.
SessionInfo newSessionInfo(const QString &unit, const QString &station, const QString &operatorName,
                           const QString &language, const QString &share);

}
