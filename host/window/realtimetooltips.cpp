#include "window/realtimetooltips.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

namespace panelhost {

constexpr int WakeUpTime = 700; ///< real milliseconds, as in Qt

RealTimeToolTips::RealTimeToolTips(QObject *parent) : QObject(parent)
{
    connect(&m_wakeUp, &RealTimeTimer::timeout, this, &RealTimeToolTips::showTip);
    QCoreApplication::instance()->installEventFilter(this);
}

bool RealTimeToolTips::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        if (const auto *widget = qobject_cast<QWidget *>(watched)) {
            const auto *move = static_cast<QMouseEvent *>(event);
            m_place = move->globalPos();
            hideTipOf(widget);
            move->buttons() == Qt::NoButton ? m_wakeUp.startOnce(WakeUpTime) : m_wakeUp.stop();
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::WindowDeactivate:
        m_wakeUp.stop();
        break;
    case QEvent::Leave:
        if (watched == m_tipOwner)
            hideTipOf(nullptr);
        break;
    default:
        break;
    }
    return false;
}

void RealTimeToolTips::showTip()
{
    QWidget *widget = QApplication::widgetAt(m_place);
    if (!widget || QToolTip::isVisible() || QApplication::activePopupWidget())
        return;
    m_tipOwner = widget;
    QHelpEvent help(QEvent::ToolTip, widget->mapFromGlobal(m_place), m_place);
    QCoreApplication::sendEvent(widget, &help);
}

// Qt would wait for its own timer.
void RealTimeToolTips::hideTipOf(const QWidget *other)
{
    if (!m_tipOwner || m_tipOwner == other)
        return;
    m_tipOwner = nullptr;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->inherits("QTipLabel"))
            window->hide();
    }
}

}
