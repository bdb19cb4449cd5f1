#include "records/sessionruns.h"

namespace panelhost {

SessionRuns::SessionRuns(RunSaver &saver) : m_saver(saver), m_extractor([this](const Run &run) { take(run); })
{
}

void SessionRuns::begin(const SessionInfo &info)
{
    const std::lock_guard lock(m_mutex);
    m_extractor.beginSession(info);
    m_sessionLine = info.toJsonLine() + '\n';
    m_lines.clear();
}

void SessionRuns::add(const Journal::Entry &entry)
{
    const std::lock_guard lock(m_mutex);
    m_lines.push_back(entry.toJsonLine() + '\n');
    if (m_lines.size() > MaxLines)
        m_lines.pop_front();
    m_extractor.add(entry);
}

void SessionRuns::end()
{
    const std::lock_guard lock(m_mutex);
    m_extractor.endSession();
}

// The caller holds the lock.
void SessionRuns::take(const Run &run)
{
    QByteArray journal = m_sessionLine;
    for (const QByteArray &line : m_lines)
        journal += line;
    m_lines.clear();
    m_saver.save(run, journal);
}

}
