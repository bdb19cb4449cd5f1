#include "window/kioskwindow.h"

#include "panel/lcdinput.h"
#include "session/session.h"

#include <QtGui/QPainter>

namespace panelhost {

KioskWindow::KioskWindow(Session &session) : m_session(session), m_input(new LcdInput(session.lcd(), this))
{
    setObjectName(QStringLiteral("kiosk"));
    setWindowTitle(QStringLiteral("panelhost"));
    QWidget *lcd = m_session.lcd();
    resize(lcd->size());
    lcd->setParent(this);
    lcd->show();
    m_input->raise();
    connect(m_input, &Control::actionTriggered, this,
            [this](const OperatorAction &action) { m_session.panelOperator().perform(action); });
}

// The LCD belongs to the session, which ends after the window.
KioskWindow::~KioskWindow()
{
    m_session.clock().stop();
    m_session.lcd()->setParent(nullptr);
}

void KioskWindow::resizeEvent(QResizeEvent *)
{
    QWidget *lcd = m_session.lcd();
    lcd->move((width() - lcd->width()) / 2, (height() - lcd->height()) / 2);
    m_input->setGeometry(lcd->geometry());
}

void KioskWindow::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Qt::black);
}

}
