#include "session/session.h"

#include "session/devicesession.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

namespace panelhost {

std::unique_ptr<Session> Session::open(const Options &options, QString *error, QList<LoadStep> *reached)
{
    if (DeviceSession::isAnyAlive()) {
        if (error)
            *error = QStringLiteral("This process already has a session.");
        return nullptr;
    }
    VirtualClock::instance().restart();
    auto session = std::make_unique<DeviceSession>(options);
    QString reason;
    if (session->load(&reason))
        return session;
    if (error)
        *error = reason;
    if (reached)
        *reached = session->lastLoaded().steps();
    return nullptr;
}

QStringList inputFiles(const Session::Options &options)
{
    QStringList paths{options.component.isEmpty() ? defaultComponentPath() : options.component};
    const QDir share(shareDirectoryOf(options));
    const auto files = share.entryList(QDir::Files);
    for (const QString &file : files)
        paths.append(share.filePath(file));
    return paths;
}

QString shareDirectoryOf(const Session::Options &options)
{
    return options.share.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/../share")
                                   : options.share;
}

}
