#pragma once

#include "diagnostics/diagnosticcollector.h"
#include "expectations/expectation.h"
#include "operator/operatoraction.h"
#include "session/session.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <optional>

namespace panelhost {

/// How the blinking keys are walked.
struct KeyWalk
{
    int max = 100;               ///< presses after which the walk has failed
    std::optional<int> wrongKey; ///< hal key that is pressed once before the first blinking one
    qint64 pace = 300;           ///< milliseconds from one press to the next
};

/// One step of a scenario. Which members count depends on the kind.
struct Step
{
    enum class Kind {
        Act,
        Open,
        WalkKeys,
        Wait,
        Expect,
        Screenshot,
        Repeat,
        Note,
        Mark
    };

    Kind kind = Kind::Note;
    QString file; ///< where it stands: the scenario's file or one that it uses
    SourceLocation where;
    QString text;                    ///< the step as one line, for progress and reports
    QVector<OperatorAction> actions; ///< Act
    QStringList path;                ///< Open
    KeyWalk walk;                    ///< WalkKeys
    qint64 duration = 0;             ///< Wait, in milliseconds
    Expectations expectations;       ///< Expect
    std::optional<qint64> within;    ///< Expect: until when, in milliseconds; absent: now
    QString name;                    ///< Screenshot, Note, Mark
    int times = 1;                   ///< Act, Repeat
    QVector<Step> steps;             ///< Repeat
};

/// A whole session as data: the device, and what the operator does and must see.
struct Scenario
{
    QString file;
    QStringList files; ///< all that were read: the scenario's file and those that it uses
    QString title;
    Session::Options device;
    QVector<OperatorAction> preparation; ///< what is plugged before the operator comes
    QVector<Step> steps;
};

/// Number of steps that will be played, repeats counted each time.
qint64 playedSteps(const QVector<Step> &steps);

}
