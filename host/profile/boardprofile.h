#pragma once

#include "session/session.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Reads the board profile at @p path and makes its board the device of a session: sets Options::board, the number of
/// ports, how links and calibration steps are timed, and that parts which the profile doesn't have have no service.
/// Keys are those of the key list in Options::share. @p stateDirectory as BoardConfiguration has it. Returns false and
/// sets @p errors to all errors of the file, each as "file:line:column: error: text".
bool readBoardProfile(const QString &path, const QString &stateDirectory, Session::Options &options,
                      QStringList *errors);

}
