#pragma once

#include "time/virtualclock.h"

#include <QtWidgets/QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace panelhost {

/// The clock of the device and how fast it goes; in the corner of the window's menu bar.
class SpeedBar : public QWidget
{
    Q_OBJECT

public:
    static constexpr double Paused = -1;

    explicit SpeedBar(QWidget *parent);

    void setNow(Milliseconds now);
    /// Shows @p text, such as why an action was refused; an empty one clears it.
    void setMessage(const QString &text);
    /// Cuts the message off where the bar would be wider than @p width. Its tool tip stays whole.
    void fitToWidth(int width);
    void setRecording(const QString &fileName);
    void setSpeed(double factor);

Q_SIGNALS:
    /// @p factor as VirtualClock::run() takes it, or Paused.
    void speedSelected(double factor);
    /// Emitted when a text has come or gone, so that the bar needs another width.
    void widthChanged();

private:
    void addSpeed(QHBoxLayout *row, const QString &name, const QString &text, double factor);

    QLabel *m_message;
    QLabel *m_recording;
    QLabel *m_clock;
    QList<QToolButton *> m_speeds;
};

}
