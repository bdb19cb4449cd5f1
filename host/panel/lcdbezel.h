#pragma once

#include <QtWidgets/QWidget>

namespace panelhost {

class LcdOverlay;

/// The bezel with the LCD in it and the touch glass over it. It borrows the LCD and gives it back when it goes.
class LcdBezel : public QWidget
{
    Q_OBJECT

public:
    LcdBezel(QWidget *lcd, QWidget *parent);
    ~LcdBezel() override;

    LcdOverlay *overlay() const { return m_overlay; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *m_lcd;
    LcdOverlay *m_overlay;
};

}
