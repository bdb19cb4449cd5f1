#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns false if @p platform doesn't show windows on a display, such as "offscreen".
bool hasDisplay(const QString &platform);

}
