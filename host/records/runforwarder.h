#pragma once

#include "records/serveraddress.h"

#include <chrono>
#include <functional>
#include <memory>

namespace panelhost {

class RecordStore;

/// Sends the runs that wait in a file to a server, in the order in which they were saved, on a thread of its own. A run
/// no longer waits when the server has committed it. If it is sent again after that, the server ignores it. While the
/// server can't be reached, sending is tried again at growing intervals. All functions are thread-safe.
class RunForwarder
{
public:
    /// Called with a sentence about each problem, once per problem, on any thread.
    using Listener = std::function<void(const QString &sentence)>;
    /// Called with the number of waiting runs when it changes, on any thread. It must not block.
    using PendingListener = std::function<void(int count)>;

    struct Pace
    {
        std::chrono::milliseconds firstPause{1000};    ///< after the first failure; doubled after each further one
        std::chrono::milliseconds longestPause{60000}; ///< each pause is up to a quarter shorter or longer
        std::chrono::milliseconds statement{15000};    ///< how long the server may work on a statement
        std::chrono::milliseconds idle{2000};          ///< how long a connection is kept for the next run
    };

    RunForwarder(const ServerAddress &server, const Listener &listener, const PendingListener &pendingListener,
                 const Pace &pace);
    /// Interrupts sending. What was not sent is sent by the next process.
    ~RunForwarder();
    RunForwarder(const RunForwarder &) = delete;
    RunForwarder &operator=(const RunForwarder &) = delete;

    /// Sends the runs that wait in @p store. Call it after runs were saved, and when the file is first opened.
    void sendFrom(RecordStore &store);
    /// Returns the number of runs that wait in the file.
    int pending() const;
    /// Begins to send at once. Returns when no run waits any more, when the server fails, or after @p limit. Returns
    /// true if no run waits.
    bool send(std::chrono::milliseconds limit);

private:
    class Impl;
    const std::shared_ptr<Impl> d; ///< shared with the thread
};

}
