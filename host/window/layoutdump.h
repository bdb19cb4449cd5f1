#pragma once

#include <QtCore/QJsonObject>

class QWidget;

namespace panelhost {

/// Returns the geometry of each named control of @p window in pixels of the screen, as JSON: "key-33": [x, y, width,
/// height].
QJsonObject dumpLayout(const QWidget &window);

}
