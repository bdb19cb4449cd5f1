#include "panel/frontpanel.h"

#include "panel/keyfield.h"
#include "panel/knobcluster.h"
#include "panel/lcdbay.h"
#include "panel/lcdoverlay.h"
#include "panel/look.h"
#include "panel/screenview.h"
#include "panel/tbarwidget.h"

#include <QtGui/QPainter>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

namespace panelhost {

using look::Grid;

constexpr int SideWidth = 47 * Grid;
constexpr int LowestKeyArea = 22 * Grid;

FrontPanel::FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("panel"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(2 * Grid, 2 * Grid, 2 * Grid, 2 * Grid);
    column->setSpacing(2 * Grid);
    column->addLayout(makeTop(device, lcd));
    column->addWidget(makeKeyArea(device.keys, lcd->width() + 6 * Grid + SideWidth), 1);
}

QLayout *FrontPanel::makeTop(const DeviceState &device, QWidget *lcd)
{
    auto *bay = new LcdBay(lcd, this);
    listen(bay->glass());
    auto *row = new QHBoxLayout;
    row->setSpacing(2 * Grid);
    row->addWidget(bay, 0, Qt::AlignTop);
    row->addLayout(makeSide(device));
    row->addStretch();
    return row;
}

QLayout *FrontPanel::makeSide(const DeviceState &device)
{
    m_tbar = listen(new TBarWidget(this));
    auto *hands = new QHBoxLayout;
    hands->addWidget(listen(new KnobCluster(this)));
    hands->addStretch();
    hands->addWidget(m_tbar);
    auto *side = new QVBoxLayout;
    side->setSpacing(Grid);
    side->addLayout(makeScreens());
    side->addLayout(hands, 1);
    side->addLayout(makeSockets(device.netPorts, SocketWidget::Type::Net, m_netSockets));
    side->addLayout(makeSockets(device.usbPorts, SocketWidget::Type::Usb, m_usbSockets));
    return side;
}

QLayout *FrontPanel::makeScreens()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Grid);
    for (int index = 0; index < 3; ++index) {
        m_screens.append(new ScreenView(index, this));
        row->addWidget(m_screens.last());
    }
    return row;
}

QLayout *FrontPanel::makeSockets(const QList<PortState> &ports, SocketWidget::Type type,
                                 QVector<SocketWidget *> &sockets)
{
    constexpr int Columns = 4;
    auto *grid = new QGridLayout;
    grid->setSpacing(Grid);
    for (int i = 0; i < ports.size(); ++i) {
        sockets.append(listen(new SocketWidget(type, ports[i], this)));
        grid->addWidget(sockets.last(), i / Columns, i % Columns);
    }
    grid->setColumnStretch(Columns, 1);
    return grid;
}

// Few keys never scroll; many do, in an area that leaves the window small.
QWidget *FrontPanel::makeKeyArea(const QList<KeyState> &keys, int width)
{
    m_keys = listen(new KeyField(keys, this));
    auto *area = new QScrollArea(this);
    area->setObjectName(QStringLiteral("key-area"));
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(m_keys);
    area->viewport()->setAutoFillBackground(false);
    m_keys->setAutoFillBackground(false);
    const int height = m_keys->heightForWidth(width);
    area->setMinimumHeight(qMin(height, LowestKeyArea));
    area->setVerticalScrollBarPolicy(height <= LowestKeyArea ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    look::dress(area->verticalScrollBar());
    return area;
}

void FrontPanel::setState(const DeviceState &device, Milliseconds now)
{
    for (int i = 0; i < m_screens.size(); ++i)
        m_screens[i]->setState(device.screenBrightness[i], device.pattern);
    for (int i = 0; i < qMin(m_netSockets.size(), device.netPorts.size()); ++i)
        m_netSockets[i]->setState(device.netPorts[i]);
    for (int i = 0; i < qMin(m_usbSockets.size(), device.usbPorts.size()); ++i)
        m_usbSockets[i]->setState(device.usbPorts[i]);
    m_tbar->setState(device.tbar);
    m_keys->setState(device.keys, now);
}

void FrontPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QLinearGradient sheet(rect().topLeft(), rect().bottomLeft());
    sheet.setColorAt(0, QColor(look::PanelEdge));
    sheet.setColorAt(0.02, QColor(look::Panel));
    sheet.setColorAt(1, QColor(look::Panel).darker(112));
    painter.fillRect(rect(), sheet);
}

}
