#pragma once

#include "journal/journal.h"
#include "records/run.h"

#include <functional>
#include <memory>

namespace panelhost {

/// Extracts runs from the lines of journals. The runs depend on the lines only. Lines are not kept, so a journal may be
/// of any length. Reentrant.
class RunExtractor
{
public:
    using Listener = std::function<void(const Run &run)>;

    /// @p listener is called with each run when it ends.
    explicit RunExtractor(const Listener &listener);
    ~RunExtractor();
    RunExtractor(const RunExtractor &) = delete;
    RunExtractor &operator=(const RunExtractor &) = delete;

    /// Begins a session. Ends open runs of the previous session as aborted.
    void beginSession(const SessionInfo &info);
    /// Reads a line. A line with the sequence number 1 also begins a session, unless one has just begun.
    void add(const Journal::Entry &entry);
    /// Ends the session. Its open runs end as aborted.
    void endSession();

private:
    class Impl;
    std::unique_ptr<Impl> d;
};

}
