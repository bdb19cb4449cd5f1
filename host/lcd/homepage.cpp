#include "lcd/homepage.h"

#include <QtGui/QKeyEvent>

namespace panelhost {

HomePage::HomePage(QWidget *parent) : HostPage(QStringLiteral("Factory mode"), parent)
{
    setTexts(QStringLiteral("Ready"), QStringLiteral("Press Enter to go to factory mode."));
    connect(this, &HostPage::controlUsed, this, &HomePage::factoryModeWanted);
}

void HomePage::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT factoryModeWanted();
    else
        HostPage::keyPressEvent(event);
}

}
