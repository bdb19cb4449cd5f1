#pragma once

#include "session/session.h"

#include <QtCore/QStringList>

namespace panelhost {

/// Opens a menu entry as an operator does, with arrow keys and Enter. @p path is one entry or an entry of the first
/// and one of the second level, each by its title as shown, or by its key in the menu file, whole or from the last dot
/// on. False, with a sentence in @p error, if the menu has no such entry.
bool openMenuEntry(Session &session, const QStringList &path, QString *error);

}
