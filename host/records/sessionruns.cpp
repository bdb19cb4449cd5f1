#include "records/sessionruns.h"

#include <utility>

namespace panelhost {

SessionRuns::SessionRuns(RunSaver *saver, const RunExtractor::Listener &listener)
    : m_saver(saver), m_listener(listener), m_extractor([this](const Run &run) { take(run); })
{
}

void SessionRuns::begin(const SessionInfo &info)
{
    const std::lock_guard lock(m_mutex);
    m_extractor.beginSession(info);
    m_info = info;
    m_sessionLine = info.toJsonLine() + '\n';
    m_lines.clear();
    if (m_saver)
        m_saver->beginSession(info.begin);
}

void SessionRuns::add(const Journal::Entry &entry)
{
    const std::lock_guard lock(m_mutex);
    m_lines.push_back(entry.toJsonLine() + '\n');
    if (m_lines.size() > MaxLines)
        m_lines.pop_front();
    if (entry.kind == Journal::Kind::Action && entry.name == QLatin1String("unit"))
        m_info.unit = entry.data.value(QLatin1String("unit")).toString();
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
    m_lines.push_front(m_sessionLine);
    if (m_saver)
        m_saver->saveLines(run, std::exchange(m_lines, {}));
    m_lines.clear();
    m_sessionLine = m_info.toJsonLine() + '\n';
    if (m_listener)
        m_listener(run);
}

}
