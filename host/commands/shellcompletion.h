#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns a script with which bash completes the command line of panelhost.
QString bashCompletion();

/// Returns a script with which zsh completes it, and shows the descriptions of commands and options.
QString zshCompletion();

}
