#pragma once

#include "session/session.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Reads the board profile at @p path and makes its board the device of a session: sets Options::board, the number of
/// ports, and the options for links and calibration steps. Parts that the profile doesn't name get no service. The
/// names of keys are those of the key list in Options::share. @p stateDirectory is that of BoardConfiguration. Returns
/// false and sets @p errors to all errors of the file, each as "file:line:column: error: text".
bool readBoardProfile(const QString &path, const QString &stateDirectory, Session::Options &options,
                      QStringList *errors);

}
