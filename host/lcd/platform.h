#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns false if @p platform, such as "offscreen", shows its windows nowhere.
bool hasDisplay(const QString &platform);

}
