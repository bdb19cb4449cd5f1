#include "verdictbanner.h"

#include "textfit.h"

#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>

namespace LCD::Widget {

namespace {

constexpr int SmallestFont = 7;

bool fitsWrapped(const QFont &font, const QString &text, const QSize &area, int flags)
{
    const QRect bounds = QFontMetrics(font).boundingRect(QRect(QPoint(), area), flags, text);
    return bounds.width() <= area.width() && bounds.height() <= area.height();
}

// The symbols in a unit square.
QPainterPath symbol(bool passed)
{
    QPainterPath path;
    if (passed) {
        path.moveTo(0.27, 0.52);
        path.lineTo(0.44, 0.69);
        path.lineTo(0.75, 0.34);
    } else {
        path.moveTo(0.31, 0.31);
        path.lineTo(0.69, 0.69);
        path.moveTo(0.69, 0.31);
        path.lineTo(0.31, 0.69);
    }
    return path;
}

void paintMark(QPainter &painter, const QRect &place, const QColor &color, bool passed)
{
    painter.save();
    painter.translate(place.topLeft());
    painter.scale(place.width(), place.height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(0, 0, 1, 1));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 0.13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(symbol(passed));
    painter.restore();
}

}

VerdictBanner layoutBanner(FontSizes &boldSizes, const QString &text, const QFont &font, const QRect &area)
{
    const int margin = area.height() / 8;
    const int side = std::min(area.height() - 2 * margin, area.width() / 4);
    const QRect mark(area.left() + margin, area.top() + (area.height() - side) / 2, side, side);
    const QRect room(mark.right() + margin, area.top() + margin / 2, area.right() - mark.right() - 2 * margin,
                     area.height() - margin);
    QFont bold = font;
    bold.setBold(true);
    const int wanted = area.height() * 6 / 10;
    VerdictBanner banner{area, mark, room, fittedToLine(boldSizes, bold, text, room.size(), wanted),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine};
    if (banner.font.pixelSize() >= area.height() / 3)
        return banner;
    const int flags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap;
    const int wrapped = largestFitting(SmallestFont, wanted, [&](int pixelSize) {
        return fitsWrapped(boldSizes.sized(bold, pixelSize), text, room.size(), flags);
    });
    if (wrapped > banner.font.pixelSize()) {
        banner.font = boldSizes.sized(bold, wrapped);
        banner.flags = flags;
    }
    return banner;
}

void paintBanner(QPainter &painter, const VerdictBanner &banner, const QString &text, const QColor &color, bool passed)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const qreal radius = banner.area.height() / 10.0;
    painter.drawRoundedRect(banner.area, radius, radius);
    paintMark(painter, banner.mark, color, passed);
    painter.setPen(Qt::white);
    painter.setFont(banner.font);
    painter.drawText(banner.text, banner.flags, text);
    painter.restore();
}

}
