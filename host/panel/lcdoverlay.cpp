#include "panel/lcdoverlay.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <QtGui/QMouseEvent>

namespace panelhost {

LcdOverlay::LcdOverlay(QWidget *lcd, QWidget *parent)
    : Control(QStringLiteral("lcd-glass"), QStringLiteral("LCD touch screen"), parent), m_lcd(lcd)
{
    setToolTip({});
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::ArrowCursor);
    QCoreApplication::instance()->installEventFilter(this);
}

bool LcdOverlay::navigate(int key)
{
    static const QHash<int, QString> keys = {
        {Qt::Key_Up, QStringLiteral("up")},        {Qt::Key_Down, QStringLiteral("down")},
        {Qt::Key_Left, QStringLiteral("left")},    {Qt::Key_Right, QStringLiteral("right")},
        {Qt::Key_Return, QStringLiteral("enter")}, {Qt::Key_Enter, QStringLiteral("enter")},
        {Qt::Key_Escape, QStringLiteral("back")},  {Qt::Key_Backspace, QStringLiteral("back")},
    };
    const auto found = keys.constFind(key);
    if (found == keys.constEnd())
        return false;
    Q_EMIT acted({Action::Kind::Navigate, {{QStringLiteral("key"), *found}}});
    return true;
}

void LcdOverlay::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint at = m_lcd->mapFromGlobal(mapToGlobal(event->pos()));
    Q_EMIT acted({Action::Kind::Touch, {{QStringLiteral("x"), at.x()}, {QStringLiteral("y"), at.y()}}});
}

void LcdOverlay::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().y() != 0)
        navigate(event->angleDelta().y() > 0 ? Qt::Key_Up : Qt::Key_Down);
}

void LcdOverlay::keyPressEvent(QKeyEvent *event)
{
    if (!navigate(event->key()))
        Control::keyPressEvent(event);
}

bool LcdOverlay::isOnLcd(QObject *watched) const
{
    auto *widget = qobject_cast<QWidget *>(watched);
    return widget && (widget == m_lcd || m_lcd->isAncestorOf(widget));
}

// The component moves the keyboard focus into its lists. Keys that come from the window system go round by the
// operator all the same; those that the operator sends aren't spontaneous and pass.
bool LcdOverlay::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (!isKey || !event->spontaneous() || !isOnLcd(watched))
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    if (key->type() == QEvent::KeyPress)
        navigate(key->key());
    return true;
}

}
