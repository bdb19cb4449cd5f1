#pragma once

#include <QtCore/QString>

namespace panelhost {

/// @p text without the characters that XML can't hold, each replaced.
QString xmlText(QString text);

}
