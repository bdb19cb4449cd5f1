#pragma once

#include "session/session.h"
#include "time/realtimetimer.h"

#include <QtCore/QDateTime>
#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtWidgets/QMainWindow>

#include <functional>

namespace panelhost {

struct OperatorAction;
struct Run;
struct Scenario;
struct ScenarioResult;
struct StepResult;
class FaultView;
class FileMenu;
class FrontPanel;
class JournalView;
class PlayBar;
class ScenarioOpener;
class SpeedBar;
class StoreReader;
class TimeMenu;
class TodayView;
class UnitBar;
class UnitPattern;
class WindowStatus;

/// The window with front panel, LCD, menus, speed bar and journal. All actions are performed by the operator of the
/// session. It is updated by the wall clock and adds nothing to the journal itself. GUI thread.
class PanelWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PanelWindow(Session &session);
    ~PanelWindow() override;

    /// Sets the speed as VirtualClock::run() takes it; a negative @p factor pauses.
    void setSpeed(double factor);
    double speed() const { return m_factor; }
    /// Returns the speed that the user has chosen: speed(), unless the end of a scenario has paused the window.
    double chosenSpeed() const { return m_pausedByEnd ? m_factorBeforeEnd : m_factor; }
    /// Pauses, and lets the clock jump to the next line of the journal, by one minute at most. A scenario that is being
    /// played goes on to the next line or to the end of its step.
    void step();
    /// Lets the user open scenarios from now on, in the menu and by dropping a file. @p base has the options of the
    /// device that a scenario doesn't set.
    void setOpensScenarios(const Session::Options &base);
    /// Shows that @p scenario is played in the session, until endPlaying(). Who plays it moves the clock, at speed().
    /// The operator's actions are refused.
    void beginPlaying(const Scenario &scenario);
    /// Shows the step that was played last. Its @p number starts at 1.
    void showPlayedStep(const StepResult &step, qint64 number);
    /// Shows the result, and pauses. The operator may act again.
    void endPlaying(const ScenarioResult &result);
    /// Shows that @p fileName is being recorded; shows nothing if it is empty.
    void setRecording(const QString &fileName);
    /// Shows that @p count saved runs wait to be sent to the server. If it is 0, shows nothing and removes the problem.
    void setPendingRuns(int count);
    /// Shows @p text in the status bar, why runs can't be sent to the server, until no run waits any more.
    void setSendingProblem(const QString &text);
    /// Sets the name of the file that gets the journal.
    void setJournalFile(const QString &fileName);
    /// Adds @p text to the status bar permanently: a file could not be written.
    void addFailure(const QString &text);
    /// Asks for the serial number of each unit from now on. Outside factory mode, input on the LCD has no effect.
    /// Entering a serial number enters factory mode and begins the test of that unit. @p unit, if not empty, is the
    /// unit that is tested now.
    void askForUnits(const UnitPattern &pattern, const QString &unit);
    bool asksForUnits() const { return m_units != nullptr; }
    /// Returns the unit that is tested; empty outside factory mode, and if the window doesn't ask for units.
    QString unit() const;
    /// Adds the dock with the figures of today, closed unless the window asks for units. @p reader must outlive the
    /// window. @p savedCount returns the number of runs that have been saved.
    void addToday(StoreReader &reader, const std::function<int()> &savedCount);
    /// Shows the verdict of @p run if the window asks for units.
    void showRun(const Run &run);
    /// Warns that @p unit has passed at @p passedAt, if it is still the unit that is tested.
    void warnThatUnitPassed(const QString &unit, const QDateTime &passedAt);
    /// Restores the docks from what saveState() has returned. Returns false if @p state isn't valid.
    bool restoreDocks(const QByteArray &state, int version);
    /// Sets whether the docks are placed where they leave the most room for the panel. Ends by itself when the user
    /// moves or resizes a dock.
    void setArrangesDocks(bool arranges);
    bool arrangesDocks() const { return m_arrangesDocks; }
    /// Updates everything that is shown.
    void refresh();

Q_SIGNALS:
    /// Emitted when the test of @p unit begins, whose serial number was entered in the window.
    void unitBegun(const QString &unit);
    /// Emitted when @p scenario shall be played in a session of its own.
    void scenarioOpened(const panelhost::Scenario &scenario);
    /// Emitted when panelhost shall be started with @p arguments, to show a timeline.
    void viewRequested(const QStringList &arguments);
    /// Emitted when this session shall end and a new one begin.
    void newSessionTriggered();
    /// Emitted when the scenario that is being played shall end.
    void stopTriggered();
    /// Emitted when the scenario that is being played shall go on by one step although the window is paused.
    void stepTriggered();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void perform(const OperatorAction &action);
    QString refusalOf(const OperatorAction &action) const;
    void beginUnit(const QString &unit);
    void focusLcd();
    void showFailure(const QString &failure);
    void addMenus();
    void addDeviceMenu();
    void addLanguageMenu();
    QMenu *addWindowLanguages(QMenu *menu);
    void addThemes();
    void addViewMenu();
    void addTimeMenu();
    void addFaultMenu();
    void addPlayBar();
    void openScenario(const Scenario &scenario);
    void showSummary();
    void addJournal();
    void addFaults();
    void addToDocks(QDockWidget *dock);
    QList<QDockWidget *> dockedDocks() const;
    QSize roomForPanelAndDocks() const;
    void arrangeDocks();
    void setInitialSize();

    Session &m_session;
    FrontPanel *m_panel;
    JournalView *m_journal;
    SpeedBar *m_speed;
    WindowStatus *m_status;
    UnitBar *m_units = nullptr;
    TodayView *m_today = nullptr;
    FaultView *m_faults = nullptr;
    FileMenu *m_files = nullptr;
    TimeMenu *m_time = nullptr;
    PlayBar *m_playBar;
    ScenarioOpener *m_opener = nullptr;
    QString m_scenarioFile; ///< of the scenario that is or was played
    bool m_isPlaying = false;
    double m_factor = 1;
    double m_factorBeforeEnd = 1; ///< the speed at the end of the scenario
    bool m_pausedByEnd = false;
    QMenu *m_viewMenu = nullptr;
    QList<QDockWidget *> m_docks;
    bool m_arrangesDocks = true; ///< until the user moves or resizes a dock
    bool m_isArranging = false;
    QHash<QString, QDateTime> m_passed; ///< units that have passed in this session, and when
    QString m_failure;                  ///< of the T-Bar's calibration or of the board, last shown
    RealTimeTimer m_refresh;
    QElapsedTimer m_sinceOpened; ///< LEDs blink by the wall clock at any speed
};

}
