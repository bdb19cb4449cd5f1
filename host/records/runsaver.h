#pragma once

#include "records/recordstore.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace panelhost {

/// Saves runs in order on a thread of its own, so that a slow disk doesn't block the caller. A run that can't be saved
/// is kept and tried again every few seconds and in finish(). If the file turns out to be unusable, it is left as it is
/// and a new one next to it is used. Any thread may call.
class RunSaver
{
public:
    /// Gets one sentence about each problem once, on the saver's thread.
    using Listener = std::function<void(const QString &sentence)>;

    RunSaver(const QString &path, const Listener &listener);
    /// Tries what is still waiting once more.
    ~RunSaver();
    RunSaver(const RunSaver &) = delete;
    RunSaver &operator=(const RunSaver &) = delete;

    /// Returns at once.
    void save(const Run &run, const QByteArray &journal);
    /// Waits until every run was saved or failed once more. Returns how many were not saved.
    int finish();
    int saved() const;

private:
    struct Job
    {
        Run run;
        QByteArray journal;
    };

    void work();
    bool saveOne(const Job &job);
    bool openStore();
    void tell(const QString &sentence);

    const QString m_path;
    const Listener m_listener;
    std::unique_ptr<RecordStore> m_store; ///< of the saver's thread, as the next three are
    QString m_lastSentence;
    QString m_currentPath;
    int m_number = 1; ///< of the file, if the first one can't be used
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    int m_saved = 0;
    int m_finishing = 0; ///< calls of finish() that wait
    bool m_isEnding = false;
    std::thread m_thread;
};

}
