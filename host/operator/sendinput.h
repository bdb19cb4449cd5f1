#pragma once

#include <QtCore/QEvent>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/Qt>
#include <QtWidgets/QWidget>

#include <optional>

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

/// A finger on the LCD. The widget that is below the finger when it is put down gets all of its movements, as with a
/// grabbed mouse. If that widget is deleted, no widget gets them.
class Finger
{
public:
    bool isDown() const { return m_isDown; }
    void putDown(QWidget &lcd, const QPoint &point);
    void moveTo(const QPoint &point);
    void lift();

private:
    void send(QEvent::Type type);

    bool m_isDown = false;
    QPointer<QWidget> m_lcd;
    QPointer<QWidget> m_target;
    QPoint m_point; ///< in LCD pixels
};

/// Returns the visible soft button of the page on @p side, "left" or "right"; nullptr if there is none.
QWidget *findSoftButton(QWidget &lcd, const QString &side);

}
