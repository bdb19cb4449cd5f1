#pragma once

#include "time/realtimetimer.h"
#include "time/virtualclock.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QMainWindow>

namespace panelhost {

struct OperatorAction;
class FrontPanel;
class JournalView;
class Session;
class SpeedBar;

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
    /// Shows that @p fileName is being recorded; shows nothing if it is empty.
    void setRecording(const QString &fileName);
    /// Sets the name of the file that gets the journal.
    void setJournalFile(const QString &fileName);
    /// Adds @p text to the status bar permanently: a file could not be written.
    void addFailure(const QString &text);
    /// Updates everything that is shown.
    void refresh();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void perform(const OperatorAction &action);
    void showFailure(const QString &failure);
    void placeSpeedBar();
    void addMenus();
    void addDeviceMenu();
    void addLanguageMenu();
    void addViewMenu();
    void addJournal();

    Session &m_session;
    FrontPanel *m_panel;
    JournalView *m_journal;
    SpeedBar *m_speed;
    QString m_failure; ///< of the T-Bar's calibration, last shown
    RealTimeTimer m_refresh;
    QElapsedTimer m_sinceOpened; ///< LEDs blink by the wall clock at any speed
};

}
