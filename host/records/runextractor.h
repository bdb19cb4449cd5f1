#pragma once

#include "journal/journal.h"
#include "records/run.h"

#include <functional>
#include <memory>

namespace panelhost {

/// Derives runs from the lines of journals, one by one. The runs depend on the lines alone, and of the lines nothing
/// is kept but what the open runs need. In one thread at a time.
class RunExtractor
{
public:
    using Listener = std::function<void(const Run &run)>;

    /// @p listener is called with each run when it ends.
    explicit RunExtractor(const Listener &listener);
    ~RunExtractor();
    RunExtractor(const RunExtractor &) = delete;
    RunExtractor &operator=(const RunExtractor &) = delete;

    /// A session begins; open runs of the one before are aborted.
    void beginSession(const SessionInfo &info);
    /// A line whose sequence number is 1 begins a session, too, unless one has just begun.
    void add(const Journal::Entry &entry);
    /// The session ends; open runs are aborted.
    void endSession();

private:
    class Impl;
    std::unique_ptr<Impl> d;
};

}
