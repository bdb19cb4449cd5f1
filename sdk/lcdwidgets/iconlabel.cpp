#include "iconlabel.h"

#include "frametheme.h"
#include "iconstore.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace LCD::Widget {

IconLabel::IconLabel(QWidget *parent) : QWidget(parent)
{
}

void IconLabel::setKey(const QString &key)
{
    if (key == m_key)
        return;
    m_key = key;
    setAccessibleName(key);
    update();
}

void IconLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int side = std::min(width(), height());
    const QPixmap pixmap = IconStore::icon(m_key, side, devicePixelRatioF());
    if (pixmap.isNull())
        paintName(painter);
    else
        painter.drawPixmap((width() - side) / 2, (height() - side) / 2, pixmap);
}

void IconLabel::paintName(QPainter &painter)
{
    painter.setFont(fittedToLine(m_sizes, font(), m_key, size(), height() / 2));
    painter.setPen(QColor(Theme::QuietText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_key);
}

}
