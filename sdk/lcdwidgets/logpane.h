#pragma once

#include "lcd/widget/factorytestframe.h"
#include "textfit.h"

#include <QtCore/QVector>

class QFontMetrics;

namespace LCD::Widget {

/// The lines of the log and their painting. The newest lines that fit completely are painted, the last one at the
/// bottom. A line that is repeated at once is painted one time, with the number of repetitions.
class FactoryTestRightFrame::Impl
{
public:
    struct Line
    {
        QString text;
        FactoryTestLogLevel level;
    };

    void append(const Line &line);
    void paint(QPainter &painter, const QRect &area) const;
    QStringList texts() const;

    QVector<Line> lines;
    int fontSize = 14;
    FontSizes sizes;

private:
    /// A painted line: its text, how it is wrapped, and its height.
    struct LineLayout
    {
        QString text;
        FactoryTestLogLevel level;
        int flags;
        int height;
    };

    static LineLayout layoutOf(const Line &line, const QFontMetrics &metrics, int width);
    /// Returns the line that ends before @p end, with the number of equal lines before it; moves @p end to the first of
    /// them.
    Line lineBefore(int &end) const;
    /// Returns the layouts of the lines that are painted, the newest line first.
    QVector<LineLayout> shownLines(const QFontMetrics &metrics, const QSize &area) const;
};

}
