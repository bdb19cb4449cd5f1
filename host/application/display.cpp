#include "application/display.h"

#include "lcd/platform.h"
#include "session/forkedprocess.h"

#include <QtGui/QGuiApplication>

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

// Also returns true if no process can be started. Qt then tries to connect by itself.
bool canConnect(int argc, char **argv)
{
    const auto connect = [&](int) {
        const QGuiApplication application(argc, argv);
        _exit(0);
    };
    const std::optional<ForkedEnd> end = runForked(connect, MaxConnectTime);
    return !end || end->hasSucceeded();
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
