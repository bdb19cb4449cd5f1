#pragma once

#include <QtCore/QRect>
#include <QtGui/QColor>
#include <QtGui/QFont>

class QPainter;

namespace LCD::Widget {

class FontSizes;

/// A line on a filled area with a large mark. It shows a verdict, so that it can be read from two metres.
struct VerdictBanner
{
    QRect area;
    QRect mark;
    QRect text;
    QFont font;
    int flags; ///< of the text, for QPainter::drawText()
};

/// Returns the banner with @p text in @p area. Its font is the largest with which the text fits: on one line, or
/// wrapped if it would be too small on one line. It is bold, and @p boldSizes keeps its sizes.
VerdictBanner layoutBanner(FontSizes &boldSizes, const QString &text, const QFont &font, const QRect &area);

/// Paints the banner filled with @p color, with a check mark if @p passed, else with a cross.
void paintBanner(QPainter &painter, const VerdictBanner &banner, const QString &text, const QColor &color, bool passed);

}
