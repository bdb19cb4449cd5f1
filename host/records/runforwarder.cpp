#include "records/runforwarder.h"

#include "records/recordstore.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <random>
#include <thread>

namespace panelhost {

namespace {

constexpr int BatchSize = 50; // runs in one transaction of the server
constexpr std::chrono::seconds EndTimeout(ServerAddress::ConnectTimeout + 2);

}

class RunForwarder::Impl
{
public:
    Impl(const ServerAddress &server, const Listener &listener, const PendingListener &pendingListener,
         const Pace &pace)
        : m_address(server), m_listener(listener), m_pendingListener(pendingListener), m_pace(pace),
          m_pause(pace.firstPause)
    {
        m_address.statementTimeout = static_cast<int>(pace.statement.count());
    }

    void work();
    void end();
    void sendFrom(RecordStore &store);
    bool send(std::chrono::milliseconds limit);
    int pending() const
    {
        const std::lock_guard lock(m_mutex);
        return m_pending;
    }

private:
    bool sendAll();
    bool sendBatch(bool *isLast);
    bool openFile();
    bool openServer();
    void closeServer();
    void updateCount(RecordStore &store);
    bool fail(const QString &error);
    std::chrono::milliseconds nextPause();
    bool isEnding() const
    {
        const std::lock_guard lock(m_mutex);
        return m_isEnding;
    }
    QString path() const
    {
        const std::lock_guard lock(m_mutex);
        return m_path;
    }

    ServerAddress m_address;
    const Listener m_listener;
    const PendingListener m_pendingListener;
    const Pace m_pace;

    // Of the thread.
    std::unique_ptr<RecordStore> m_file;
    std::unique_ptr<RecordStore> m_server;
    std::chrono::milliseconds m_pause;
    std::mt19937 m_random{std::random_device{}()};
    QString m_lastSentence;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QString m_path;
    bool m_isWanted = false;  ///< runs were saved since the last attempt
    bool m_isHurried = false; ///< the pause is over
    bool m_isEnding = false;
    bool m_hasEnded = false;
    int m_failures = 0; ///< attempts that have failed
    int m_pending = 0;
    int m_socket = -1; ///< duplicate of the server's, to interrupt a call that waits for it

    std::mutex m_countMutex; ///< held while the runs are counted, so that the counts come in order
};

void RunForwarder::Impl::work()
{
    std::unique_lock lock(m_mutex);
    const auto isWoken = [this] { return m_isEnding || m_isWanted; };
    while (!m_isEnding) {
        if (!m_changed.wait_for(lock, m_pace.idle, isWoken)) {
            lock.unlock();
            closeServer();
            lock.lock();
            m_changed.wait(lock, isWoken);
        }
        if (m_isEnding)
            break;
        m_isWanted = false;
        m_isHurried = false;
        lock.unlock();
        const bool isSent = sendAll();
        lock.lock();
        if (!isSent) {
            ++m_failures;
            m_changed.notify_all();
            m_changed.wait_for(lock, nextPause(), [this] { return m_isEnding || m_isHurried; });
            m_isWanted = true;
        }
    }
    lock.unlock();
    m_file.reset();
    closeServer();
    lock.lock();
    m_hasEnded = true;
    m_changed.notify_all();
}

// Stations that lost the server at the same time don't come back at the same time.
std::chrono::milliseconds RunForwarder::Impl::nextPause()
{
    const auto pause = m_pause;
    m_pause = std::min(m_pause * 2, m_pace.longestPause);
    std::uniform_int_distribution<qint64> spread(pause.count() * 3 / 4, pause.count() * 5 / 4);
    return std::chrono::milliseconds(spread(m_random));
}

bool RunForwarder::Impl::sendAll()
{
    bool isLast = false;
    bool isSent = openFile();
    while (isSent && !isLast && !isEnding())
        isSent = sendBatch(&isLast);
    if (!isSent) {
        closeServer();
        return false;
    }
    m_lastSentence.clear();
    m_pause = m_pace.firstPause;
    return true;
}

// If the process or the connection ends between the two commits, the same runs are sent again.
bool RunForwarder::Impl::sendBatch(bool *isLast)
{
    QString error;
    const auto runs = m_file->pending(BatchSize, &error);
    if (!runs) {
        m_file.reset();
        return fail(error);
    }
    *isLast = runs->isEmpty();
    if (*isLast)
        return true;
    if (!openServer())
        return false;
    if (!m_server->saveAll(*runs, RecordStore::Forwarding::None, &error))
        return fail(error);
    if (!m_file->removePending(*runs, &error)) {
        m_file.reset();
        return fail(error);
    }
    updateCount(*m_file);
    return true;
}

bool RunForwarder::Impl::openFile()
{
    QString error;
    const QString current = path();
    if (!m_file || m_file->path() != current)
        m_file = RecordStore::openExisting(current, &error);
    return m_file || fail(error);
}

// The server may have been restarted or upgraded since it was last used, which is no failure of its own.
bool RunForwarder::Impl::openServer()
{
    QString error;
    if (m_server && m_server->checkServer(&error))
        return true;
    closeServer();
    m_server = RecordStore::openServer(m_address, &error);
    if (!m_server)
        return fail(error);
    const std::lock_guard lock(m_mutex);
    m_socket = ::dup(m_server->connection().socket());
    return true;
}

void RunForwarder::Impl::closeServer()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_socket >= 0)
            ::close(m_socket);
        m_socket = -1;
    }
    m_server.reset();
}

