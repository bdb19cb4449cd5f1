#include "textfit.h"

#include <QtCore/QSize>
#include <QtGui/QFontMetrics>

#include <algorithm>

namespace LCD::Widget {

namespace {

constexpr int SmallestLineFont = 6;

// More than a search for the largest size tries. Each resize of a widget leads to other sizes.
constexpr int MostKeptSizes = 16;

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

QFont FontSizes::sized(const QFont &font, int pixelSize)
{
    QFont wanted = font;
    wanted.setPixelSize(std::max(1, pixelSize));
    if (m_fonts.size() >= MostKeptSizes && !m_fonts.contains(pixelSize))
        m_fonts.clear();
    QFont &kept = m_fonts[pixelSize];
    if (kept != wanted) {
        kept = wanted;
        QFontMetrics(kept).height(); // loads it: a painter would use a copy, which isn't kept
    }
    return kept;
}

QFont fittedToLine(FontSizes &sizes, const QFont &font, const QString &text, const QSize &area, int wanted)
{
    const int size = largestFitting(SmallestLineFont, wanted, [&](int pixelSize) {
        const QRect bounds = QFontMetrics(sizes.sized(font, pixelSize)).boundingRect(QRect(), Qt::TextSingleLine, text);
        return bounds.width() <= area.width() && bounds.height() <= area.height();
    });
    return sizes.sized(font, size);
}

}
