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

/// The front panel with the LCD in it. Shows the state of a device.
class FrontPanel : public QWidget
{
    Q_OBJECT

public:
    /// @p lcd isn't owned and must outlive the panel.
    FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent);

    /// Shows @p device. LEDs blink by the time @p now.
    void setState(const DeviceState &device, Milliseconds now);

Q_SIGNALS:
    /// Emitted when the operator uses a control of the panel.
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
