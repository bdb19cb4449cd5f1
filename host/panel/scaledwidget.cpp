#include "panel/scaledwidget.h"

namespace panelhost {

QRect scaledRect(const QRect &rect, double scale)
{
    const QPoint topLeft(qRound(rect.x() * scale), qRound(rect.y() * scale));
    const QPoint end(qRound((rect.x() + rect.width()) * scale), qRound((rect.y() + rect.height()) * scale));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

QSize ScaledWidget::sizeHint() const
{
    return naturalSize() * m_scale;
}

void ScaledWidget::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    scaleChanged();
    update();
}

QRect ScaledWidget::area() const
{
    return {0, 0, qRound(width() / m_scale), qRound(height() / m_scale)};
}

QRect ScaledWidget::scaled(const QRect &rect) const
{
    return scaledRect(rect, m_scale);
}

}
