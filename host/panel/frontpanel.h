#pragma once

#include "device/device.h"
#include "panel/portwidget.h"
#include "time/virtualclock.h"

#include <QtCore/QVector>
#include <QtWidgets/QWidget>

class QScrollArea;

namespace panelhost {

struct OperatorAction;
class Faults;
class KeyPanel;
class LcdBezel;
class NavigationControls;
class ScaledWidget;
class ScreenView;
class TBarWidget;

/// The front panel with the LCD in it. Shows the state of a device. The panel is scaled as a whole to the largest size
/// that fits into the widget. Many keys scroll, so that the other parts stay large.
class FrontPanel : public QWidget
{
    Q_OBJECT

public:
    /// @p lcd isn't owned and must outlive the panel.
    FrontPanel(const DeviceState &device, QWidget *lcd, QWidget *parent);

    /// Shows @p device. LEDs blink by the time @p now.
    void setState(const DeviceState &device, Milliseconds now);
    /// Marks the controls to which the faults apply that are on.
    void setFaults(const Faults &faults);
    /// Returns the size at scale 1.
    QSize naturalSize() const;
    /// Returns the scale at which the panel is shown.
    double scale() const { return m_scale; }
    QSize sizeHint() const override { return naturalSize(); }
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Emitted when the operator uses a control of the panel.
    void actionTriggered(const panelhost::OperatorAction &action);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    template <class Part>
    Part *forwardActions(Part *part)
    {
        connect(part, &Part::actionTriggered, this, &FrontPanel::actionTriggered);
        return part;
    }
    void addPorts(const QList<PortState> &ports, PortWidget::Type type, QVector<PortWidget *> &portWidgets);
    void addKeyArea(const QList<KeyState> &keys);
    int sideHeight() const;
    int topHeight() const;
    int keysWidth() const;
    void place(ScaledWidget *part, const QRect &rect) const;
    void placeSide(const QPoint &topLeft);
    int placePorts(const QVector<PortWidget *> &ports, const QPoint &topLeft) const;
    void placeKeyArea();
    void showFocusedKey(QWidget *before, QWidget *now);

    LcdBezel *m_bezel;
    QVector<ScreenView *> m_screens;
    NavigationControls *m_navigation;
    TBarWidget *m_tbar;
    QVector<PortWidget *> m_netPorts;
    QVector<PortWidget *> m_usbPorts;
    QScrollArea *m_keyArea = nullptr;
    KeyPanel *m_keys = nullptr;
    double m_scale = 1;
    QPoint m_origin; ///< of the scaled panel in the widget
};

}
