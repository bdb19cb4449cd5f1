#pragma once

#include <QtCore/QJsonObject>

class QWidget;

namespace panelhost {

/// The places of all named controls of @p window in pixels of the screen, by name: "key-33": [x, y, width, height].
QJsonObject layoutOf(const QWidget &window);

}
