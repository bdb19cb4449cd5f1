#include "panel/lcdinput.h"

#include "panel/lcdview.h"
#include "panel/translated.h"

#include <QtCore/QHash>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenuBar>

#include <cmath>
#include <utility>

namespace panelhost {

LcdInput::LcdInput(QWidget *lcd, QWidget *parent) : Control(QStringLiteral("lcd-overlay"), parent), m_lcd(lcd)
{
    keepTranslated(this, [this] { setAccessibleName(tr("LCD touch screen")); });
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    QCoreApplication::instance()->installEventFilter(this);
}

void LcdInput::navigate(int key)
{
    static const QHash<int, QString> keys = {
        {Qt::Key_Up, QStringLiteral("up")},          {Qt::Key_Down, QStringLiteral("down")},
        {Qt::Key_Left, QStringLiteral("left")},      {Qt::Key_Right, QStringLiteral("right")},
        {Qt::Key_Return, QStringLiteral("enter")},   {Qt::Key_Enter, QStringLiteral("enter")},
        {Qt::Key_Escape, QStringLiteral("back")},    {Qt::Key_Backspace, QStringLiteral("back")},
        {Qt::Key_Home, QStringLiteral("home")},      {Qt::Key_End, QStringLiteral("end")},
        {Qt::Key_PageUp, QStringLiteral("page-up")}, {Qt::Key_PageDown, QStringLiteral("page-down")},
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
    const bool isOther = qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QMenuBar *>(widget)
        || (qobject_cast<const QAbstractItemView *>(widget) && !isOnLcd(widget));
    return widget && (widget->window() == window() || isOnLcd(widget)) && !isOther;
}

// Key events of the window system become actions, whichever widget has the focus. The events that the operator sends to
// the component aren't spontaneous and are passed on.
bool LcdInput::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    auto *widget = isKey && event->spontaneous() ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!isForOperator(widget))
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))
        return isOnLcd(widget);
    if (handleFocusKey(widget, *key))
        return true;
    // Buttons of the window are pressed with Space.
    if (key->key() == Qt::Key_Space && qobject_cast<const QAbstractButton *>(widget) && !isOnLcd(widget))
        return false;
    if (key->type() == QEvent::KeyPress)
        navigate(key->key());
    return true;
}

// Tab moves from one control of the window to the next; the LCD as a whole is one of them.
bool LcdInput::handleFocusKey(QWidget *widget, const QKeyEvent &key)
{
    const bool isPress = key.type() == QEvent::KeyPress;
    if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
        if (isPress)
            focusNextPrevChild(key.key() == Qt::Key_Tab);
        return true;
    }
    auto *control = qobject_cast<Control *>(widget);
    if (!control)
        return false;
    if (key.key() != Qt::Key_Space)
        return isPress && control->handleKey(key.key());
    if (isPress && !key.isAutoRepeat())
        key.modifiers() & Qt::ShiftModifier ? control->activateOther() : control->activate();
    return true;
}

}
