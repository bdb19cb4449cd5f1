#include "panel/control.h"

namespace panelhost {

Control::Control(const QString &name, const QString &description, QWidget *parent) : ScaledWidget(parent)
{
    setObjectName(name);
    setAccessibleName(description);
    setToolTip(description);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
}

}
