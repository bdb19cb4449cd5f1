#include "records/runsaver.h"

#include "records/storefile.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <chrono>

namespace panelhost {

namespace {

constexpr std::chrono::seconds RetryInterval(5);
constexpr int MaxFiles = 100;
constexpr int MaxClockDifference = 60; // s: another panelhost may have begun a session in the meantime

QByteArray joined(const std::deque<QByteArray> &lines)
{
    QByteArray text;
    for (const QByteArray &line : lines)
        text += line;
    return text;
}

}

RunSaver::RunSaver(const QString &path, const Listener &listener) : RunSaver({path, false, {}}, listener, {})
{
}

RunSaver::RunSaver(const RecordsLocation &location, const Listener &listener,
                   const RunForwarder::PendingListener &pendingListener, const RunForwarder::Pace &pace,
                   const Listener &sendingListener)
    : m_path(location.path), m_listener(listener),
      m_forwarder(location.server ? std::make_unique<RunForwarder>(
                      *location.server, sendingListener ? sendingListener : listener, pendingListener, pace)
                                  : nullptr),
      m_currentPath(location.path), m_thread([this] { work(); })
{
}

RunSaver::~RunSaver()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void RunSaver::add(Job &&job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_changed.notify_all();
}

void RunSaver::beginSession(const QDateTime &begin)
{
    Job job;
    job.run.session.begin = begin;
    job.isSession = true;
    add(std::move(job));
}

void RunSaver::save(const Run &run, const QByteArray &journal)
{
    saveLines(run, {journal});
}

void RunSaver::saveLines(const Run &run, std::deque<QByteArray> lines)
{
    add({run, std::move(lines), false});
}

// With the lock held.
int RunSaver::waitingRuns() const
{
    return static_cast<int>(std::count_if(m_jobs.begin(), m_jobs.end(), [](const Job &job) { return !job.isSession; }));
}

int RunSaver::finish()
{
    std::unique_lock lock(m_mutex);
    ++m_finishing;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_finishing == 0; });
    return waitingRuns();
}

int RunSaver::saved() const
{
    const std::lock_guard lock(m_mutex);
    return m_saved;
}

// Accesses the disk without holding the lock. A job stays in the queue until it is done; others are only added behind
// it.
void RunSaver::work()
{
    openForSending();
    std::unique_lock lock(m_mutex);
    bool isLast = false;
    while (!isLast) {
        isLast = m_isEnding;
        const int finishing = m_finishing;
        bool saves = true;
        while (saves && !m_jobs.empty()) {
            const Job &job = m_jobs.front();
            lock.unlock();
            saves = saveOne(job);
            lock.lock();
            if (saves) {
                m_saved += job.isSession ? 0 : 1;
                m_jobs.pop_front();
            }
        }
        if (finishing > 0) {
            m_finishing -= finishing;
            m_changed.notify_all();
        }
        const auto isWanted = [&] { return m_isEnding || m_finishing > 0 || (saves && !m_jobs.empty()); };
        if (!isLast && !saves)
            m_changed.wait_for(lock, RetryInterval, isWanted);
        else if (!isLast)
            m_changed.wait(lock, isWanted);
    }
    lock.unlock();
    m_store.reset();
}

// The runs of earlier sessions that wait for the server.
void RunSaver::openForSending()
{
    if (m_forwarder && QFileInfo::exists(m_path) && openStore())
        m_forwarder->sendFrom(*m_store);
}

bool RunSaver::saveOne(const Job &job)
{
    if (job.isSession) {
        checkClock(job.run.session.begin);
        return true;
    }
    const auto forwarding = m_forwarder ? RecordStore::Forwarding::Pending : RecordStore::Forwarding::None;
    const QVector<StoredRun> runs{{job.run, qCompress(joined(job.lines))}};
    while (m_store || openStore()) {
        QString error;
        auto problem = RecordStore::Problem::None;
        if (m_store->saveAll(runs, forwarding, &error, &problem)) {
            m_lastSentence.clear();
            if (m_savedListener)
                m_savedListener(job.run);
            if (m_forwarder)
                m_forwarder->sendFrom(*m_store);
            return true;
        }
        m_store.reset();
        if (!goToNextFile(error, problem))
            return false;
    }
    return false;
}

bool RunSaver::openStore()
{
    for (;;) {
        QString error;
        auto problem = RecordStore::Problem::None;
        m_store = RecordStore::open(m_currentPath, &error, &problem);
        if (m_store)
            return true;
        if (!goToNextFile(error, problem))
            return false;
    }
}

bool RunSaver::goToNextFile(const QString &error, RecordStore::Problem problem)
{
    if (problem != RecordStore::Problem::Unusable || m_number >= MaxFiles) {
        notify(QStringLiteral("Runs can't be saved and are kept until they can: %1").arg(error));
        return false;
    }
    m_currentPath = numberedPath(m_path, ++m_number);
    notify(QStringLiteral("%1 It is left as it is; runs are saved to %2.").arg(error, m_currentPath));
    return true;
}

// Runs have ids of their own, so that a wrong time loses nothing. But the operator should know that it is wrong.
void RunSaver::checkClock(const QDateTime &begin)
{
    if (!m_store && (!QFileInfo::exists(m_currentPath) || !openStore()))
        return;
    const QDateTime latest = m_store->latestSessionBegin();
    if (latest.isValid() && begin.addSecs(MaxClockDifference) < latest)
        m_listener(QStringLiteral("The clock has gone back: it is %1, but a session in %2 began at %3. Check the date; "
                                  "runs are saved with these times.")
                       .arg(timeText(begin), m_store->path(), timeText(latest)));
}

void RunSaver::notify(const QString &sentence)
{
    if (sentence == m_lastSentence)
        return;
    m_lastSentence = sentence;
    m_listener(sentence);
}

}
