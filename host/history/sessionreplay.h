#pragma once

#include "scenario/scenario.h"

#include <functional>
#include <memory>

namespace panelhost {

class SessionHistory;

/// Opens a session with @p device and performs the actions of @p history, each at its time, until the journal has
/// @p line lines. Returns the session in the state that it had there, with the clock stopped. @p opened is called
/// before the first action, for example to record it; if it returns false, it has set @p error. Returns nullptr and
/// sets
/// @p error to a sentence if the session can't be opened or an action can't be performed. GUI thread.
std::unique_ptr<Session> replaySession(const Session::Options &device, const SessionHistory &history, qint64 line,
                                       const std::function<bool(Session &, QString *error)> &opened, QString *error);

}
