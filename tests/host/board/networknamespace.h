#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <sched.h>

/// Moves the calling thread, and the threads and processes that it starts from now on, into an empty network of its
/// own. Returns false without the right to do so, which root has.
inline bool enterEmptyNetwork()
{
    return unshare(CLONE_NEWNET) == 0;
}

/// Runs "ip" with @p arguments, which are separated by spaces. Returns what it says if it fails.
inline QString ip(const char *arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("ip"), QString::fromLatin1(arguments).split(QLatin1Char(' ')));
    if (!process.waitForFinished())
        return process.errorString();
    return process.exitCode() == 0 ? QString() : QString::fromLocal8Bit(process.readAll());
}
