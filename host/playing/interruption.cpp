#include "playing/interruption.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace panelhost {

namespace {

constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP};
volatile std::sig_atomic_t received = 0;

void remember(int number)
{
    received = number;
}

bool isIgnored(int number)
{
    struct sigaction action = {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}

Interruption::Interruption()
{
    received = 0;
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
