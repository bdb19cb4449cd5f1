#pragma once

#include <QtWidgets/QWidget>

namespace panelhost {

/// A part of the front panel that is drawn at the panel's scale. It paints and hit-tests in unscaled coordinates, in
/// which it has its natural size. GUI thread.
class ScaledWidget : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Returns the size at scale 1.
    virtual QSize naturalSize() const = 0;
    /// Returns the natural size, scaled.
    QSize sizeHint() const override;
    double scale() const { return m_scale; }
    /// Sets the scale. The caller sets the geometry.
    void setScale(double scale);

protected:
    /// Called after the scale has changed.
    virtual void scaleChanged() {}
    /// Returns the rectangle of the widget in unscaled coordinates.
    QRect area() const;
    /// Returns the point of the widget, in pixels, in unscaled coordinates.
    QPointF unscaled(const QPointF &point) const { return point / m_scale; }
    QRect scaled(const QRect &rect) const;

private:
    double m_scale = 1;
};

/// Returns @p rect multiplied by @p scale. Adjacent rectangles stay adjacent.
QRect scaledRect(const QRect &rect, double scale);

}
