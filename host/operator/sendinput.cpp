#include "operator/sendinput.h"

#include "lcd/screenreader.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace panelhost {

namespace {

constexpr struct
{
    const char *name;
    Qt::Key key;
} navigation[] = {
    {"up", Qt::Key_Up},          {"down", Qt::Key_Down},          {"left", Qt::Key_Left}, {"right", Qt::Key_Right},
    {"enter", Qt::Key_Return},   {"back", Qt::Key_Escape},        {"home", Qt::Key_Home}, {"end", Qt::Key_End},
    {"page-up", Qt::Key_PageUp}, {"page-down", Qt::Key_PageDown},
};

// The innermost page that is visible and isn't just a part of another.
QWidget *visiblePage(QWidget &lcd)
{
    if (QWidget *frame = findTestFrame(&lcd))
        return frame;
    const QList<QWidget *> pages = lcd.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *page : pages) {
        if (page->isVisibleTo(&lcd))
            return page;
    }
    return &lcd;
}

QWidget *keyTarget(QWidget &lcd)
{
    QWidget *focus = lcd.focusWidget();
    return focus && focus->isVisibleTo(&lcd) ? focus : visiblePage(lcd);
}

void sendMouse(QWidget *target, QEvent::Type type, const QPointF &local, const QPointF &global)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, local, local, global, changed, held, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

}

QStringList navigationKeys()
{
    QStringList names;
    for (const auto &known : navigation)
        names << QString::fromLatin1(known.name);
    return names;
}

std::optional<Qt::Key> navigationKey(const QString &name)
{
    for (const auto &known : navigation) {
        if (name == QLatin1String(known.name))
            return known.key;
    }
    return std::nullopt;
}

void sendKey(QWidget &lcd, Qt::Key key)
{
    const QString text = key == Qt::Key_Return ? QStringLiteral("\r") : QString();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(keyTarget(lcd), &event);
    }
}

void sendTouch(QWidget &widget, const QPoint &point)
{
    QWidget *inner = widget.childAt(point);
    const QPointer<QWidget> target = inner ? inner : &widget;
    const QPointF global = widget.mapToGlobal(point);
    const QPointF local = inner ? inner->mapFrom(&widget, point) : point;
    sendMouse(target, QEvent::MouseButtonPress, local, global);
    if (target)
        sendMouse(target, QEvent::MouseButtonRelease, local, global);
}

void Finger::putDown(QWidget &lcd, const QPoint &point)
{
    m_isDown = true;
    m_lcd = &lcd;
    m_target = lcd.childAt(point) ? lcd.childAt(point) : &lcd;
    m_point = point;
    send(QEvent::MouseButtonPress);
}

void Finger::moveTo(const QPoint &point)
{
    m_point = point;
    send(QEvent::MouseMove);
}

void Finger::lift()
{
    m_isDown = false;
    send(QEvent::MouseButtonRelease);
}

void Finger::send(QEvent::Type type)
{
    if (m_lcd && m_target)
        sendMouse(m_target, type, m_target->mapFrom(m_lcd, m_point), m_lcd->mapToGlobal(m_point));
}

QWidget *findSoftButton(QWidget &lcd, const QString &side)
{
    const QString name =
        side == QLatin1String("left") ? QStringLiteral("FactoryLeftButton") : QStringLiteral("FactoryRightButton");
    QWidget *frame = findTestFrame(&lcd);
    QWidget *button = frame ? frame->findChild<QWidget *>(name) : nullptr;
    return button && button->isVisibleTo(&lcd) ? button : nullptr;
}

}
