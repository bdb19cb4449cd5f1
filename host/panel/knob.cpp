#include "panel/knob.h"

#include "panel/theme.h"
#include "panel/translated.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

namespace panelhost {

using theme::Grid;

Knob::Knob(QWidget *parent) : Control(QStringLiteral("knob"), parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    keepTranslated(this, [this] {
        setDescription(tr("Knob"));
        setHelp(tr("Wheel or click on a side: turn. Click in the middle or Space: Enter."));
    });
}

QSize Knob::naturalSize() const
{
    return {9 * Grid, 9 * Grid};
}

QRectF Knob::disc() const
{
    return QRectF(area()).adjusted(Grid, Grid, -Grid, -Grid);
}

void Knob::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(theme::DimTextColor), 2));
    painter.drawArc(QRectF(area()).adjusted(2, 2, -2, -2), -60 * 16, 300 * 16);
    QLinearGradient metal(disc().topLeft(), disc().bottomRight());
    metal.setColorAt(0, QColor(theme::CapEdge));
    metal.setColorAt(1, QColor(theme::CapDown));
    painter.setPen(QPen(QColor(theme::RecessEdge), 2));
    painter.setBrush(metal);
    painter.drawEllipse(disc());
    painter.translate(disc().center());
    painter.rotate(m_turn);
    painter.setPen(QPen(QColor(theme::Accent), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, -disc().height() / 2 + 5), QPointF(0, -disc().height() / 2 + 13));
}

void Knob::navigate(const QString &key, int turn)
{
    m_turn = (m_turn + turn) % 360;
    update();
    Q_EMIT actionTriggered(navigationAction(key));
}

void Knob::activate()
{
    navigate(QStringLiteral("enter"), 0);
}

void Knob::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const qreal side = unscaled(event->localPos()).x() - disc().center().x();
    if (qAbs(side) <= disc().width() / 4)
        return activate();
    side < 0 ? navigate(QStringLiteral("up"), -20) : navigate(QStringLiteral("down"), 20);
}

void Knob::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().y() != 0)
        event->angleDelta().y() > 0 ? navigate(QStringLiteral("up"), -20) : navigate(QStringLiteral("down"), 20);
}

}
