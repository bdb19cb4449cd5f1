#pragma once

#include <QtWidgets/QWidget>

namespace panelhost {

class LcdOverlay;

/// The bezel with the LCD in it and the touch glass over it. It borrows the LCD and gives it back when it goes.
class LcdBay : public QWidget
{
    Q_OBJECT

public:
    LcdBay(QWidget *lcd, QWidget *parent);
    ~LcdBay() override;

    LcdOverlay *glass() const { return m_glass; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *m_lcd;
    LcdOverlay *m_glass;
};

}
