#include "session/session.h"

#include "session/simulatedsession.h"

namespace panelhost {

std::unique_ptr<Session> Session::open(const Options &options, QString *error, QList<LoadStep> *reached)
{
    if (SimulatedSession::isAnyAlive()) {
        if (error)
            *error = QStringLiteral("This process already has a session.");
        return nullptr;
    }
    VirtualClock::instance().restart();
    auto session = std::make_unique<SimulatedSession>(options);
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
