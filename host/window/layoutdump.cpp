#include "window/layoutdump.h"

#include "panel/control.h"

#include <QtCore/QJsonArray>
#include <QtWidgets/QToolButton>

namespace panelhost {

static void addGeometry(QJsonObject &geometries, const QWidget &widget)
{
    const QPoint at = widget.mapToGlobal(QPoint());
    if (widget.isVisible() && !widget.objectName().isEmpty())
        geometries.insert(widget.objectName(), QJsonArray{at.x(), at.y(), widget.width(), widget.height()});
}

QJsonObject dumpLayout(const QWidget &window)
{
    QJsonObject geometries;
    addGeometry(geometries, window);
    const auto controls = window.findChildren<Control *>();
    for (const Control *control : controls)
        addGeometry(geometries, *control);
    const auto buttons = window.findChildren<QToolButton *>();
    for (const QToolButton *button : buttons)
        addGeometry(geometries, *button);
    return geometries;
}

}
