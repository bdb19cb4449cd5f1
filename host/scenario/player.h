#pragma once

#include "scenario/result.h"
#include "scenario/scenario.h"

#include <functional>
#include <memory>

namespace panelhost {

/// Plays one scenario on a session of its own. GUI thread.
class Player
{
public:
    struct Options
    {
        bool isRealTime = false; ///< virtual time keeps to the wall clock
        bool takesScreenshots = false;
    };

    /// Called after each step that was played, with its number from 1.
    using Observer = std::function<void(const StepResult &step, qint64 number)>;

    Player(const Scenario &scenario, const Options &options, const Observer &observer)
        : m_scenario(scenario), m_options(options), m_observer(observer)
    {
    }

    ScenarioResult play();

private:
    void playSession();
    bool prepare();
    bool playSteps(const QVector<Step> &steps);
    bool playStep(const Step &step);
    void doStep(const Step &step, StepResult &result);
    bool perform(const Action &action, StepResult &result);
    void act(const Step &step, StepResult &result);
    void open(const Step &step, StepResult &result);
    void walkKeys(const Step &step, StepResult &result);
    void expect(const Step &step, StepResult &result);
    void screenshot(const Step &step, StepResult &result);
    void advance(Instant duration);
    bool advanceUntil(Instant duration, const std::function<bool()> &done);
    void finish();

    const Scenario &m_scenario;
    Options m_options;
    Observer m_observer;
    std::unique_ptr<Session> m_session;
    ScenarioResult m_result;
    int m_mark = 0; ///< entries of the journal that stood there at the last mark
    qint64 m_number = 0;
    QMap<QString, int> m_screenshots;
};

}
