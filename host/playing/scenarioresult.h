#pragma once

#include "expectations/expectationevaluator.h"
#include "journal/journal.h"
#include "playing/firstandlast.h"
#include "time/timetext.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace panelhost {

/// The result of a step.
struct StepResult
{
    QString file;
    SourceLocation where;
    QString text;
    Milliseconds at = 0; ///< virtual time at the end of the step
    bool passed = true;
    QString error; ///< why it could not be performed
    ExpectationResults expectationResults;
    QString screenshot; ///< its name
    QByteArray png;
    /// Sequence number of the first line of the journal that was added during the step; 0 if there was none.
    qint64 journalLine = 0;
    SourceLocation repeat; ///< the outermost repeat that the step belongs to
    int repetition = 0;    ///< number of its repetition, starting at 1; 0: the step isn't in a repeat
};

/// Something to know about a session, such as a version.
struct SessionFact
{
    QString name;
    QString value;
};

/// A span of virtual time in which the LCD showed a page.
struct PageSpan
{
    Milliseconds from = 0;
    Milliseconds until = 0;
    QString title;
};

/// The result of a scenario.
struct ScenarioResult
{
    static constexpr int LinesInReport = 1000; ///< first and last lines of the journal
    static constexpr int StepsNotPlayed = 200; ///< number of steps that are listed if they were not played

    enum class State {
        Running,
        Interrupted, ///< by a signal
        Over
    };

    QString file;
    QString title;
    State state = State::Over;
    bool passed = true; ///< so far; false if it was interrupted
    QString error;      ///< why it could not be started
    /// The steps that were played. Of a repeat, the first two repetitions and the last one are kept; one element
    /// replaces those between them.
    QVector<StepResult> steps;
    qint64 stepsPlayed = 0;
    /// The first steps that were not played because the scenario failed or was interrupted. Their results are empty.
    QVector<StepResult> notPlayed;
    qint64 notPlayedCount = 0;  ///< number of all of them; the steps of a repeat count once
    QVector<SessionFact> facts; ///< date, versions, device and faults
    QVector<PageSpan> pages;
    Milliseconds duration = 0; ///< virtual milliseconds
    qint64 wallTime = 0;       ///< real milliseconds
    FirstAndLast<Journal::Entry> journal{LinesInReport};
    QStringList lastLines; ///< last lines of the journal as text, if it failed

    /// Returns "passed", "failed", "running" or "interrupted".
    QString verdict() const;
    /// Returns the journal as JSON lines; if there are many, the first and the last ones.
    QByteArray journalText() const;

    const StepResult *failedStep() const;
    /// Returns what failed: the location, what was expected and found, and the last lines of the journal.
    QString failureText() const;
};

using ScenarioResults = QVector<ScenarioResult>;

}
