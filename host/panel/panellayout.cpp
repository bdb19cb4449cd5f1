#include "panel/panellayout.h"

#include "panel/control.h"

#include <QtCore/QJsonArray>
#include <QtWidgets/QToolButton>

namespace panelhost {

static void addPlace(QJsonObject &places, const QWidget &widget)
{
    const QPoint at = widget.mapToGlobal(QPoint());
    if (widget.isVisible() && !widget.objectName().isEmpty())
        places.insert(widget.objectName(), QJsonArray{at.x(), at.y(), widget.width(), widget.height()});
}

QJsonObject layoutOf(const QWidget &window)
{
    QJsonObject places;
    addPlace(places, window);
    const auto controls = window.findChildren<Control *>();
    for (const Control *control : controls)
        addPlace(places, *control);
    const auto buttons = window.findChildren<QToolButton *>();
    for (const QToolButton *button : buttons)
        addPlace(places, *button);
    return places;
}

}
