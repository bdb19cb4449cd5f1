#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Whether Qt can connect to the display that the process asks for. Call it before the application object is made and
/// before there is a second thread: Qt ends a process whose display it can't reach. False, with one sentence in
/// @p error, if it can't, or if the command opens a window, @p needsDisplay, and no display is named at all.
bool isDisplayReachable(bool needsDisplay, int argc, char **argv, QString *error);

}
