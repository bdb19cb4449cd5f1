#include "panel/frontpanel.h"

#include "panel/keypanel.h"
#include "panel/lcdbezel.h"
#include "panel/lcdinput.h"
#include "panel/navigationcontrols.h"
#include "panel/screenview.h"
#include "panel/tbarwidget.h"
#include "panel/theme.h"

#include <QtGui/QPainter>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

namespace panelhost {

using theme::Grid;

constexpr int SideWidth = 47 * Grid;
constexpr int MinKeyAreaHeight = 22 * Grid;

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
    auto *bezel = new LcdBezel(lcd, this);
    forwardActions(bezel->input());
    auto *row = new QHBoxLayout;
    row->setSpacing(2 * Grid);
    row->addWidget(bezel, 0, Qt::AlignTop);
    row->addLayout(makeSide(device));
    row->addStretch();
    return row;
}

QLayout *FrontPanel::makeSide(const DeviceState &device)
{
    m_tbar = forwardActions(new TBarWidget(this));
    auto *controls = new QHBoxLayout;
    controls->addWidget(forwardActions(new NavigationControls(this)));
    controls->addStretch();
    controls->addWidget(m_tbar);
    auto *side = new QVBoxLayout;
    side->setSpacing(Grid);
    side->addLayout(makeScreens());
    side->addLayout(controls, 1);
    side->addLayout(makePorts(device.netPorts, PortWidget::Type::Net, m_netPorts));
    side->addLayout(makePorts(device.usbPorts, PortWidget::Type::Usb, m_usbPorts));
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

QLayout *FrontPanel::makePorts(const QList<PortState> &ports, PortWidget::Type type, QVector<PortWidget *> &portWidgets)
{
    constexpr int Columns = 4;
    auto *grid = new QGridLayout;
    grid->setSpacing(Grid);
    for (int i = 0; i < ports.size(); ++i) {
        portWidgets.append(forwardActions(new PortWidget(type, ports[i], this)));
        grid->addWidget(portWidgets.last(), i / Columns, i % Columns);
    }
    grid->setColumnStretch(Columns, 1);
    return grid;
}

// A few keys are shown without scrolling. Many keys scroll, so that the window stays small.
QWidget *FrontPanel::makeKeyArea(const QList<KeyState> &keys, int width)
{
    m_keys = forwardActions(new KeyPanel(keys, this));
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
    area->setMinimumHeight(qMin(height, MinKeyAreaHeight));
    area->setVerticalScrollBarPolicy(height <= MinKeyAreaHeight ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    theme::applyTo(area->verticalScrollBar());
    return area;
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
