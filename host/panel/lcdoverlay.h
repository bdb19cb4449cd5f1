#pragma once

#include "panel/control.h"

namespace panelhost {

/// The glass over the LCD: turns the mouse into touches at LCD pixels and the window's keyboard into navigation, so
/// that nothing reaches the component but what the operator is known to have done. It never has the focus: that stays
/// on the LCD, where it would be without a window around it.
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
