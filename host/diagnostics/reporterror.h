#pragma once

class QString;

namespace panelhost {

/// Writes "panelhost: <message>" to the standard error output. Returns the exit status 2.
int reportError(const QString &message);

}
