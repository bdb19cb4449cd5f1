#pragma once

#include <QtCore/QPoint>
#include <QtCore/QStringList>
#include <QtCore/Qt>

#include <optional>

class QWidget;

namespace panelhost {

// Sends the Qt events of operator actions to the component. The input of the window becomes actions in panel/lcdinput.

/// Returns the names of the movements of knob and joystick.
QStringList navigationKeys();
/// Returns the key that a movement sends; nothing if there is no such movement.
std::optional<Qt::Key> navigationKey(const QString &name);

/// Sends a key press and a key release to the focus widget of the LCD, or to its visible page if there is none.
void sendKey(QWidget &lcd, Qt::Key key);

/// Sends a press and a release of the left mouse button at @p point of @p widget to the innermost widget there.
void sendTouch(QWidget &widget, const QPoint &point);

/// Returns the visible soft button of the page on @p side, "left" or "right"; nullptr if there is none.
QWidget *findSoftButton(QWidget &lcd, const QString &side);

}
