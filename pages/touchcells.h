#pragma once

#include <QtCore/QPointF>

#include <bitset>

namespace LCD::RepairPages {

/// The cells that cover the page of the touch screen test, and which of them were touched. Points are fractions of the
/// page's size, from (0, 0) at the top left to (1, 1).
class TouchCells
{
public:
    static constexpr int Columns = 8;
    static constexpr int Rows = 5;
    static constexpr int Count = Columns * Rows;

    void clear() { m_touched.reset(); }
    /// Marks the cells on the straight line between two points. Points outside the page are ignored.
    void touch(const QPointF &from, const QPointF &to);
    bool isTouched(int column, int row) const { return m_touched.test(indexOf(column, row)); }
    int touchedCount() const { return static_cast<int>(m_touched.count()); }
    bool areAllTouched() const { return m_touched.all(); }

private:
    static std::size_t indexOf(int column, int row) { return static_cast<std::size_t>(row * Columns + column); }
    void touchPoint(const QPointF &point);

    std::bitset<Count> m_touched;
};

}
