#pragma once

#include "history/sessionhistory.h"
#include "records/run.h"
#include "scenario/scenario.h"

#include <functional>
#include <memory>
#include <mutex>

namespace panelhost {

struct ScenarioResult;
struct StepResult;

/// Plays a scenario at full speed and records what it shows. GUI thread.
class HistoryRecorder
{
public:
    explicit HistoryRecorder(const Scenario &scenario);

    /// Plays until the end or until @p isInterrupted returns true. Returns nullptr and sets @p error to a sentence if
    /// the session can't be opened. A scenario that fails has a history, too.
    std::unique_ptr<SessionHistory> record(const std::function<bool()> &isInterrupted, QString *error);

private:
    void addEntry(const Journal::Entry &entry);
    void addMarker(const Journal::Entry &entry);
    void endTurn(OperatorTarget &target);
    int pictureOf(OperatorTarget &target);
    void addStep(const StepResult &step);
    void addRun(const Run &run);
    void addFailure(Milliseconds at, const QString &text);
    void finish(const ScenarioResult &result);

    Scenario m_scenario;
    std::unique_ptr<SessionHistory> m_history;
    std::mutex m_mutex; ///< guards what addEntry() changes: entries come on any thread
    QVariantMap m_screen;
    QString m_page;
    bool m_screenHasChanged = true;
    QHash<QByteArray, int> m_pictures; ///< numbers of pictures, by the content of the LCD that they show
    QVector<Marker> m_failures;
};

}
