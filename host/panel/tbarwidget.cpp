#include "panel/tbarwidget.h"

#include "panel/look.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <cmath>

namespace panelhost {

using look::Grid;

TBarWidget::TBarWidget(QWidget *parent) : Control(QStringLiteral("tbar"), QStringLiteral("T-Bar"), parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

QSize TBarWidget::sizeHint() const
{
    return {16 * Grid, 26 * Grid};
}

void TBarWidget::setState(TBarType type, double position, const QString &calibrationStep)
{
    if (type == m_type && position == m_position && calibrationStep == m_calibrationStep)
        return;
    m_type = type;
    m_position = position;
    m_calibrationStep = calibrationStep;
    update();
}

QRect TBarWidget::track() const
{
    return rect().adjusted(width() / 2 - Grid / 2, 4 * Grid, -(width() / 2 - Grid / 2), -8 * Grid);
}

int TBarWidget::yOf(double position) const
{
    return track().bottom() - qRound(position * (track().height() - 1));
}

void TBarWidget::drawScale(QPainter &painter) const
{
    look::drawWell(painter, track().adjusted(0, -Grid, 0, Grid), look::Black);
    painter.setPen(QColor(look::InkDim));
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int tick = 0; tick <= 10; ++tick) {
        const int y = yOf(tick / 10.0);
        const int length = tick % 5 == 0 ? 2 * Grid : Grid;
        painter.drawLine(width() / 2 - 3 * Grid - length, y, width() / 2 - 3 * Grid, y);
        painter.drawLine(width() / 2 + 3 * Grid, y, width() / 2 + 3 * Grid + length, y);
    }
}

void TBarWidget::drawSlider(QPainter &painter, const QPoint &center) const
{
    const QRect cap(center.x() - 2 * Grid, center.y() - 2 * Grid, 4 * Grid, 4 * Grid);
    look::drawCap(painter, cap, QColor(look::CapEdge), false);
    painter.fillRect(QRect(cap.left() + 4, center.y() - 1, cap.width() - 8, 2), QColor(look::Accent));
}

void TBarWidget::drawFader(QPainter &painter, const QPoint &center) const
{
    const QRect arm(center.x() - Grid / 2, center.y(), Grid, 2 * Grid);
    const QRect lever(center.x() - 6 * Grid, center.y() - Grid, 12 * Grid, 2 * Grid);
    look::drawCap(painter, arm, QColor(look::Metal), false);
    look::drawCap(painter, lever, QColor(look::CapEdge), false);
    painter.fillRect(QRect(lever.left() + 8, center.y() - 1, lever.width() - 16, 2), QColor(look::Accent));
}

void TBarWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString kind = m_type == TBarType::Fader ? QStringLiteral("T-BAR FADER") : QStringLiteral("T-BAR SLIDER");
    look::drawCaption(painter, QRect(0, 0, width(), 2 * Grid), Qt::AlignCenter, kind);
    drawScale(painter);
    const QPoint center(width() / 2, yOf(m_position));
    m_type == TBarType::Fader ? drawFader(painter, center) : drawSlider(painter, center);
    const QRect foot(0, height() - 5 * Grid, width(), 2 * Grid);
    look::drawCaption(painter, foot, Qt::AlignCenter, QStringLiteral("%1 %").arg(qRound(m_position * 100)));
    const bool isIdle = m_calibrationStep.isEmpty();
    painter.setPen(QColor(isIdle ? look::InkDim : look::Amber));
    painter.drawText(foot.translated(0, 2 * Grid), Qt::AlignCenter,
                     isIdle ? QStringLiteral("ready") : m_calibrationStep);
}

void TBarWidget::moveTo(double position)
{
    const double rounded = std::round(qBound(0.0, position, 1.0) * 100) / 100;
    if (rounded != m_position)
        Q_EMIT acted({Action::Kind::TBar, {{QStringLiteral("position"), rounded}}});
}

void TBarWidget::mousePressEvent(QMouseEvent *event)
{
    mouseMoveEvent(event);
}

void TBarWidget::mouseMoveEvent(QMouseEvent *event)
{
    const bool isDrag = (event->buttons() & Qt::LeftButton) != 0;
    if (isDrag && track().height() > 1)
        moveTo(static_cast<double>(track().bottom() - event->pos().y()) / (track().height() - 1));
}

void TBarWidget::wheelEvent(QWheelEvent *event)
{
    moveTo(m_position + event->angleDelta().y() / 120 * 0.05);
}

}
