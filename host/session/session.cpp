#include "session.h"

#include "session/desksession.h"

namespace panelhost {

std::unique_ptr<Session> Session::open(const Options &options, QString *error, QList<LoadStep> *reached)
{
    if (DeskSession::isAnyAlive()) {
        if (error)
            *error = QStringLiteral("There is a session in this process already.");
        return nullptr;
    }
    VirtualClock::instance().restart();
    auto session = std::make_unique<DeskSession>(options);
    QString reason;
    if (session->load(&reason))
        return session;
    if (error)
        *error = reason;
    if (reached)
        *reached = session->lastLoaded().steps();
    return nullptr;
}

}
