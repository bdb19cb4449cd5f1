#pragma once

#include "device/device.h"
#include "time/timeline.h"

#include <QtCore/QVector>
#include <QtWidgets/QWidget>

class QBoxLayout;

namespace panelhost {

struct Action;
class Control;
class KeyField;
class ScreenView;
class SocketWidget;
class TBarWidget;

/// The drawn front panel with the LCD in it. Shows a device's state and tells what the operator touches. It borrows
/// the LCD and gives it back when it goes.
class FrontPanel : public QWidget
{
    Q_OBJECT

public:
    FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent);
    ~FrontPanel() override;

    void setState(const DeviceState &device, Instant now);

Q_SIGNALS:
    void acted(const panelhost::Action &action);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void listen(Control *control);
    QWidget *makeLcdBay();
    QBoxLayout *makeSide(const DeviceState &device);
    QBoxLayout *makeScreens();
    QBoxLayout *makeNavigation();
    QBoxLayout *makeJoystick();
    QBoxLayout *makePorts(const QList<PortState> &ports, bool isUsb);
    QWidget *makeKeys(const QList<KeyState> &keys);

    QWidget *m_lcd;
    QVector<ScreenView *> m_screens;
    QVector<SocketWidget *> m_netSockets;
    QVector<SocketWidget *> m_usbSockets;
    TBarWidget *m_tbar = nullptr;
    KeyField *m_keys = nullptr;
};

}
