#pragma once

#include "lcd/widget/factorytestframe.h"

#include <QtCore/QVector>

#include <optional>

namespace LCD::Widget {

struct TestStep
{
    QString text;
    QColor color;
    IconType mark = IconNone;
};

/// The positions of the step lines for one font size.
struct StepLayout
{
    QVector<QRect> marks;
    QVector<QRect> texts;
    int height = 0;
    /// True if no word is wider than the list.
    bool fitsWidth = true;
};

/// Everything that the layout of the step lines depends on.
struct StepFitting
{
    QStringList texts;
    QFont font;
    QSize size;
    int smallestFont;
    int wantedFont;
};

struct FittedSteps
{
    StepFitting fitting;
    QFont font;
    StepLayout layout;
};

/// The step lines of a page with their colors and marks, in the largest font with which all lines fit. If they don't
/// fit even in the smallest font, the list can be scrolled.
class StepList : public QWidget
{
    Q_OBJECT

public:
    explicit StepList(QWidget *parent);

    const QVector<TestStep> &steps() const { return m_steps; }
    void setSteps(const QVector<TestStep> &steps);
    void append(const TestStep &step);
    /// Sets the mark of line @p index. Does nothing if there is no such line.
    void setMark(int index, IconType mark);

    /// Sets the allowed font sizes in pixels.
    void setFontRange(int smallest, int wanted);
    /// Scrolls by @p lines, down if positive. Returns false if all lines are visible.
    bool scroll(int lines);

    /// Returns the font and the positions of the lines for the current size of the list.
    const FittedSteps &fitted() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int wantedFont() const;
    StepFitting fitting() const;
    /// Reduces the distance between the lines if they don't fit otherwise.
    StepLayout layoutFor(const QFont &font) const;
    StepLayout layoutFor(const QFont &font, int gap) const;
    void stepsChanged();
    void refit();
    void paintMark(QPainter &painter, const QRect &place, IconType mark) const;
    void paintMore(QPainter &painter, int contentHeight) const;

    QVector<TestStep> m_steps;
    int m_smallestFont = 8;
    int m_wantedFont = 30;
    int m_offset = 0;
    mutable std::optional<FittedSteps> m_fitted;
};

}
