#include "window/dockplace.h"

namespace panelhost {

static double scaleIn(double width, double height, const QSize &panel)
{
    return qMin(width / panel.width(), height / panel.height());
}

DockPlace placeDocks(const QSize &window, const QSize &panel, const QSize &minimum)
{
    const double besideDocks = scaleIn(window.width() - minimum.width(), window.height(), panel);
    const double aboveDocks = scaleIn(window.width(), window.height() - minimum.height(), panel);
    if (besideDocks >= aboveDocks)
        return {Qt::RightDockWidgetArea, window.width() - qRound(besideDocks * panel.width())};
    return {Qt::BottomDockWidgetArea, window.height() - qRound(aboveDocks * panel.height())};
}

}
