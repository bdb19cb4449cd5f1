#pragma once

#include "device/device.h"
#include "panel/control.h"

namespace panelhost {

/// A net or USB port. A click plugs or unplugs it. A USB port has a switch that blocks it, and
/// its tool tip states the speed of what is plugged in, if it is known.
class PortWidget : public Control
{
    Q_OBJECT

public:
    enum class Type {
        Net,
        Usb
    };

    PortWidget(Type type, const PortState &port, QWidget *parent);

    void setState(const PortState &port);
    QSize naturalSize() const override;
    void activate() override { togglePlug(); }
    void activateOther() override;
    QAccessible::Role accessibleRole() const override { return QAccessible::CheckBox; }
    QString stateText() const override;
    bool isCheckable() const override { return true; }
    bool isChecked() const override { return m_port.isPlugged; }
    /// Returns the rectangle of the switch in unscaled coordinates; empty for a port without one.
    QRect blockSwitch() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void togglePlug();
    void toggleBlock();
    QRect shell() const;
    void drawNet(QPainter &painter) const;
    void drawUsb(QPainter &painter) const;
    void drawBlockSwitch(QPainter &painter) const;

    Type m_type;
    PortState m_port;
};

}
