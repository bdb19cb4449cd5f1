#pragma once

#include "device/tbarstate.h"
#include "panel/control.h"

namespace panelhost {

/// The T-Bar, drawn as a slider or a fader. Shows the state of its calibration and the end to which it must be moved
/// for the next calibration step.
class TBarWidget : public Control
{
    Q_OBJECT

public:
    explicit TBarWidget(QWidget *parent);

    void setState(const TBarState &bar);
    double position() const { return m_bar.position; }
    /// Returns the y coordinate of the bar's middle for @p position, in unscaled coordinates.
    int yOf(double position) const;
    QSize naturalSize() const override;
    /// Emits the action that moves the bar to @p position, unless it is there.
    void moveTo(double position);
    bool handleKey(int key) override;
    QAccessible::Role accessibleRole() const override { return QAccessible::Slider; }
    QString stateText() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QRect track() const;
    void drawScale(QPainter &painter) const;
    void drawTarget(QPainter &painter) const;
    void drawFoot(QPainter &painter) const;
    void showStateHelp();
    void drawSlider(QPainter &painter, const QPoint &center) const;
    void drawFader(QPainter &painter, const QPoint &center) const;

    TBarState m_bar;
};

}
