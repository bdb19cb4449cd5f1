#include "window/quitonsignal.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/eventfd.h>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t received = 0;
std::atomic<int> wakeUp = -1;

// Comes on any thread, at any time.
void remember(int number)
{
    const int before = errno;
    received = number;
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp, &one, sizeof one);
    errno = before;
}

}

QuitOnSignal::QuitOnSignal()
{
    received = 0;
    wakeUp = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    m_notifier = std::make_unique<QSocketNotifier>(wakeUp, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        m_notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    struct sigaction action = {};
    action.sa_handler = remember;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : Signals)
        sigaction(number, &action, nullptr);
}

QuitOnSignal::~QuitOnSignal()
{
    for (const int number : Signals)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    ::close(wakeUp.exchange(-1));
}

bool QuitOnSignal::isAsked()
{
    return received != 0;
}

void QuitOnSignal::endProcessIfAsked()
{
    const int number = received;
    if (number == 0)
        return;
    std::signal(number, SIG_DFL);
    std::fflush(nullptr);
    std::raise(number);
    std::_Exit(128 + number);
}

}
