#pragma once

#include "records/serveraddress.h"

#include <chrono>
#include <functional>
#include <memory>

namespace panelhost {

class RecordStore;

/// Sends the runs that wait in a file to a server, in the order in which they were saved, on a thread of its own. A run
/// leaves the list of the waiting ones when the server has committed it; if it is sent again after that, the server
/// keeps the first one. While the server can't be reached, sending is tried again at growing intervals. All functions
/// are thread-safe.
class RunForwarder
{
public:
    /// Gets a sentence about each problem once. Called on any thread.
    using Listener = std::function<void(const QString &sentence)>;
    /// Gets the number of waiting runs when it changes. Called on any thread; it must not block.
    using PendingListener = std::function<void(int count)>;

    struct Pace
    {
        std::chrono::milliseconds firstPause{1000};    ///< after the first failure; doubled after each further one
        std::chrono::milliseconds longestPause{60000}; ///< each pause is up to a quarter shorter or longer
        std::chrono::milliseconds statement{15000};    ///< how long the server may work on a statement
    };

    RunForwarder(const ServerAddress &server, const Listener &listener, const PendingListener &pendingListener,
                 const Pace &pace);
    /// Interrupts sending. What was not sent is sent by the next process.
    ~RunForwarder();
    RunForwarder(const RunForwarder &) = delete;
    RunForwarder &operator=(const RunForwarder &) = delete;

    /// Call it after runs were saved in @p store, and when the file is first opened: sends what waits there.
    void sendFrom(RecordStore &store);
    /// Returns the number of runs that wait in the file.
    int pending() const;
    /// Tries at once, and waits until no run waits, the server fails, or @p limit has passed. Returns true if no run
    /// waits.
    bool send(std::chrono::milliseconds limit);

private:
    class Impl;
    const std::shared_ptr<Impl> d; ///< shared with the thread
};

}
