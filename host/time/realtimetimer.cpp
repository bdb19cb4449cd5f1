#include "time/realtimetimer.h"

#include <QtCore/QSocketNotifier>

#include <sys/timerfd.h>
#include <unistd.h>

namespace panelhost {

RealTimeTimer::RealTimeTimer(QObject *parent)
    : QObject(parent), m_descriptor(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_descriptor < 0) {
        qWarning("No wall clock timer: the window will not redraw by itself");
        return;
    }
    m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] { drain(); });
}

RealTimeTimer::~RealTimeTimer()
{
    delete m_notifier;
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void RealTimeTimer::start(int milliseconds)
{
    arm(milliseconds, milliseconds);
}

void RealTimeTimer::startOnce(int milliseconds)
{
    arm(milliseconds, 0);
}

void RealTimeTimer::stop()
{
    arm(0, 0);
}

void RealTimeTimer::arm(int first, int next)
{
    const auto time = [](int ms) { return timespec{ms / 1000, (ms % 1000) * 1000000L}; };
    const itimerspec timing{time(next), time(first)};
    if (m_descriptor >= 0)
        timerfd_settime(m_descriptor, 0, &timing, nullptr);
}

void RealTimeTimer::drain()
{
    quint64 expirations = 0;
    if (read(m_descriptor, &expirations, sizeof expirations) == sizeof expirations)
        Q_EMIT timeout();
}

}
