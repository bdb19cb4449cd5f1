#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns true if Qt can connect to the display. Qt ends a process whose display it can't reach, so call this before
/// the application object is made and before there is a second thread. Returns false and sets @p error to a sentence if
/// the display can't be reached, or if @p needsDisplay is true and there is no display in the environment.
bool isDisplayReachable(bool needsDisplay, int argc, char **argv, QString *error);

}
