#pragma once

#include "panel/control.h"

namespace panelhost {

/// The knob. The mouse wheel or a click on a side turns it, which navigates up or down. A click in the middle is Enter.
class Knob : public Control
{
    Q_OBJECT

public:
    explicit Knob(QWidget *parent);

    QSize naturalSize() const override;
    void activate() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void navigate(const QString &key, int turn);
    QRectF disc() const;

    int m_turn = 0; ///< degrees
};

}
