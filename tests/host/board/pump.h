#pragma once

#include "device/board/eventsource.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>

#include <functional>
#include <poll.h>
#include <vector>

/// Waits for @p sources on the calling thread and serves them until @p done returns true, for at most a minute.
/// Returns what it returned last.
[[nodiscard]] inline bool pump(const QList<panelhost::EventSource *> &sources, const std::function<bool()> &done)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!done()) {
        std::vector<pollfd> polled;
        for (panelhost::EventSource *source : sources)
            polled.push_back({source->fd(), source->events(), 0});
        const auto left = 60'000 - elapsed.elapsed();
        if (left <= 0 || poll(polled.data(), polled.size(), static_cast<int>(left)) <= 0)
            return done();
        for (int index = 0; index < sources.size(); ++index) {
            if (polled[static_cast<std::size_t>(index)].revents)
                sources[index]->ready();
        }
    }
    return true;
}

/// Serves @p sources until none of them has anything to read.
inline void drain(const QList<panelhost::EventSource *> &sources)
{
    for (bool isAnyReady = true; isAnyReady;) {
        isAnyReady = false;
        for (panelhost::EventSource *source : sources) {
            pollfd polled = {source->fd(), source->events(), 0};
            if (poll(&polled, 1, 0) > 0) {
                source->ready();
                isAnyReady = true;
            }
        }
    }
}
