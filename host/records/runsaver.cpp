#include "records/runsaver.h"

#include "records/storefile.h"

#include <chrono>

namespace panelhost {

namespace {

constexpr std::chrono::seconds RetryInterval(5);
constexpr int MaxFiles = 100;

}

RunSaver::RunSaver(const QString &path, const Listener &listener)
    : m_path(path), m_listener(listener), m_currentPath(path), m_thread([this] { work(); })
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

void RunSaver::save(const Run &run, const QByteArray &journal)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back({run, journal});
    }
    m_changed.notify_all();
}

int RunSaver::finish()
{
    std::unique_lock lock(m_mutex);
    ++m_finishing;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_finishing == 0; });
    return static_cast<int>(m_jobs.size());
}

int RunSaver::saved() const
{
    const std::lock_guard lock(m_mutex);
    return m_saved;
}

// Accesses the disk without holding the lock. A job stays in the queue until it is saved.
void RunSaver::work()
{
    std::unique_lock lock(m_mutex);
    bool isLast = false;
    while (!isLast) {
        isLast = m_isEnding;
        const int finishing = m_finishing;
        bool saves = true;
        while (saves && !m_jobs.empty()) {
            const Job job = m_jobs.front();
            lock.unlock();
            saves = saveOne(job);
            lock.lock();
            if (saves) {
                m_jobs.pop_front();
                ++m_saved;
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

bool RunSaver::saveOne(const Job &job)
{
    while (m_store || openStore()) {
        QString error;
        auto problem = RecordStore::Problem::None;
        if (m_store->save(job.run, job.journal, &error, &problem)) {
            m_lastSentence.clear();
            return true;
        }
        m_store.reset();
        if (problem != RecordStore::Problem::Unusable || m_number >= MaxFiles) {
            tell(QStringLiteral("Runs can't be saved and are kept until they can: %1").arg(error));
            return false;
        }
        m_currentPath = numberedPath(m_path, ++m_number);
        tell(QStringLiteral("%1 It is left as it is; runs are saved to %2.").arg(error, m_currentPath));
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
        if (problem != RecordStore::Problem::Unusable || m_number >= MaxFiles) {
            tell(QStringLiteral("Runs can't be saved and are kept until they can: %1").arg(error));
            return false;
        }
        m_currentPath = numberedPath(m_path, ++m_number);
        tell(QStringLiteral("%1 It is left as it is; runs are saved to %2.").arg(error, m_currentPath));
    }
}

void RunSaver::tell(const QString &sentence)
{
    if (sentence == m_lastSentence)
        return;
    m_lastSentence = sentence;
    m_listener(sentence);
}

}
