#include "touchcells.h"

#include <algorithm>
#include <cmath>

namespace LCD::RepairPages {

// A finger is reported at points that may be far from each other, so the line between them is walked in small steps.
void TouchCells::touch(const QPointF &from, const QPointF &to)
{
    constexpr int StepsPerCell = 8;
    const QPointF way = to - from;
    const double cells = std::max(std::abs(way.x()) * Columns, std::abs(way.y()) * Rows);
    const int count = std::max(1, static_cast<int>(std::ceil(cells * StepsPerCell)));
    for (int step = 0; step <= count; ++step)
        touchPoint(from + way * step / count);
}

void TouchCells::touchPoint(const QPointF &point)
{
    const bool isInside = point.x() >= 0 && point.x() < 1 && point.y() >= 0 && point.y() < 1;
    if (isInside)
        m_touched.set(indexOf(static_cast<int>(point.x() * Columns), static_cast<int>(point.y() * Rows)));
}

}
