#include "panel/control.h"

#include "panel/controlaccessible.h"
#include "panel/theme.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>

namespace panelhost {

Control::Control(const QString &name, QWidget *parent) : ScaledWidget(parent)
{
    installControlAccessibility();
    setObjectName(name);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

void Control::setDescription(const QString &description)
{
    setAccessibleName(description);
    updateToolTip();
}

void Control::setHelp(const QString &help)
{
    m_help = help;
    updateToolTip();
}

void Control::setStateHelp(const QString &help)
{
    m_stateHelp = help;
    updateToolTip();
}

void Control::setFaults(const QString &faults)
{
    if (faults == m_faults)
        return;
    m_faults = faults;
    updateToolTip();
    announceState();
    update();
}

void Control::updateToolTip()
{
    QStringList lines{accessibleName(), m_stateHelp, m_help};
    if (!m_faults.isEmpty())
        lines << tr("Faults that are on:") << m_faults;
    lines.removeAll(QString());
    setToolTip(lines.join(QLatin1Char('\n')));
}

bool Control::handleKey(int)
{
    return false;
}

void Control::announceState()
{
    const QString text = stateText();
    if (text == m_announced)
        return;
    m_announced = text;
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

bool Control::event(QEvent *event)
{
    const bool isHandled = ScaledWidget::event(event);
    if (event->type() == QEvent::Paint) {
        drawFaultMarker();
        drawFocusRing();
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return isHandled;
}

void Control::drawFocusRing()
{
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(theme::Accent), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), theme::Radius, theme::Radius);
}

void Control::drawFaultMarker()
{
    if (m_faults.isEmpty())
        return;
    constexpr int Size = 2 * theme::Grid;
    const QRectF place(area().width() - Size, 0, Size, Size);
    QPainter painter(this);
    painter.scale(scale(), scale());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(theme::DarkTextColor), 1));
    painter.setBrush(QColor(theme::Amber));
    painter.drawPolygon(QPolygonF({{place.center().x(), place.top() + 1},
                                   {place.right() - 1, place.bottom() - 1},
                                   {place.left() + 1, place.bottom() - 1}}));
    painter.setFont(theme::font(10, true));
    painter.drawText(place.adjusted(0, 3, 0, 0), Qt::AlignCenter, QStringLiteral("!"));
}

}
