#pragma once

#include <QtWidgets/QToolBar>

class QLabel;

namespace panelhost {

struct ScenarioResult;
struct StepResult;
class ElidedLabel;

/// The strip below the menus that shows which scenario is being played, and its result.
class PlayBar : public QToolBar
{
    Q_OBJECT

public:
    explicit PlayBar(QWidget *parent);

    /// Shows that the scenario with this @p title is being played.
    void begin(const QString &title, qint64 stepCount);
    /// Shows the step with this @p number, starting at 1.
    void setStep(const StepResult &step, qint64 number);
    /// Shows the result: whether it passed, and what failed first.
    void end(const ScenarioResult &result);
    /// Returns the verdict that is shown and the title of the scenario.
    QString summary() const;

Q_SIGNALS:
    void stopTriggered();
    void playAgainTriggered();
    void timelineTriggered();

private:
    QAction *addButton(const char *name, void (PlayBar::*triggered)());
    void showVerdict(const QString &state, const QString &verdict, const QString &text);
    void showDetails();
    void setTexts();

    QLabel *m_verdict;
    ElidedLabel *m_text;
    QAction *m_stop;
    QAction *m_details;
    QAction *m_again;
    QAction *m_timeline;
    QString m_title;
    QString m_failure; ///< all that is known about it
    qint64 m_stepCount = 0;
};

}
