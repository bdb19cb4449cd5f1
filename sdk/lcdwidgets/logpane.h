#pragma once

#include "lcd/widget/factorytestframe.h"

#include <QtCore/QVector>

class QFontMetrics;

namespace LCD::Widget {

/// The lines of the log and their painting. The newest lines that fit completely are painted, the last one at the
/// bottom.
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

private:
    /// How a line is wrapped and its height.
    struct LineLayout
    {
        int flags;
        int height;
    };

    static LineLayout layoutOf(const QString &text, const QFontMetrics &metrics, int width);
    /// Returns the layouts of the lines that are painted, the newest line first.
    QVector<LineLayout> shownLines(const QFontMetrics &metrics, const QSize &area) const;
};

}
