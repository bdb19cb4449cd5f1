#pragma once

#include "time/virtualclock.h"

#include <QtWidgets/QWidget>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace panelhost {

/// Shows the virtual clock, a message and buttons for the speed, in the corner of the menu bar.
class SpeedBar : public QWidget
{
    Q_OBJECT

public:
    static constexpr double Paused = -1;

    explicit SpeedBar(QWidget *parent);

    void setNow(Milliseconds now);
    /// Shows @p text, such as why an action wasn't possible. An empty text removes the message.
    void setMessage(const QString &text);
    /// Elides the message if the bar would be wider than @p width. The tool tip has the whole message.
    void fitToWidth(int width);
    void setRecording(const QString &fileName);
    /// Shows that @p count saved runs wait to be sent to the server; shows nothing if it is 0.
    void setPendingRuns(int count);
    void setSpeed(double factor);

Q_SIGNALS:
    /// Emitted when a speed was selected. @p factor is as for VirtualClock::run(), or Paused.
    void speedSelected(double factor);
    /// Emitted when the preferred width of the bar has changed.
    void widthChanged();

private:
    void addSpeed(QHBoxLayout *row, const QString &name, const QString &text, double factor);

    QLabel *m_message;
    QLabel *m_recording;
    QLabel *m_pending;
    QLabel *m_clock;
    QList<QToolButton *> m_speeds;
};

}
