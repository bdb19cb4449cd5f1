#pragma once

#include "device/device.h"
#include "panel/control.h"

namespace panelhost {

/// The T-Bar, drawn as the cap of a slider or as the lever of a fader, with what its calibration is doing below
/// it and the end at which the next calibration step needs it.
class TBarWidget : public Control
{
    Q_OBJECT

public:
    explicit TBarWidget(QWidget *parent);

    void setState(const TBarState &bar);
    double position() const { return m_bar.position; }
    /// Where the bar's middle stands for @p position, in pixels from the widget's top.
    int yOf(double position) const;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void moveTo(double position);
    QRect track() const;
    void drawScale(QPainter &painter) const;
    void drawTarget(QPainter &painter) const;
    void drawFoot(QPainter &painter) const;
    void drawSlider(QPainter &painter, const QPoint &center) const;
    void drawFader(QPainter &painter, const QPoint &center) const;

    TBarState m_bar;
};

}
