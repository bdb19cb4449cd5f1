#pragma once

#include <QtCore/QObject>

class QSocketNotifier;

namespace panelhost {

/// A timer that runs by the wall clock, while every QTimer of the process runs by the virtual clock. For what must not
/// depend on the speed of virtual time, such as repainting and the difference between a press and a hold of a key. GUI
/// thread.
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
