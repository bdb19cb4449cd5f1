#pragma once

#include "panel/control.h"

namespace panelhost {

/// A transparent overlay of the LCD. It converts mouse events to touch actions and key events of the window to
/// navigation actions, so that all input of the component is in the journal. It never takes the focus, which stays on
/// the LCD.
class LcdOverlay : public Control
{
    Q_OBJECT

public:
    LcdOverlay(QWidget *lcd, QWidget *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool isOnLcd(const QWidget *widget) const;
    bool isForOperator(const QWidget *widget) const;
    void focusLcd();
    void navigate(int key);

    QWidget *m_lcd;
};

}
