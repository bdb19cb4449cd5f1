#include "panel/lcdinput.h"

#include "panel/lcdview.h"

#include <QtCore/QHash>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>

#include <cmath>
#include <utility>

namespace panelhost {

LcdInput::LcdInput(QWidget *lcd, QWidget *parent)
    : Control(QStringLiteral("lcd-overlay"), QStringLiteral("LCD touch screen"), parent), m_lcd(lcd)
{
    setToolTip({});
    setCursor(Qt::ArrowCursor);
    QCoreApplication::instance()->installEventFilter(this);
}

void LcdInput::navigate(int key)
{
    static const QHash<int, QString> keys = {
        {Qt::Key_Up, QStringLiteral("up")},        {Qt::Key_Down, QStringLiteral("down")},
        {Qt::Key_Left, QStringLiteral("left")},    {Qt::Key_Right, QStringLiteral("right")},
        {Qt::Key_Return, QStringLiteral("enter")}, {Qt::Key_Enter, QStringLiteral("enter")},
        {Qt::Key_Escape, QStringLiteral("back")},  {Qt::Key_Backspace, QStringLiteral("back")},
    };
    const auto found = keys.constFind(key);
    if (found != keys.constEnd())
        Q_EMIT actionTriggered({OperatorAction::Kind::Navigate, {{QStringLiteral("key"), *found}}});
}

void LcdInput::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    focusLcd();
    m_last = lcdPoint(*event);
    m_isMoving = false;
}

// A click is one action, so that recordings are short. It becomes a drag when the mouse has moved by some pixels.
void LcdInput::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint point = lcdPoint(*event);
    if (!(event->buttons() & Qt::LeftButton) || (point - m_last).manhattanLength() < QApplication::startDragDistance())
        return;
    if (!std::exchange(m_isMoving, true))
        touch(OperatorAction::Kind::TouchDown, m_last);
    touch(OperatorAction::Kind::TouchMove, point);
    m_last = point;
}

void LcdInput::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (!std::exchange(m_isMoving, false))
        return touch(OperatorAction::Kind::Touch, m_last);
    touch(OperatorAction::Kind::TouchMove, lcdPoint(*event));
    Q_EMIT actionTriggered({OperatorAction::Kind::TouchUp, {}});
}

// The LCD can be shown larger or smaller than it is. The mouse may leave the LCD while its button is held; a finger
// can't.
QPoint LcdInput::lcdPoint(const QMouseEvent &event) const
{
    const auto pixel = [](double place, int shown, int pixels) {
        return qBound(0, static_cast<int>(std::floor(place * pixels / qMax(shown, 1))), pixels - 1);
    };
    return {pixel(event.localPos().x(), width(), m_lcd->width()),
            pixel(event.localPos().y(), height(), m_lcd->height())};
}

void LcdInput::touch(OperatorAction::Kind kind, const QPoint &point)
{
    Q_EMIT actionTriggered({kind, {{QStringLiteral("x"), point.x()}, {QStringLiteral("y"), point.y()}}});
}

void LcdInput::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().y() != 0)
        navigate(event->angleDelta().y() > 0 ? Qt::Key_Up : Qt::Key_Down);
}

// Returns the focus from the journal's filter to the LCD.
void LcdInput::focusLcd()
{
    if (!isOnLcd(QApplication::focusWidget()))
        panelhost::focusLcd(*m_lcd);
}

bool LcdInput::isOnLcd(const QWidget *widget) const
{
    return widget && (widget == m_lcd || m_lcd->isAncestorOf(widget) || isViewOfLcd(*widget, *m_lcd));
}

bool LcdInput::isForOperator(const QWidget *widget) const
{
    const bool isOther = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QMenuBar *>(widget);
    return widget && (widget->window() == window() || isOnLcd(widget)) && !isOther;
}

// Key events of the window system become actions, whichever widget has the focus. The events that the operator sends to
// the component aren't spontaneous and are passed on.
bool LcdInput::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    const auto *widget = isKey && event->spontaneous() ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!isForOperator(widget))
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return isOnLcd(widget);
    if (key->type() == QEvent::KeyPress)
        navigate(key->key());
    return true;
}

}
