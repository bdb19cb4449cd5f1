#include "application/display.h"

#include "lcd/platform.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QGuiApplication>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int MaxConnectTime = 20000; // ms; a display on another machine may take its time

QString environmentValue(const char *variable)
{
    return QString::fromLocal8Bit(qgetenv(variable));
}

QString platformIn(int argc, char **argv)
{
    for (int index = 1; index + 1 < argc; ++index) {
        if (qstrcmp(argv[index], "-platform") == 0)
            return QString::fromLocal8Bit(argv[index + 1]);
    }
    return environmentValue("QT_QPA_PLATFORM");
}

// Runs in a child process, which tries to connect. Forking is safe as long as there is only one thread.
[[noreturn]] void connectAndEnd(int argc, char **argv, int silence)
{
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(silence, STDERR_FILENO);
    const QGuiApplication application(argc, argv);
    _exit(0);
}

bool hasEndedWell(pid_t child, int endPipe)
{
    pollfd ending{endPipe, POLLIN, 0};
    int result = 0;
    QElapsedTimer elapsed;
    elapsed.start();
    do {
        const auto left = MaxConnectTime - static_cast<int>(qMin<qint64>(elapsed.elapsed(), MaxConnectTime));
        result = poll(&ending, 1, left);
    } while (result < 0 && errno == EINTR);
    if (result == 0)
        kill(child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {}
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Also returns true if no process can be started. Qt then tries to connect by itself.
bool canConnect(int argc, char **argv)
{
    int endPipe[2];
    const int silence = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (silence < 0 || pipe2(endPipe, O_CLOEXEC) != 0)
        return true;
    const pid_t child = fork();
    if (child == 0)
        connectAndEnd(argc, argv, silence);
    close(endPipe[1]);
    const bool isReachable = child < 0 || hasEndedWell(child, endPipe[0]);
    close(endPipe[0]);
    close(silence);
    return isReachable;
}

QString unreachable(const QString &platform)
{
    if (!platform.isEmpty() && platform != QLatin1String("xcb") && !platform.startsWith(QLatin1String("wayland")))
        return QStringLiteral("The platform \"%1\" can't show a window here").arg(platform);
    const bool isWayland = platform.startsWith(QLatin1String("wayland")) || environmentValue("DISPLAY").isEmpty();
    return QStringLiteral("The display \"%1\" can't be reached")
        .arg(environmentValue(isWayland ? "WAYLAND_DISPLAY" : "DISPLAY"));
}

}

bool isDisplayReachable(bool needsDisplay, int argc, char **argv, QString *error)
{
    const QString platform = platformIn(argc, argv);
    if ((platform.isEmpty() && !needsDisplay) || !hasDisplay(platform))
        return true;
    if (platform.isEmpty() && environmentValue("DISPLAY").isEmpty() && environmentValue("WAYLAND_DISPLAY").isEmpty())
        *error = QStringLiteral("There is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
    else if (!canConnect(argc, argv))
        *error = unreachable(platform);
    else
        return true;
    *error += needsDisplay ? QStringLiteral("; \"panelhost play FILE\" needs none.")
                           : QStringLiteral("; the command needs none when no platform is asked for.");
    return false;
}

}
