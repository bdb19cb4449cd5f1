#pragma once

#include <QtCore/QPoint>
#include <QtCore/QStringList>
#include <QtCore/Qt>

#include <optional>

class QWidget;

namespace panelhost {

/// The names of the knob's and joystick's moves, and the key events that they are to the LCD.
QStringList navigationKeys();
std::optional<Qt::Key> navigationKey(const QString &name);

/// Key down and up, to the widget of the LCD that has the focus, or else to its visible page.
void sendKey(QWidget &lcd, Qt::Key key);

/// Down and up with the first mouse button at @p point of @p widget, to the innermost widget there.
void sendTouch(QWidget &widget, const QPoint &point);

/// The visible soft button of the page on the side "left" or "right", nullptr when there is none.
QWidget *findSoftButton(QWidget &lcd, const QString &side);

}
