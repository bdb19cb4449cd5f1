#pragma once

#include <QtCore/QPointF>
#include <QtWidgets/QWidget>

namespace LCD::RepairPages {

class TouchCells;

/// Covers a page with cells, which the operator touches. Qt delivers a finger that no widget has accepted as the left
/// mouse button. The widget never has the focus, so the keys operate the page below. GUI thread.
class TouchGrid : public QWidget
{
    Q_OBJECT

public:
    explicit TouchGrid(QWidget *parent);

    /// Shows the widget with these cells, which must stay valid until the next call; nullptr hides it.
    void showCells(const TouchCells *cells);

Q_SIGNALS:
    /// Emitted when a finger is put down, with the same point twice, and when it moves. The points are fractions of the
    /// widget's size.
    void touched(const QPointF &from, const QPointF &to);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    QRect cellRect(int column, int row) const;
    QPointF fraction(const QPointF &position) const;

    const TouchCells *m_cells = nullptr;
    QPointF m_last; ///< where the finger was reported last
};

}