bool RunForwarder::Impl::fail(const QString &error)
{
    const QString sentence = QStringLiteral("Runs can't be sent and wait in %1: %2").arg(path(), error);
    if (sentence != m_lastSentence && !isEnding())
        m_listener(sentence);
    m_lastSentence = sentence;
    return false;
}

void RunForwarder::Impl::updateCount(RecordStore &store)
{
    const std::lock_guard counting(m_countMutex);
    QString error;
    const int count = store.pendingCount(&error);
    if (count < 0 || count == pending())
        return;
    if (m_pendingListener)
        m_pendingListener(count);
    const std::lock_guard lock(m_mutex);
    m_pending = count;
    m_changed.notify_all();
}

void RunForwarder::Impl::sendFrom(RecordStore &store)
{
    updateCount(store);
    const std::lock_guard lock(m_mutex);
    m_path = store.path();
    m_isWanted = true;
    m_changed.notify_all();
}

bool RunForwarder::Impl::send(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    const int failures = m_failures;
    m_isHurried = true;
    m_changed.notify_all();
    m_changed.wait_for(lock, limit, [&] { return m_pending == 0 || m_failures != failures; });
    return m_pending == 0;
}

// A call that waits for the server ends when its socket is shut down. While the connection is made there is no socket
// to shut down; should that call take longer than its own limit, the thread is left behind: it touches nothing but its
// own state, and the runs are in the file.
void RunForwarder::Impl::end()
{
    std::unique_lock lock(m_mutex);
    m_isEnding = true;
    if (m_socket >= 0)
        ::shutdown(m_socket, SHUT_RDWR);
    m_changed.notify_all();
    m_changed.wait_for(lock, EndTimeout, [this] { return m_hasEnded; });
}

RunForwarder::RunForwarder(const ServerAddress &server, const Listener &listener,
                           const PendingListener &pendingListener, const Pace &pace)
    : d(std::make_shared<Impl>(server, listener, pendingListener, pace))
{
    std::thread([impl = d] { impl->work(); }).detach();
}

RunForwarder::~RunForwarder()
{
    d->end();
}

void RunForwarder::sendFrom(RecordStore &store)
{
    d->sendFrom(store);
}

int RunForwarder::pending() const
{
    return d->pending();
}

bool RunForwarder::send(std::chrono::milliseconds limit)
{
    return d->send(limit);
}

}
