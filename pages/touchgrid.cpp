#include "touchgrid.h"

#include "touchcells.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <algorithm>

namespace LCD::RepairPages {

TouchGrid::TouchGrid(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("TouchGrid"));
    hide();
}

void TouchGrid::showCells(const TouchCells *cells, const QStringList &lines)
{
    m_cells = cells;
    m_text = lines.join(QLatin1Char('\n'));
    setVisible(cells);
    if (cells)
        raise();
    update();
}

// Nothing of the page below is seen, so that its texts and those of the grid aren't mixed.
void TouchGrid::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(16, 20, 26));
    if (!m_cells)
        return;
    paintCells(painter);
    paintText(painter);
}

void TouchGrid::paintCells(QPainter &painter) const
{
    painter.setPen(QColor(61, 165, 255));
    for (int row = 0; row < TouchCells::Rows; ++row) {
        for (int column = 0; column < TouchCells::Columns; ++column) {
            painter.setBrush(m_cells->isTouched(column, row) ? QColor(18, 154, 55) : QColor(22, 38, 56));
            painter.drawRect(cellRect(column, row).adjusted(2, 2, -3, -3));
        }
    }
}

// In the middle, as large as possible. The plate behind the text lets the cells show through.
void TouchGrid::paintText(QPainter &painter) const
{
    constexpr int Flags = Qt::AlignCenter | Qt::TextWordWrap;
    constexpr int SmallestFont = 9;
    const QRect room = cellRect(1, 1) | cellRect(TouchCells::Columns - 2, TouchCells::Rows - 2);
    const int margin = height() / 40;
    const QRect limit = room.adjusted(margin, margin, -margin, -margin);
    QFont font = painter.font();
    QRect bounds;
    for (int size = std::max(SmallestFont, height() / 18); size >= SmallestFont; --size) {
        font.setPixelSize(size);
        bounds = QFontMetrics(font).boundingRect(limit, Flags, m_text);
        if (limit.contains(bounds))
            break;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 170));
    painter.drawRoundedRect(bounds.adjusted(-margin, -margin, margin, margin), margin, margin);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(limit, Flags, m_text);
}

QRect TouchGrid::cellRect(int column, int row) const
{
    const QPoint topLeft(width() * column / TouchCells::Columns, height() * row / TouchCells::Rows);
    const QPoint next(width() * (column + 1) / TouchCells::Columns, height() * (row + 1) / TouchCells::Rows);
    return {topLeft, next - QPoint(1, 1)};
}

void TouchGrid::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_last = fraction(event->localPos());
    Q_EMIT touched(m_last, m_last);
}

void TouchGrid::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF from = m_last;
    m_last = fraction(event->localPos());
    Q_EMIT touched(from, m_last);
}

QPointF TouchGrid::fraction(const QPointF &position) const
{
    return {position.x() / width(), position.y() / height()};
}

}
