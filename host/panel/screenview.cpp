#include "panel/screenview.h"

#include "panel/theme.h"

#include <QtGui/QPainter>

namespace panelhost {

static void drawSolid(QPainter &painter, const QRect &rect, int index)
{
    constexpr QRgb colors[] = {0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff};
    painter.fillRect(rect, QColor(colors[(index - 1) & 3]));
}

static void drawRamp(QPainter &painter, const QRect &rect, const QPoint &end, const QColor &light)
{
    QLinearGradient ramp(rect.topLeft(), end);
    ramp.setColorAt(0, QColor(theme::Black));
    ramp.setColorAt(1, light);
    painter.fillRect(rect, ramp);
}

static void drawGrid(QPainter &painter, const QRect &rect, const QColor &light)
{
    painter.fillRect(rect, QColor(theme::Black));
    painter.setPen(light);
    for (int x = rect.left(); x <= rect.right(); x += theme::Grid)
        painter.drawLine(x, rect.top(), x, rect.bottom());
    for (int y = rect.top(); y <= rect.bottom(); y += theme::Grid)
        painter.drawLine(rect.left(), y, rect.right(), y);
}

static void drawGreys(QPainter &painter, const QRect &rect, const TestPattern &pattern)
{
    const int level = qBound(0, pattern.level, 255);
    const QColor light(level, level, level);
    switch (pattern.index) {
    case 2:
        return drawRamp(painter, rect, rect.topRight(), light);
    case 3:
        return drawRamp(painter, rect, rect.bottomLeft(), light);
    case 4:
        return drawGrid(painter, rect, light);
    default:
        painter.fillRect(rect, light);
    }
}

bool hasTestPattern(const TestPattern &pattern)
{
    return pattern.type == 1 || pattern.type == 3;
}

void drawTestPattern(QPainter &painter, const QRect &rect, const TestPattern &pattern)
{
    if (pattern.type == 1)
        drawSolid(painter, rect, pattern.index);
    else if (pattern.type == 3)
        drawGreys(painter, rect, pattern);
}

ScreenView::ScreenView(int index, QWidget *parent) : ScaledWidget(parent), m_index(index)
{
    setObjectName(QStringLiteral("screen%1").arg(index));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ScreenView::naturalSize() const
{
    return {15 * theme::Grid, 12 * theme::Grid};
}

void ScreenView::setState(int brightness, const TestPattern &pattern)
{
    const bool isSame = brightness == m_brightness && pattern.type == m_pattern.type && pattern.index == m_pattern.index
        && pattern.level == m_pattern.level;
    m_brightness = brightness;
    m_pattern = pattern;
    setAccessibleName(tr("Screen %1, brightness %2 %").arg(m_index + 1).arg(brightness));
    setToolTip(accessibleName());
    if (!isSame)
        update();
}

void ScreenView::drawIdle(QPainter &painter, const QRect &screenRect) const
{
    painter.fillRect(screenRect, QColor(0xff1d4f7a));
    painter.setPen(QColor(theme::White));
    painter.setFont(theme::font(24, true));
    painter.drawText(screenRect, Qt::AlignCenter, QString::number(m_index + 1));
}

void ScreenView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    const QRect frame = area().adjusted(0, 0, 0, -2 * theme::Grid);
    const QRect screenRect = frame.adjusted(6, 6, -6, -6);
    theme::drawRecess(painter, frame, theme::Black);
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (hasTestPattern(m_pattern))
        drawTestPattern(painter, screenRect, m_pattern);
    else
        drawIdle(painter, screenRect);
    const int dark = 255 * (100 - qBound(0, m_brightness, 100)) / 100;
    painter.fillRect(screenRect, QColor(0, 0, 0, dark));
    const QRect caption(0, frame.bottom() + 1, area().width(), 2 * theme::Grid);
    const QString level = QStringLiteral("%1 %").arg(m_brightness);
    theme::drawCaption(painter, caption, Qt::AlignRight | Qt::AlignBottom, level);
    const QRect name = caption.adjusted(0, 0, -painter.fontMetrics().horizontalAdvance(level) - theme::Grid / 2, 0);
    theme::drawCaption(painter, name, Qt::AlignLeft | Qt::AlignBottom, tr("SCREEN %1").arg(m_index + 1));
}

}
