#include "panel/portwidget.h"

#include "panel/theme.h"
#include "panel/translated.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QMenu>

namespace panelhost {

using theme::Grid;

static QString caption(const PortState &port)
{
    QString text = port.name.toUpper();
    const int digits = text.indexOf(QRegularExpression(QStringLiteral("\\d")));
    return digits > 0 ? text.insert(digits, QLatin1Char(' ')) : text;
}

static QString speedText(const PortState &port)
{
    return port.speed <= 0 ? QString() : QStringLiteral("%1 Mbit/s").arg(port.speed);
}

PortWidget::PortWidget(Type type, const PortState &port, QWidget *parent)
    : Control(port.name, parent), m_type(type), m_port(port)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setStateHelp(speedText(port));
    setDescription(caption(port));
    keepTranslated(this, [this] {
        setHelp(m_type == Type::Usb
                    ? tr("Click or Space: plug or unplug. Click on the switch or Shift+Space: block or unblock.")
                    : tr("Click or Space: plug or unplug."));
    });
}

QSize PortWidget::naturalSize() const
{
    return {11 * Grid, (m_type == Type::Usb ? 10 : 8) * Grid};
}

void PortWidget::setState(const PortState &port)
{
    if (port.isPlugged == m_port.isPlugged && port.isBlocked == m_port.isBlocked && port.speed == m_port.speed)
        return;
    m_port = port;
    setStateHelp(speedText(port));
    announceState();
    update();
}

QString PortWidget::stateText() const
{
    QStringList parts{m_port.isPlugged ? tr("plugged") : tr("unplugged")};
    if (m_port.isBlocked)
        parts << tr("blocked");
    if (m_port.speed > 0)
        parts << speedText(m_port);
    if (!faults().isEmpty())
        parts << tr("fault");
    return parts.join(QStringLiteral(", "));
}

void PortWidget::activateOther()
{
    if (m_type == Type::Usb)
        toggleBlock();
}

QRect PortWidget::shell() const
{
    return {2 * Grid, 0, area().width() - 4 * Grid, 6 * Grid};
}

QRect PortWidget::blockSwitch() const
{
    return m_type == Type::Usb ? QRect(0, area().height() - 2 * Grid, area().width(), 2 * Grid) : QRect();
}

void PortWidget::drawNet(QPainter &painter) const
{
    const QRect jack = shell().adjusted(6, 10, -6, -4);
    painter.fillRect(jack, QColor(theme::Black));
    painter.fillRect(QRect(jack.center().x() - Grid, jack.top() - 4, 2 * Grid, 4), QColor(theme::Black));
    for (int pin = 0; pin < 8; ++pin)
        painter.fillRect(QRect(jack.left() + 5 + pin * 4, jack.bottom() - 7, 2, 6), QColor(theme::Amber).darker(130));
    const QRgb link = m_port.isPlugged ? theme::Green : theme::CapDown;
    painter.fillRect(QRect(shell().left() + 4, 4, Grid, 4), QColor(link));
    painter.fillRect(QRect(shell().right() - 3 - Grid, 4, Grid, 4),
                     QColor(m_port.isPlugged ? theme::Amber : theme::CapDown));
    if (m_port.isPlugged)
        theme::drawCap(painter, jack.adjusted(4, 2, -4, 4), QColor(theme::Metal), false);
}

void PortWidget::drawUsb(QPainter &painter) const
{
    const QRect jack = shell().adjusted(6, 14, -6, -14);
    painter.fillRect(jack, QColor(theme::Black));
    painter.fillRect(jack.adjusted(4, 4, -4, -10), QColor(theme::Blue).darker(120));
    if (m_port.isPlugged)
        theme::drawCap(painter, jack.adjusted(2, -4, -2, 6), QColor(theme::Metal), false);
    const QRgb light = m_port.isBlocked ? theme::Red : m_port.isPlugged ? theme::Green : theme::CapDown;
    painter.fillRect(QRect(shell().center().x() - 3, 4, Grid, 4), QColor(light));
}

void PortWidget::drawBlockSwitch(QPainter &painter) const
{
    const QRect box(blockSwitch().left() + 2 * Grid, blockSwitch().top() + 3, 2 * Grid + 2, 10);
    painter.setPen(QPen(QColor(theme::CapEdge), 1));
    painter.setBrush(QColor(m_port.isBlocked ? theme::Red : theme::Recess));
    painter.drawRoundedRect(box, 5, 5);
    painter.setBrush(QColor(theme::TextColor));
    painter.drawEllipse(QPoint(m_port.isBlocked ? box.right() - 4 : box.left() + 5, box.center().y()), 4, 4);
    const QRect text = blockSwitch().adjusted(5 * Grid - 2, 0, 0, 0);
    theme::drawCaption(painter, text, Qt::AlignLeft | Qt::AlignVCenter, tr("block"));
}

void PortWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.scale(scale(), scale());
    theme::drawRecess(painter, shell(), theme::PanelEdge);
    painter.setPen(Qt::NoPen);
    m_type == Type::Net ? drawNet(painter) : drawUsb(painter);
    const QRect name(0, shell().bottom() + 1, area().width(), 2 * Grid);
    theme::drawCaption(painter, name, Qt::AlignCenter, caption(m_port));
    if (m_type == Type::Usb)
        drawBlockSwitch(painter);
}

void PortWidget::togglePlug()
{
    const auto kind = m_port.isPlugged ? OperatorAction::Kind::Unplug : OperatorAction::Kind::Plug;
    Q_EMIT actionTriggered({kind, {{QStringLiteral("port"), m_port.name}}});
}

void PortWidget::toggleBlock()
{
    const auto kind = m_port.isBlocked ? OperatorAction::Kind::Unblock : OperatorAction::Kind::Block;
    Q_EMIT actionTriggered({kind, {{QStringLiteral("port"), m_port.name}}});
}

void PortWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    blockSwitch().contains(unscaled(event->localPos()).toPoint()) ? toggleBlock() : togglePlug();
}

void PortWidget::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    theme::applyTo(menu);
    menu->addAction(m_port.isPlugged ? tr("Unplug") : tr("Plug"), this, &PortWidget::togglePlug);
    if (m_type == Type::Usb)
        menu->addAction(m_port.isBlocked ? tr("Unblock") : tr("Block"), this, &PortWidget::toggleBlock);
    menu->popup(event->globalPos());
}

}
