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
    int firstShown(const QFontMetrics &metrics, const QRect &area) const;
};

}
