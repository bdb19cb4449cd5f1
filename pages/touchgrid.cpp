#include "touchgrid.h"

#include "touchcells.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

namespace LCD::RepairPages {

TouchGrid::TouchGrid(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("TouchGrid"));
    hide();
}

void TouchGrid::showCells(const TouchCells *cells)
{
    m_cells = cells;
    setVisible(cells);
    if (cells)
        raise();
    update();
}

// The page below stays readable.
void TouchGrid::paintEvent(QPaintEvent *)
{
    if (!m_cells)
        return;
    QPainter painter(this);
    painter.setPen(QColor(61, 165, 255));
    for (int row = 0; row < TouchCells::Rows; ++row) {
        for (int column = 0; column < TouchCells::Columns; ++column) {
            painter.setBrush(m_cells->isTouched(column, row) ? QColor(18, 154, 55, 140) : QColor(61, 165, 255, 30));
            painter.drawRect(cellRect(column, row).adjusted(2, 2, -3, -3));
        }
    }
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
