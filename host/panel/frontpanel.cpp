#include "panel/frontpanel.h"

#include "panel/activefaults.h"
#include "panel/keybutton.h"
#include "panel/keypanel.h"
#include "panel/lcdbezel.h"
#include "panel/lcdinput.h"
#include "panel/navigationcontrols.h"
#include "panel/screenview.h"
#include "panel/tbarwidget.h"
#include "panel/theme.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

namespace panelhost {

using theme::Grid;

namespace {

constexpr int Margin = 2 * Grid;
constexpr int SideWidth = 48 * Grid;
constexpr int MinKeyAreaHeight = 22 * Grid;
constexpr int PortColumns = 4;
constexpr double MinScale = 0.25;

// Distributes columns over the width of the side.
int gapOf(int columns, int width)
{
    return (SideWidth - columns * width) / (columns - 1);
}

int rowsOf(const QVector<PortWidget *> &ports)
{
    return (ports.size() + PortColumns - 1) / PortColumns;
}

// With the space above the ports.
int heightOf(const QVector<PortWidget *> &ports)
{
    return ports.isEmpty() ? 0 : rowsOf(ports) * (ports.first()->naturalSize().height() + Grid);
}

}

FrontPanel::FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent)
    : QWidget(parent), m_bezel(new LcdBezel(lcd, this))
{
    setObjectName(QStringLiteral("panel"));
    forwardActions(m_bezel->input());
    for (int index = 0; index < 3; ++index)
        m_screens.append(new ScreenView(index, this));
    m_navigation = forwardActions(new NavigationControls(this));
    m_tbar = forwardActions(new TBarWidget(this));
    addPorts(device.netPorts, PortWidget::Type::Net, m_netPorts);
    addPorts(device.usbPorts, PortWidget::Type::Usb, m_usbPorts);
    addKeyArea(device.keys);
}

void FrontPanel::addPorts(const QList<PortState> &ports, PortWidget::Type type, QVector<PortWidget *> &portWidgets)
{
    for (const PortState &port : ports)
        portWidgets.append(forwardActions(new PortWidget(type, port, this)));
}

void FrontPanel::addKeyArea(const QList<KeyState> &keys)
{
    m_keys = forwardActions(new KeyPanel(keys, this));
    m_keyArea = new QScrollArea(this);
    m_keyArea->setObjectName(QStringLiteral("key-area"));
    m_keyArea->setFrameShape(QFrame::NoFrame);
    m_keyArea->setFocusPolicy(Qt::NoFocus);
    m_keyArea->setWidgetResizable(true);
    m_keyArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_keyArea->setWidget(m_keys);
    m_keyArea->viewport()->setAutoFillBackground(false);
    m_keys->setAutoFillBackground(false);
    theme::applyTo(m_keyArea->verticalScrollBar());
    connect(qApp, &QApplication::focusChanged, this, &FrontPanel::showFocusedKey);
}

int FrontPanel::sideHeight() const
{
    const int controls = qMax(m_navigation->naturalSize().height(), m_tbar->naturalSize().height());
    return m_screens.first()->naturalSize().height() + Grid + controls + heightOf(m_netPorts) + heightOf(m_usbPorts);
}

int FrontPanel::topHeight() const
{
    return qMax(m_bezel->naturalSize().height(), sideHeight());
}

int FrontPanel::keysWidth() const
{
    return m_bezel->naturalSize().width() + Margin + SideWidth;
}

QSize FrontPanel::naturalSize() const
{
    const int keysHeight = qMin(m_keys->naturalHeight(keysWidth()), MinKeyAreaHeight);
    return {keysWidth() + 2 * Margin, topHeight() + 3 * Margin + keysHeight};
}

QSize FrontPanel::minimumSizeHint() const
{
    return naturalSize() * MinScale;
}

void FrontPanel::place(ScaledWidget *part, const QRect &rect) const
{
    part->setScale(m_scale);
    part->setGeometry(scaledRect(rect, m_scale).translated(m_origin));
}

void FrontPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QSize natural = naturalSize();
    m_scale = qMin(double(width()) / natural.width(), double(height()) / natural.height());
    // Keys that would scroll get the height that is left.
    const int missing = m_keys->naturalHeight(keysWidth()) + topHeight() + 3 * Margin - natural.height();
    const int spare = qRound(height() - (natural.height() + missing) * m_scale);
    m_origin = {qRound((width() - natural.width() * m_scale) / 2), qMax(0, spare / 2)};
    place(m_bezel, {QPoint(Margin, Margin), m_bezel->naturalSize()});
    placeSide({Margin + m_bezel->naturalSize().width() + Margin, Margin});
    placeKeyArea();
}

