#include "window/playbar.h"

#include "panel/theme.h"
#include "panel/translated.h"
#include "playing/scenarioresult.h"
#include "window/elidedlabel.h"
#include "window/problemdialog.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

namespace panelhost {

namespace {

// The first expectation that doesn't hold, or why a step couldn't be performed.
QString reasonOf(const StepResult &step)
{
    if (!step.error.isEmpty())
        return step.error;
    for (const ExpectationResult &result : step.expectationResults) {
        if (!result.holds)
            return PlayBar::tr("expected %1, found %2").arg(result.expected, result.found);
    }
    return {};
}

QString failureOf(const ScenarioResult &result)
{
    const StepResult *step = result.failedStep();
    if (!step)
        return result.error;
    return QStringLiteral("%1:%2: %3: %4")
        .arg(QFileInfo(step->file).fileName())
        .arg(step->where.line)
        .arg(step->text, reasonOf(*step));
}

}

PlayBar::PlayBar(QWidget *parent)
    : QToolBar(parent), m_verdict(new QLabel), m_text(new ElidedLabel(QStringLiteral("play-text"))), m_stop(nullptr)
{
    setObjectName(QStringLiteral("play-bar"));
    setMovable(false);
    m_verdict->setObjectName(QStringLiteral("play-verdict"));
    toggleViewAction()->setVisible(false);
    m_text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(m_verdict);
    addWidget(m_text);
    m_stop = addButton("play-stop", &PlayBar::stopTriggered);
    m_details = addButton("play-details", &PlayBar::showDetails);
    m_timeline = addButton("play-timeline", &PlayBar::timelineTriggered);
    m_again = addButton("play-again", &PlayBar::playAgainTriggered);
    keepTranslated(this, [this] { setTexts(); });
    theme::applyTo(this);
    hide();
}

void PlayBar::setTexts()
{
    m_stop->setText(tr("Stop"));
    m_stop->setToolTip(tr("Ends the scenario here; the session stays as it is"));
    m_details->setText(tr("Details…"));
    m_details->setToolTip(tr("Shows what was expected and found, and the last lines of the journal"));
    m_timeline->setText(tr("Timeline…"));
    m_timeline->setToolTip(tr("Shows any moment of this scenario in another window"));
    m_again->setText(tr("Play again"));
    m_again->setToolTip(tr("Plays the scenario from its beginning in a new session"));
}

QAction *PlayBar::addButton(const char *name, void (PlayBar::*triggered)())
{
    QAction *action = addAction(QString(), this, triggered);
    action->setObjectName(QString::fromLatin1(name));
    widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
}

// The style sheet has a rule for each state; Qt applies it only when the widget is polished again.
void PlayBar::showVerdict(const QString &state, const QString &verdict, const QString &text)
{
    m_verdict->setProperty("state", state);
    m_verdict->style()->unpolish(m_verdict);
    m_verdict->style()->polish(m_verdict);
    m_verdict->setText(verdict);
    m_text->setText(text);
    m_text->setToolTip(m_failure);
    m_stop->setVisible(state == QLatin1String("running"));
    m_details->setVisible(!m_failure.isEmpty());
    m_again->setVisible(!m_stop->isVisible());
    m_timeline->setVisible(!m_stop->isVisible());
    show();
}

void PlayBar::begin(const QString &title, qint64 stepCount)
{
    m_title = title;
    m_stepCount = stepCount;
    m_failure.clear();
    showVerdict(QStringLiteral("running"), tr("Playing"), title);
}

void PlayBar::setStep(const StepResult &step, qint64 number)
{
    m_text->setText(tr("%1  –  step %2 of %3: %4").arg(m_title).arg(number).arg(m_stepCount).arg(step.text));
}

void PlayBar::end(const ScenarioResult &result)
{
    const QString steps = tr("%1  –  %2 of %3 steps, %4")
                              .arg(m_title)
                              .arg(result.stepsPlayed)
                              .arg(m_stepCount)
                              .arg(timeText(result.duration));
    m_failure = result.passed ? QString() : result.failureText();
    if (result.state == ScenarioResult::State::Interrupted)
        showVerdict(QStringLiteral("stopped"), tr("Stopped"), steps);
    else if (result.passed)
        showVerdict(QStringLiteral("passed"), tr("PASSED"), steps);
    else
        showVerdict(QStringLiteral("failed"), tr("FAILED"), failureOf(result));
}

QString PlayBar::summary() const
{
    return QStringLiteral("%1: %2").arg(m_verdict->text(), m_title);
}

void PlayBar::showDetails()
{
    showProblem(window(), m_title, m_text->text(), m_failure);
}

}
