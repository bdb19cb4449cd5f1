#pragma once

#include "panel/control.h"

class QKeyEvent;

namespace panelhost {

/// Converts the keyboard and mouse input of the window to operator actions, so that all input of the component is in
/// the journal: mouse clicks become touches, and drags become a finger that moves; arrow keys, Enter, Escape and the
/// wheel become movements of the knob. It is a transparent overlay of the LCD. It never takes the focus; the focus
/// stays on the LCD. The operator sends the Qt events of these actions (operator/sendinput).
class LcdInput : public Control
{
    Q_OBJECT

public:
    LcdInput(QWidget *lcd, QWidget *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;
    QAccessible::Role accessibleRole() const override { return QAccessible::Graphic; }
    QSize naturalSize() const override { return m_lcd->size(); }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool isOnLcd(const QWidget *widget) const;
    bool isForOperator(const QWidget *widget) const;
    void focusLcd();
    bool handleFocusKey(QWidget *widget, const QKeyEvent &key);
    void navigate(int key);
    QPoint lcdPoint(const QMouseEvent &event) const;
    void touch(OperatorAction::Kind kind, const QPoint &point);

    QWidget *m_lcd;
    QPoint m_last; ///< where the mouse was pressed, or where the finger was moved to last
    bool m_isMoving = false;
};

}
