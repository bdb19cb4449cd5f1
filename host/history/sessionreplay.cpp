#include "history/sessionreplay.h"

#include "history/sessionhistory.h"

#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

// Stops as soon as the journal has @p line lines, since more can be due at the same time.
void advanceToLine(Session &session, const SessionHistory &history, qint64 line)
{
    const auto isReached = [&session, line] { return session.journal().count() >= line; };
    const Milliseconds left = history.timeOf(line) - session.clock().now();
    if (!isReached() && left > 0)
        session.clock().advanceUntil(left, isReached);
}

bool performLine(Session &session, const SessionHistory &history, qint64 line, QString *error)
{
    const Milliseconds left = history.timeOf(line) - session.clock().now();
    if (left > 0)
        session.clock().advance(left);
    const auto entry = history.entry(line);
    const auto kind = entry ? actionKind(entry->name) : std::nullopt;
    if (kind)
        return session.panelOperator().perform({*kind, entry->data.toVariantMap()}, error);
    *error = QStringLiteral("Line %1 of the journal is no action.").arg(line);
    return false;
}

bool performActions(Session &session, const SessionHistory &history, qint64 until, QString *error)
{
    const auto next = [&history](qint64 line) {
        return history.findLine(Journal::Kind::Action, line, SessionHistory::Direction::Forward);
    };
    for (qint64 line = next(0); line > 0 && line <= until; line = next(line)) {
        advanceToLine(session, history, line - 1);
        if (!performLine(session, history, line, error))
            return false;
    }
    advanceToLine(session, history, until);
    return true;
}

}

std::unique_ptr<Session> replaySession(const Session::Options &device, const SessionHistory &history, qint64 line,
                                       const std::function<bool(Session &, QString *error)> &opened, QString *error)
{
    auto session = Session::open(device, error);
    if (!session || !opened(*session, error))
        return nullptr;
    session->lcd()->show();
    session->clock().settle();
    return performActions(*session, history, line, error) ? std::move(session) : nullptr;
}

}
