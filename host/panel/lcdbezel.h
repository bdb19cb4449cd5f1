#pragma once

#include "panel/scaledwidget.h"

namespace panelhost {

class LcdInput;
class LcdView;

/// The bezel with the LCD and the overlay for input. An LCD with many pixels is drawn smaller, so that there is room
/// for the other parts of the panel.
class LcdBezel : public ScaledWidget
{
    Q_OBJECT

public:
    /// @p lcd isn't owned and must outlive the bezel.
    LcdBezel(QWidget *lcd, QWidget *parent);

    LcdInput *input() const { return m_input; }
    QSize naturalSize() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QSize m_lcdSize; ///< of the shown LCD at scale 1
    LcdView *m_view;
    LcdInput *m_input;
};

}
