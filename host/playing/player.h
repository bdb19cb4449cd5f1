#pragma once

#include "expectations/journalquerycounter.h"
#include "playing/pagespans.h"
#include "playing/scenarioresult.h"
#include "scenario/scenario.h"

#include <QtCore/QElapsedTimer>

#include <functional>
#include <memory>
#include <mutex>

namespace panelhost {

/// Plays a scenario in a new session. Memory use doesn't depend on the length of the journal, unless the journal is
/// kept. GUI thread.
class Player
{
public:
    static constexpr int PartialResultInterval = 1000; ///< milliseconds of real time

    /// Lets @p duration pass on @p clock, or less if @p done returns true. Returns whether it did.
    using Wait = std::function<bool(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done)>;

    struct Options
    {
        Wait wait;                 ///< empty: time passes at full speed
        bool keepsJournal = false; ///< the session keeps as many lines of the journal as any other
        bool takesScreenshots = false;
        bool paintsLcd = false; ///< the LCD is painted all the time, and not only for screenshots
        Journal::Sink journal;  ///< gets all entries of the journal; see also open()
        /// Called between steps and while time passes. The player stops as soon as it returns true.
        std::function<bool()> isInterrupted;
        /// Called about every PartialResultInterval with the result so far.
        std::function<void(const ScenarioResult &)> partialResult;
    };

    /// Called after each step with its number, starting at 1.
    using Observer = std::function<void(const StepResult &step, qint64 number)>;

    Player(const Scenario &scenario, const Options &options, const Observer &observer)
        : m_scenario(scenario), m_options(options), m_observer(observer), m_counter(expectationsOf(scenario.steps))
    {
    }

    /// Opens the session, which belongs to the player. It goes on after play(), and so do its entries for
    /// Options::journal. Returns nullptr and sets @p error to a sentence if that is impossible. Without this, play()
    /// opens a session that ends with it.
    Session *open(QString *error);
    ScenarioResult play();

private:
    Session *openSession(QString *error);
    void playInNewSession();
    void playSession();
    bool prepare();
    bool playSteps(const QVector<Step> &steps);
    bool playStep(const Step &step);
    bool playRepetitions(const Step &step);
    void doStep(const Step &step, StepResult &result);
    bool perform(const OperatorAction &action, StepResult &result);
    void performActions(const Step &step, StepResult &result);
    void open(const Step &step, StepResult &result);
    void walkKeys(const Step &step, StepResult &result);
    void expect(const Step &step, StepResult &result);
    void screenshot(const QString &name, StepResult &result);
    QString unusedScreenshotName(const QString &name);
    void advance(Milliseconds duration);
    bool advanceUntil(Milliseconds duration, const std::function<bool()> &done);
    void addEntry(const Journal::Entry &entry);
    bool isInterrupted() const { return m_options.isInterrupted && m_options.isInterrupted(); }
    void reportPartialResult();
    void updateResult();
    void finish();
    void listNotPlayed(const QVector<Step> &steps, bool *isAfterLast);
    qint64 lastLine();

    const Scenario &m_scenario;
    Options m_options;
    Observer m_observer;
    bool m_keepsSession = false;
    std::unique_ptr<Session> m_session;
    ScenarioResult m_result;
    QElapsedTimer m_clock;
    QElapsedTimer m_sincePartialResult;
    JournalQueryCounter m_counter;
    const Step *m_lastStep = nullptr; ///< the step that was played last
    SourceLocation m_repeat;          ///< the outermost repeat that is played
    int m_repetition = 0;             ///< number of its repetition; 0 outside of repeats
    std::mutex m_entryMutex;          ///< guards the next three members; entries come on any thread
    qint64 m_lastLine = 0;
    FirstAndLast<Journal::Entry> m_lines{ScenarioResult::LinesInReport};
    PageSpans m_pages;
    QMap<QString, int> m_screenshots; ///< names that were used, with the last number that was added to each
};

}
