#include "session/forkedprocess.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace panelhost {

namespace {

[[noreturn]] void workAndEnd(const std::function<void(int)> &work, int output)
{
    prepareTrial();
    // exit() calls this before everything that the original process has registered.
    on_exit([](int status, void *) { _exit(status); }, nullptr);
    work(output);
    _exit(0);
}

// Returns false if the other end wasn't closed in time.
bool readUntilClosed(int descriptor, int timeout, QByteArray *text)
{
    QElapsedTimer elapsed;
    elapsed.start();
    pollfd input{descriptor, POLLIN, 0};
    for (;;) {
        const int left = timeout - static_cast<int>(qMin<qint64>(elapsed.elapsed(), timeout));
        const int ready = poll(&input, 1, left);
        if (ready == 0)
            return false;
        std::array<char, 4096> block{};
        const ssize_t size = ready < 0 ? -1 : read(descriptor, block.data(), block.size());
        if (size == 0 || (size < 0 && errno != EINTR))
            return true;
        if (size > 0)
            text->append(block.data(), static_cast<int>(size));
    }
}

}

bool ForkedEnd::hasSucceeded() const
{
    return !isTimedOut && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void prepareTrial()
{
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        std::signal(number, SIG_DFL);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, stream);
}

bool hasOneThread()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() == 1;
}

std::optional<ForkedEnd> runForked(const std::function<void(int output)> &work, int timeout)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return std::nullopt;
    const pid_t child = fork();
    if (child == 0)
        workAndEnd(work, ends[1]);
    close(ends[1]);
    ForkedEnd end;
    if (child > 0) {
        end.isTimedOut = !readUntilClosed(ends[0], timeout, &end.output);
        if (end.isTimedOut)
            kill(child, SIGKILL);
        while (waitpid(child, &end.status, 0) < 0 && errno == EINTR) {}
    }
    close(ends[0]);
    return child > 0 ? std::make_optional(end) : std::nullopt;
}

}
