#pragma once

#include "records/recordsoptions.h"
#include "records/recordstore.h"
#include "records/runforwarder.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace panelhost {

/// Saves runs in order on a thread of its own, so that a slow disk doesn't block the caller. A run that can't be saved
/// is kept and tried again every few seconds and in finish(). A file that can't be used is left as it is, and a new one
/// next to it is used. Runs for a server are saved in the file first; another thread sends them. All functions are
/// thread-safe.
class RunSaver
{
public:
    /// Called with a sentence about each problem, once per problem, on any thread.
    using Listener = RunForwarder::Listener;

    RunSaver(const QString &path, const Listener &listener);
    /// @p pendingListener is called with the number of runs that wait to be sent to the server when it changes, on any
    /// thread. @p sendingListener, if given, is called instead of @p listener when runs can't be sent.
    RunSaver(const RecordsLocation &location, const Listener &listener,
             const RunForwarder::PendingListener &pendingListener,
             const RunForwarder::Pace &pace = RunForwarder::Pace(), const Listener &sendingListener = {});
    /// Tries once more to save the runs that are still waiting.
    ~RunSaver();
    RunSaver(const RunSaver &) = delete;
    RunSaver &operator=(const RunSaver &) = delete;

    /// Sets a function that gets each run when it is on the disk, on the saver's thread. Call it before anything else.
    void setSavedListener(const std::function<void(const Run &run)> &listener) { m_savedListener = listener; }
    /// Checks whether the session that begins at @p begin is older than a saved session, and tells the listener if so.
    /// The check runs on another thread: this function, save() and saveLines() return at once.
    void beginSession(const QDateTime &begin);
    /// Saves @p run with @p journal, its part of the journal.
    void save(const Run &run, const QByteArray &journal);
    /// The same, with one element for each line.
    void saveLines(const Run &run, std::deque<QByteArray> lines);
    /// Waits until each run has been saved or has failed to be saved once more. Returns the number of runs that weren't
    /// saved.
    int finish();
    /// Returns the number of runs that this object has saved.
    int saved() const;

    /// Returns the number of saved runs that wait to be sent to the server.
    int pending() const { return m_forwarder ? m_forwarder->pending() : 0; }
    /// Waits until all saved runs were sent, sending fails, or @p limit has passed. Returns true if all were sent.
    bool sendPending(std::chrono::milliseconds limit) { return !m_forwarder || m_forwarder->send(limit); }

private:
    struct Job
    {
        Run run;
        std::deque<QByteArray> lines;
        bool isSession = false; ///< if true, only checks when the session of @c run began and saves nothing
    };

    void add(Job &&job);
    int waitingRuns() const;
    void work();
    bool saveOne(const Job &job);
    bool openStore();
    bool goToNextFile(const QString &error, RecordStore::Problem problem);
    void openForSending();
    void checkClock(const QDateTime &begin);
    void notify(const QString &sentence);

    const QString m_path;
    const Listener m_listener;
    std::function<void(const Run &run)> m_savedListener;
    const std::unique_ptr<RunForwarder> m_forwarder; ///< nullptr: there is no server
    std::unique_ptr<RecordStore> m_store;            ///< this and the next three: used on the saver's thread only
    QString m_lastSentence;
    QString m_currentPath;
    int m_number = 1; ///< number of the current file; higher than 1 if the first one can't be used
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    int m_saved = 0;
    int m_finishing = 0; ///< calls of finish() that wait
    bool m_isEnding = false;
    std::thread m_thread;
};

}
