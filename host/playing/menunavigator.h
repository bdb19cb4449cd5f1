#pragma once

#include "session/session.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Opens a menu entry as an operator does, with arrow keys and Enter. @p path has one entry of the first level, or one
/// of each level. An entry is given by its title, its key in the menu file, or the part of the key after the last dot.
/// Returns false and sets @p error if the menu has no such entry.
bool openMenuEntry(Session &session, const QStringList &path, QString *error);

}
