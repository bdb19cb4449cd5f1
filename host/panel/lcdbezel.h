#pragma once

#include <QtWidgets/QWidget>

namespace panelhost {

class LcdInput;

/// The bezel with the LCD and the overlay for input. It doesn't own the LCD and removes it from itself when it is
/// deleted.
class LcdBezel : public QWidget
{
    Q_OBJECT

public:
    LcdBezel(QWidget *lcd, QWidget *parent);
    ~LcdBezel() override;

    LcdInput *input() const { return m_input; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *m_lcd;
    LcdInput *m_input;
};

}
