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

/// Where the step lines stand at one font size.
struct StepLayout
{
    QVector<QRect> marks;
    QVector<QRect> texts;
    int height = 0;
    /// No word is wider than the list.
    bool fitsWidth = true;
};

struct FittedSteps
{
    QFont font;
    StepLayout layout;
};

/// The step lines of a page, each with its colour and mark, in the greatest font that shows them all; a list that is
/// too long even in the smallest can be scrolled.
class StepList : public QWidget
{
    Q_OBJECT

public:
    explicit StepList(QWidget *parent);

    const QVector<TestStep> &steps() const { return m_steps; }
    void setSteps(const QVector<TestStep> &steps);
    void append(const TestStep &step);
    /// A line that isn't there is no line to mark.
    void setMark(int index, IconType mark);

    /// Font sizes in pixels.
    void setFontRange(int smallest, int wanted);
    /// Moves by @p lines, down if positive; false when everything is in sight.
    bool scroll(int lines);

    /// The font and the places of the lines for the present size of the list.
    const FittedSteps &fitted() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int wantedFont() const;
    /// The lines stand closer together where they would not fit otherwise.
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
