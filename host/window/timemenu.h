#pragma once

#include <QtWidgets/QMenu>

class QActionGroup;

namespace panelhost {

/// The menu with the speed of the device's time.
class TimeMenu : public QMenu
{
    Q_OBJECT

public:
    explicit TimeMenu(QWidget *parent);

    /// Checks the entry of @p factor, which is as for VirtualClock::run(), or SpeedBar::Paused.
    void setSpeed(double factor);

Q_SIGNALS:
    void speedSelected(double factor);
    /// Emitted when the clock shall jump to the next event.
    void stepTriggered();

private:
    void addSpeed(double factor, const char *shortcut);

    QActionGroup *m_speeds;
    double m_speed = 1;
    double m_running = 1; ///< the speed before the pause
};

}
