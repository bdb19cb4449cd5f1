#pragma once

#include "expectations/expectationevaluator.h"
#include "time/virtualclock.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace panelhost {

/// What became of one step.
struct StepResult
{
    QString file;
    SourceLocation where;
    QString text;
    Milliseconds at = 0; ///< when it was over
    bool passed = true;
    QString error; ///< why it could not be done
    ExpectationResults expectationResults;
    QString screenshot; ///< its name
    QByteArray png;
};

/// A time for which the LCD showed one page.
struct PageSpan
{
    Milliseconds from = 0;
    Milliseconds until = 0;
    QString title;
};

/// What became of one scenario.
struct ScenarioResult
{
    enum class State {
        Running,
        Interrupted, ///< by a signal
        Over
    };

    QString file;
    QString title;
    State state = State::Over;
    bool passed = true; ///< so far; never if it was interrupted
    QString error;      ///< why it could not be begun
    /// The steps that were played. Of a step that repeats others, the first two rounds and the last one are kept; one
    /// element stands for the rounds between.
    QVector<StepResult> steps;
    qint64 stepsPlayed = 0;
    QVector<PageSpan> pages;
    Milliseconds duration = 0; ///< virtual milliseconds
    qint64 wallTime = 0;       ///< real milliseconds
    QByteArray journal;        ///< JSON lines; of a long one the first and the last lines
    qint64 journalLines = 0;   ///< how many there were
    QStringList lastLines;     ///< of the journal, readable, when it failed

    /// "passed", "failed", "running" or "interrupted".
    QString verdict() const;

    const StepResult *failedStep() const;
    /// What failed in a few lines: the place, what was expected and found, the last lines of the journal.
    QString failureText() const;
};

using ScenarioResults = QVector<ScenarioResult>;

/// "1:05.250" for minutes, seconds and milliseconds.
QString timeText(Milliseconds at);

}
