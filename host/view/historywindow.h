#pragma once

#include "history/sessionhistory.h"

#include <QtWidgets/QMainWindow>

#include <memory>
#include <vector>

class QAction;
class QBoxLayout;
class QLabel;
class QListView;
class QSplitter;
class QToolBar;

namespace panelhost {

class HistoryLineModel;
class HistoryPane;
class TimelineBar;

/// Shows one session that was played, or two side by side at the same time: the front panel, the journal and a
/// timeline. GUI thread.
class HistoryWindow : public QMainWindow
{
    Q_OBJECT

public:
    using Histories = std::vector<std::unique_ptr<SessionHistory>>;

    /// @p histories has one or two elements and must outlive the window.
    explicit HistoryWindow(const Histories &histories);
    ~HistoryWindow() override;

    /// Shows all sessions at the time @p at.
    void showTime(Milliseconds at);
    /// Shows @p line of the session with the number @p index, and the other session at the same time.
    void showLine(int index, qint64 line);
    /// Returns the line that is shown of the session with the number @p index.
    qint64 line(int index) const;

Q_SIGNALS:
    /// Emitted when the user wants to go on from @p line of the first session. @p isRecorded is true if the result
    /// shall be recorded.
    void takeOverRequested(qint64 line, bool isRecorded);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// What is shown of a session.
    struct Side
    {
        const SessionHistory *history = nullptr;
        HistoryPane *pane = nullptr;
        HistoryLineModel *model = nullptr;
        QListView *lines = nullptr;
        TimelineBar *timeline = nullptr;
        qint64 line = 0;
    };

    void addSide(const SessionHistory &history, Milliseconds duration, QBoxLayout *panes, QBoxLayout *lists);
    void addSteps();
    QAction *addStep(QToolBar *bar, const char *name, const QString &text, const QKeySequence &key,
                     const std::function<qint64()> &find);
    void addTakeOver();
    void placeTakeOver();
    void placeParts();
    QString timeOf(const SessionHistory &history, qint64 line) const;
    void compare();
    void update(int index, qint64 line);
    void updateTitle();
    Side &active() { return m_sides[static_cast<std::size_t>(m_active)]; }

    std::vector<Side> m_sides;
    int m_active = 0; ///< the session to which steps refer: the one that was used last
    QToolBar *m_steps;
    QToolBar *m_takeOver;
    QSplitter *m_parts = nullptr;
    bool m_arrangesParts = true; ///< until the user moves the border between them
    QLabel *m_time;
    QLabel *m_message;
    qint64 m_difference = 0; ///< first line that differs; 0: there is none
    bool m_isUpdating = false;
};

}
