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

/// The window: the front panel with the LCD, menus, speed and the journal. All that is done in it goes through the
/// session's operator. It redraws on the wall clock and leaves no trace in the journal by itself. GUI thread.
class PanelWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PanelWindow(Session &session);
    ~PanelWindow() override;

    void setSpeed(double factor);
    /// Shows the recording light with @p fileName; puts it out if that is empty.
    void setRecording(const QString &fileName);
    /// Names the file that gets the journal.
    void setJournalFile(const QString &fileName);
    /// Shows @p text below the panel from now on, beside earlier ones: a file could not be written.
    void addFailure(const QString &text);
    /// Brings all that is shown up to date now.
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
    QString m_failure; ///< of the T-Bar's calibration, as shown last
    RealTimeTimer m_refresh;
    QElapsedTimer m_sinceOpened; ///< LEDs blink for the eye, so on the wall clock at any speed
};

}
