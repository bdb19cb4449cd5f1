#pragma once

#include "panel/control.h"

namespace panelhost {

/// The glass over the LCD: turns the mouse into touches at LCD pixels and the keyboard into navigation, so that
/// nothing reaches the component but what the operator is known to have done. It filters the LCD's own key events.
class LcdOverlay : public Control
{
    Q_OBJECT

public:
    LcdOverlay(QWidget *lcd, QWidget *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool isOnLcd(QObject *watched) const;
    bool navigate(int key);

    QWidget *m_lcd;
};

}
