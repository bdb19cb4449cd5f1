#pragma once

#include "device/device.h"
#include "panel/portwidget.h"
#include "time/virtualclock.h"

#include <QtCore/QVector>
#include <QtWidgets/QWidget>

class QLayout;

namespace panelhost {

struct OperatorAction;
class KeyPanel;
class ScreenView;
class TBarWidget;

/// The drawn front panel with the LCD in it. Shows a device's state and tells what the operator touches.
class FrontPanel : public QWidget
{
    Q_OBJECT

public:
    /// @p lcd is borrowed: it must outlive the panel.
    FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent);

    /// @p now is the time by which LEDs blink.
    void setState(const DeviceState &device, Milliseconds now);

Q_SIGNALS:
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    template <class Part>
    Part *forwardActions(Part *part)
    {
        connect(part, &Part::actionTriggered, this, &FrontPanel::actionTriggered);
        return part;
    }
    QLayout *makeTop(const DeviceState &device, QWidget *lcd);
    QLayout *makeSide(const DeviceState &device);
    QLayout *makeScreens();
    QLayout *makePorts(const QList<PortState> &ports, PortWidget::Type type, QVector<PortWidget *> &portWidgets);
    QWidget *makeKeyArea(const QList<KeyState> &keys, int width);

    QVector<ScreenView *> m_screens;
    QVector<PortWidget *> m_netPorts;
    QVector<PortWidget *> m_usbPorts;
    TBarWidget *m_tbar = nullptr;
    KeyPanel *m_keys = nullptr;
};

}
