#include "textfit.h"

#include <QtCore/QSize>
#include <QtGui/QFontMetrics>

#include <algorithm>

namespace LCD::Widget {

namespace {

constexpr int SmallestLineFont = 6;

}

int largestFitting(int smallest, int wanted, const std::function<bool(int)> &fits)
{
    if (wanted <= smallest || fits(wanted))
        return std::max(smallest, wanted);
    int fitting = smallest;
    int failing = wanted;
    while (failing - fitting > 1) {
        const int middle = (fitting + failing) / 2;
        (fits(middle) ? fitting : failing) = middle;
    }
    return fitting;
}

QFont sized(QFont font, int pixelSize)
{
    font.setPixelSize(std::max(1, pixelSize));
    return font;
}

QFont fittedToLine(const QFont &font, const QString &text, const QSize &area, int wanted)
{
    const int size = largestFitting(SmallestLineFont, wanted, [&](int pixelSize) {
        const QRect bounds = QFontMetrics(sized(font, pixelSize)).boundingRect(QRect(), Qt::TextSingleLine, text);
        return bounds.width() <= area.width() && bounds.height() <= area.height();
    });
    return sized(font, size);
}

}
