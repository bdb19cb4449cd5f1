#include "playing/interruption.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace panelhost {

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t received = 0;
std::atomic<int> eventDescriptor = -1;

// Is called on any thread, at any time.
void remember(int number)
{
    const int before = errno;
    received = number;
    const quint64 one = 1;
    if (eventDescriptor >= 0) [[maybe_unused]]
        const ssize_t written = ::write(eventDescriptor, &one, sizeof one);
    errno = before;
}

bool isIgnored(int number)
{
    struct sigaction action = {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}

Interruption::Interruption(int wakeUp)
{
    received = 0;
    eventDescriptor = wakeUp;
    struct sigaction action = {};
    action.sa_handler = remember;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : Signals) {
        if (!isIgnored(number))
            sigaction(number, &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (const int number : Signals) {
        if (!isIgnored(number))
            std::signal(number, SIG_DFL);
    }
    eventDescriptor = -1;
}

int Interruption::signalNumber()
{
    return received;
}

void Interruption::endProcess()
{
    const int number = received;
    std::signal(number, SIG_DFL);
    std::fflush(nullptr);
    std::raise(number);
    std::_Exit(128 + number);
}

}