// From top to bottom: the screens, navigation and T-Bar, the net ports, the USB ports.
void FrontPanel::placeSide(const QPoint &topLeft)
{
    QPoint next = topLeft;
    const QSize screen = m_screens.first()->naturalSize();
    for (ScreenView *view : qAsConst(m_screens)) {
        place(view, {next, screen});
        next.rx() += screen.width() + gapOf(m_screens.size(), screen.width());
    }
    next = topLeft + QPoint(0, screen.height() + Grid);
    const int ports = heightOf(m_netPorts) + heightOf(m_usbPorts);
    const QSize bar(m_tbar->naturalSize().width(), topLeft.y() + topHeight() - ports - next.y());
    const QSize navigation = m_navigation->naturalSize();
    place(m_navigation, {next + QPoint(0, (bar.height() - navigation.height()) / 2), navigation});
    place(m_tbar, {next + QPoint(SideWidth - bar.width(), 0), bar});
    next.ry() += bar.height() + Grid;
    next.ry() += placePorts(m_netPorts, next);
    placePorts(m_usbPorts, next);
}

// Returns the height that the ports take, with the space below them.
int FrontPanel::placePorts(const QVector<PortWidget *> &ports, const QPoint &topLeft) const
{
    for (int i = 0; i < ports.size(); ++i) {
        const QSize size = ports[i]->naturalSize();
        const int pitch = size.width() + gapOf(PortColumns, size.width());
        const QPoint offset(i % PortColumns * pitch, i / PortColumns * (size.height() + Grid));
        place(ports[i], {topLeft + offset, size});
    }
    return heightOf(ports);
}

void FrontPanel::placeKeyArea()
{
    m_keys->setScale(m_scale);
    const QPoint topLeft = scaledRect({Margin, 2 * Margin + topHeight(), 0, 0}, m_scale).topLeft() + m_origin;
    const int keysPixels = qRound(keysWidth() * m_scale);
    const int room = height() - topLeft.y() - qRound(Margin * m_scale);
    const int wanted = m_keys->heightForWidth(keysPixels);
    m_keyArea->setVerticalScrollBarPolicy(wanted <= room + 2 ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    m_keyArea->setGeometry({topLeft, QSize(keysPixels, qMin(wanted, qMax(room, 0)))});
}

void FrontPanel::setState(const DeviceState &device, Milliseconds now)
{
    for (int i = 0; i < m_screens.size(); ++i)
        m_screens[i]->setState(device.screenBrightness[i], device.pattern);
    for (int i = 0; i < qMin(m_netPorts.size(), device.netPorts.size()); ++i)
        m_netPorts[i]->setState(device.netPorts[i]);
    for (int i = 0; i < qMin(m_usbPorts.size(), device.usbPorts.size()); ++i)
        m_usbPorts[i]->setState(device.usbPorts[i]);
    m_tbar->setState(device.tbar);
    m_keys->setState(device.keys, now);
}

void FrontPanel::setFaults(const Faults &faults)
{
    const QString links = activeFaults(faults, FaultTarget::Links);
    const auto ports = m_netPorts + m_usbPorts;
    for (PortWidget *port : ports)
        port->setFaults(links);
    m_tbar->setFaults(activeFaults(faults, FaultTarget::TBar));
    const auto keys = m_keys->findChildren<KeyButton *>();
    for (KeyButton *key : keys)
        key->setFaults(activeFaults(faults, FaultTarget::Key, key->halKey()));
}

// A key that gets the focus is scrolled into view.
void FrontPanel::showFocusedKey(QWidget *, QWidget *now)
{
    if (now && m_keys->isAncestorOf(now))
        m_keyArea->ensureWidgetVisible(now);
}

void FrontPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QLinearGradient sheet(rect().topLeft(), rect().bottomLeft());
    sheet.setColorAt(0, QColor(theme::PanelEdge));
    sheet.setColorAt(0.02, QColor(theme::Panel));
    sheet.setColorAt(1, QColor(theme::Panel).darker(112));
    painter.fillRect(rect(), sheet);
}

}
