#pragma once

#include "singletestmodels.h"

#include <QtCore/QSet>

/// The aging test as it should be.
class AgeModel
{
public:
    explicit AgeModel(ModelHost &host);

    void start();
    void stop();
    void recount() { writeText(true); }
    void advance(int milliseconds);

    LinkModel net;
    LinkModel usb;

private:
    struct Timer
    {
        int step;
        int interval;
        std::optional<qint64> due = std::nullopt;
        /// Timers that are due at the same time fire in the order in which they were started.
        qint64 number = 0;
    };

    void runStep();
    void nextStep();
    void onState(int state);
    void onLinks(int step, const std::vector<bool> &links);
    void startTimer(int step);
    void stopTimers();
    void fire(Timer &timer);
    void writeText(bool recount);

    ModelHost &m_host;
    LevelModel m_screens;
    PatternModel m_patterns;
    LevelModel m_keys;
    /// The driver hears its tests only once it has started.
    bool m_hears = false;
    int m_step = 0;
    QSet<int> m_failed;
    qint64 m_now = 0;
    qint64 m_starts = 0;
    Timer m_timers[3] = {{0, 2000}, {1, 3000}, {2, 2000}};
};
