#pragma once

#include "lcd/widget/factorytestframe.h"

#include <QtCore/QVector>

class QFontMetrics;

namespace LCD::Widget {

/// What the log pane holds and how it paints it: the newest lines, whole ones only, the last one at the foot.
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
    int firstShown(const QFontMetrics &metrics, const QRect &area) const;
};

}
