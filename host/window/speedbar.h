#pragma once

#include "time/virtualclock.h"

#include <QtWidgets/QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace panelhost {

/// Shows the virtual clock and buttons for the speed, in the corner of the menu bar.
class SpeedBar : public QWidget
{
    Q_OBJECT

public:
    static constexpr double Paused = -1;

    explicit SpeedBar(QWidget *parent);

    /// Returns the speeds that can be selected.
    static QList<double> speeds() { return {Paused, 1, 10, 0}; }

    void setNow(Milliseconds now);
    void setSpeed(double factor);

Q_SIGNALS:
    /// Emitted when a speed was selected. @p factor is as for VirtualClock::run(), or Paused.
    void speedSelected(double factor);

private:
    void addSpeed(QHBoxLayout *row, const QString &name, double factor);
    void setTexts();

    QLabel *m_clock;
    QList<QToolButton *> m_speeds;
};

}
