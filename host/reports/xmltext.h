#pragma once

#include <QtCore/QString>

namespace panelhost {

/// Returns @p text with the characters that XML doesn't allow replaced.
QString xmlText(QString text);

}
