#pragma once

#include <QtCore/QByteArray>

#include <functional>
#include <optional>

namespace panelhost {

/// What a forked process wrote, and how it ended.
struct ForkedEnd
{
    QByteArray output;
    bool isTimedOut = false; ///< it was killed because it didn't end in time
    int status = 0;          ///< as waitpid() returns it

    bool hasSucceeded() const;
};

/// Prepares a process that tries something which may crash. A crash ends it by its signal, immediately and without a
/// core file, and it ends with its parent. It has no input, and what it writes to the standard streams is dropped.
void prepareTrial();

/// Returns true if this process has no other threads. The copy that fork() makes of another process may run only
/// functions that are safe in signal handlers, because a lock that another thread holds is never released there.
bool hasOneThread();

/// Runs @p work in a copy of this process, prepared by prepareTrial(), and waits until it has ended, but at most
/// @p timeout milliseconds; then it is killed. What @p work writes to the file descriptor that it gets is returned. If
/// it calls exit(), the objects of this process aren't destroyed there. Call this only if hasOneThread(). Returns
/// std::nullopt if no process can be started.
std::optional<ForkedEnd> runForked(const std::function<void(int output)> &work, int timeout);

}
