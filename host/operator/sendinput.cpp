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
    {"up", Qt::Key_Up},       {"down", Qt::Key_Down},    {"left", Qt::Key_Left},
    {"right", Qt::Key_Right}, {"enter", Qt::Key_Return}, {"back", Qt::Key_Escape},
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
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, local, local, global, Qt::LeftButton, held, Qt::NoModifier);
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

QWidget *findSoftButton(QWidget &lcd, const QString &side)
{
    const QString name =
        side == QLatin1String("left") ? QStringLiteral("FactoryLeftButton") : QStringLiteral("FactoryRightButton");
    QWidget *frame = findTestFrame(&lcd);
    QWidget *button = frame ? frame->findChild<QWidget *>(name) : nullptr;
    return button && button->isVisibleTo(&lcd) ? button : nullptr;
}

}
