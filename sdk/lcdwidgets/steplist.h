#pragma once

#include "lcd/widget/factorytestframe.h"
#include "textfit.h"
#include "verdictbanner.h"

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
    std::optional<VerdictBanner> banner;
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
    int verdict;
    int verdictHeight;
};

struct FittedSteps
{
    StepFitting fitting;
    QFont font;
    StepLayout layout;
};

/// The step lines of a page with their colors and marks, in the largest font with which all lines fit. If they don't
/// fit even in the smallest font, the list can be scrolled. A verdict is shown in a banner: a colored line that is the
/// first one, or the second one of two.
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
    /// Sets the height in pixels of the banner of a verdict. It is twice as high if the other lines leave room for it.
    void setVerdictHeight(int height);
    /// Paints what has changed since the last call. Setting lines and marks alone doesn't paint them: a page clears the
    /// list and adds the same lines again.
    void updateChanges();
    /// Scrolls by @p lines, down if positive. Returns false if all lines are visible.
    bool scroll(int lines);

    /// Returns the font and the positions of the lines for the current size of the list.
    const FittedSteps &fitted() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// Returns the index of the line that is a verdict; -1 if there is none.
    int verdict() const;
    StepFitting fitting() const;
    FittedSteps fit(const StepFitting &fitting) const;
    FittedSteps fit(const StepFitting &fitting, const std::optional<VerdictBanner> &banner) const;
    VerdictBanner bannerOf(int line, int bannerHeight) const;
    /// Reduces the distance between the lines if they don't fit otherwise.
    StepLayout layoutFor(const QFont &font, const std::optional<VerdictBanner> &banner) const;
    StepLayout layoutFor(const QFont &font, int gap, const std::optional<VerdictBanner> &banner) const;
    int addLine(StepLayout &layout, const QFontMetrics &metrics, const QString &text, int top) const;
    void stepsChanged();
    void updateMarks();
    void refit();
    void limitOffset();
    void paintLine(QPainter &painter, const StepLayout &layout, int index, const QRect &area) const;
    void paintMark(QPainter &painter, const QRect &place, IconType mark) const;
    void paintMore(QPainter &painter, int contentHeight) const;

    QVector<TestStep> m_steps;
    QVector<TestStep> m_updatedSteps; ///< as of the last call of updateChanges()
    int m_smallestFont = 8;
    int m_wantedFont = 30;
    int m_verdictHeight = 96;
    int m_offset = 0;
    mutable std::optional<FittedSteps> m_fitted;
    mutable FontSizes m_sizes;
    mutable FontSizes m_boldSizes;
};

}
