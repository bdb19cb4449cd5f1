#pragma once

#include <QtCore/QObject>

class QSocketNotifier;

namespace panelhost {

/// A timer that follows the wall clock while every QTimer of the process follows the virtual one. For redrawing and
/// for telling a press from a hold, which must go on when virtual time is paused or races. GUI thread.
class RealTimeTimer : public QObject
{
    Q_OBJECT

public:
    explicit RealTimeTimer(QObject *parent = nullptr);
    ~RealTimeTimer() override;

    void start(int milliseconds);
    void startOnce(int milliseconds);
    void stop();

Q_SIGNALS:
    void timeout();

private:
    void arm(int first, int next);
    void drain();

    int m_descriptor;
    QSocketNotifier *m_notifier = nullptr;
};

}
