#pragma once

#include <QtCore/QPointF>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

namespace LCD::RepairPages {

class TouchCells;

/// Covers a page with cells, which the operator touches, and shows what to do over them. Qt delivers a finger that no
/// widget has accepted as the left mouse button. The widget never has the focus, so the keys operate the page below.
/// GUI thread.
class TouchGrid : public QWidget
{
    Q_OBJECT

public:
    explicit TouchGrid(QWidget *parent);

    /// Shows the widget with these cells, which must stay valid until the next call, and with @p lines over them;
    /// nullptr hides it.
    void showCells(const TouchCells *cells, const QStringList &lines);

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
    void paintCells(QPainter &painter) const;
    void paintText(QPainter &painter) const;
    QPointF fraction(const QPointF &position) const;

    const TouchCells *m_cells = nullptr;
    QString m_text;
    QPointF m_last; ///< where the finger was reported last
};

}
