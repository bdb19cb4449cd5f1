#pragma once

#include <QtCore/QSize>
#include <QtCore/Qt>

namespace panelhost {

/// Where docks are next to the front panel.
struct DockPlace
{
    Qt::DockWidgetArea area; ///< right or bottom
    int extent;              ///< width of the docks on the right, or their height at the bottom, in pixels
};

/// Returns where docks leave the most room for a panel with the proportions of @p panel. They get what the panel can't
/// use, but not less than @p minimum. @p window is the room for both.
DockPlace placeDocks(const QSize &window, const QSize &panel, const QSize &minimum);

}
