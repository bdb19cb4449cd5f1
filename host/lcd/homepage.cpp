#include "lcd/homepage.h"

#include <QtGui/QKeyEvent>

namespace panelhost {

HomePage::HomePage(QWidget *parent) : HostPage("HostFactoryMode", parent)
{
    setTexts(text("HostReady"), text("HostPressEnter"));
    connect(this, &HostPage::controlUsed, this, &HomePage::factoryModeWanted);
}

void HomePage::translate()
{
    HostPage::translate();
    setTexts(text("HostReady"), text("HostPressEnter"));
}

void HomePage::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT factoryModeWanted();
    else
        HostPage::keyPressEvent(event);
}

}
