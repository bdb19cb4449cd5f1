#include "panel/frontpanel.h"

#include "panel/keyfield.h"
#include "panel/lcdoverlay.h"
#include "panel/look.h"
#include "panel/navbutton.h"
#include "panel/screenview.h"
#include "panel/socketwidget.h"
#include "panel/tbarwidget.h"

#include <QtGui/QPainter>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QScrollArea>

namespace panelhost {

using look::Grid;

namespace {

/// The bezel around the LCD.
class LcdBay : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        look::drawWell(painter, rect(), look::Black);
    }
};

QBoxLayout *makeBox(QBoxLayout::Direction direction, int spacing)
{
    auto *box = new QBoxLayout(direction);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(spacing);
    return box;
}

}

FrontPanel::FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent) : QWidget(parent), m_lcd(lcd)
{
    setObjectName(QStringLiteral("panel"));
    auto *top = makeBox(QBoxLayout::LeftToRight, 2 * Grid);
    top->addWidget(makeLcdBay(), 0, Qt::AlignTop);
    top->addLayout(makeSide(device));
    top->addStretch();
    auto *column = makeBox(QBoxLayout::TopToBottom, 2 * Grid);
    column->setContentsMargins(2 * Grid, 2 * Grid, 2 * Grid, 2 * Grid);
    column->addLayout(top);
    column->addWidget(makeKeys(device.keys), 1);
    setLayout(column);
}

// The LCD belongs to the session, which ends after the window.
FrontPanel::~FrontPanel()
{
    m_lcd->setParent(nullptr);
}

void FrontPanel::listen(Control *control)
{
    connect(control, &Control::acted, this, &FrontPanel::acted);
}

QWidget *FrontPanel::makeLcdBay()
{
    auto *bay = new LcdBay(this);
    bay->setObjectName(QStringLiteral("lcd-bay"));
    const QRect glass(QPoint(2 * Grid, 2 * Grid), m_lcd->size());
    bay->setFixedSize(glass.size() + QSize(4 * Grid, 4 * Grid));
    m_lcd->setParent(bay);
    m_lcd->setGeometry(glass);
    m_lcd->show();
    auto *overlay = new LcdOverlay(m_lcd, bay);
    overlay->setGeometry(glass);
    listen(overlay);
    setFocusProxy(overlay);
    return bay;
}

QBoxLayout *FrontPanel::makeScreens()
{
    auto *row = makeBox(QBoxLayout::LeftToRight, Grid);
    for (int index = 0; index < 3; ++index) {
        m_screens.append(new ScreenView(index, this));
        row->addWidget(m_screens.last());
    }
    return row;
}

QBoxLayout *FrontPanel::makeJoystick()
{
    auto *grid = new QGridLayout;
    grid->setSpacing(Grid);
    const struct
    {
        const char *key;
        QString sign;
        int row;
        int column;
    } buttons[] = {
        {"up", QStringLiteral("▲"), 0, 1},     {"left", QStringLiteral("◀"), 1, 0},
        {"enter", QStringLiteral("OK"), 1, 1}, {"right", QStringLiteral("▶"), 1, 2},
        {"down", QStringLiteral("▼"), 2, 1},
    };
    for (const auto &entry : buttons) {
        auto *button = new NavButton(QString::fromLatin1(entry.key), entry.sign, this);
        listen(button);
        grid->addWidget(button, entry.row, entry.column);
    }
    auto *box = makeBox(QBoxLayout::TopToBottom, 0);
    box->addLayout(grid);
    return box;
}

QBoxLayout *FrontPanel::makeNavigation()
{
    auto *knob = new Knob(this);
    auto *back = new NavButton(QStringLiteral("back"), QStringLiteral("BACK"), this);
    listen(knob);
    listen(back);
    auto *row = makeBox(QBoxLayout::LeftToRight, 2 * Grid);
    row->addWidget(knob);
    row->addWidget(back, 0, Qt::AlignVCenter);
    row->addStretch();
    auto *column = makeBox(QBoxLayout::TopToBottom, Grid);
    column->addLayout(makeJoystick());
    column->addLayout(row);
    return column;
}

QBoxLayout *FrontPanel::makePorts(const QList<PortState> &ports, bool isUsb)
{
    constexpr int Columns = 4;
    auto *grid = new QGridLayout;
    grid->setSpacing(Grid);
    for (int i = 0; i < ports.size(); ++i) {
        auto *socket = new SocketWidget(isUsb ? SocketWidget::Type::Usb : SocketWidget::Type::Net, ports[i], this);
        (isUsb ? m_usbSockets : m_netSockets).append(socket);
        listen(socket);
        grid->addWidget(socket, i / Columns, i % Columns, Qt::AlignLeft);
    }
    grid->setColumnStretch(Columns, 1);
    auto *box = makeBox(QBoxLayout::TopToBottom, 0);
    box->addLayout(grid);
    return box;
}

QBoxLayout *FrontPanel::makeSide(const DeviceState &device)
{
    m_tbar = new TBarWidget(this);
    listen(m_tbar);
    auto *hands = makeBox(QBoxLayout::LeftToRight, 2 * Grid);
    hands->addLayout(makeNavigation());
    hands->addStretch();
    hands->addWidget(m_tbar);
    auto *side = makeBox(QBoxLayout::TopToBottom, Grid);
    side->addLayout(makeScreens());
    side->addLayout(hands, 1);
    side->addLayout(makePorts(device.netPorts, false));
    side->addLayout(makePorts(device.usbPorts, true));
    return side;
}

QWidget *FrontPanel::makeKeys(const QList<KeyState> &keys)
{
    m_keys = new KeyField(keys, this);
    connect(m_keys, &KeyField::acted, this, &FrontPanel::acted);
    auto *area = new QScrollArea(this);
    area->setObjectName(QStringLiteral("key-area"));
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(m_keys);
    area->viewport()->setAutoFillBackground(false);
    m_keys->setAutoFillBackground(false);
    const int width = m_lcd->width() + 48 * Grid;
    area->setMinimumHeight(qMin(m_keys->heightForWidth(width), 22 * Grid));
    return area;
}

void FrontPanel::setState(const DeviceState &device, Instant now)
{
    for (int i = 0; i < m_screens.size(); ++i)
        m_screens[i]->setState(device.screenBrightness[i], device.pattern);
    for (int i = 0; i < qMin(m_netSockets.size(), device.netPorts.size()); ++i)
        m_netSockets[i]->setState(device.netPorts[i]);
    for (int i = 0; i < qMin(m_usbSockets.size(), device.usbPorts.size()); ++i)
        m_usbSockets[i]->setState(device.usbPorts[i]);
    m_tbar->setState(device.tbarType, device.tbarPosition, device.calibrationStep);
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
