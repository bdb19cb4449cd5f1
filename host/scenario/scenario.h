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

/// The arguments of a step walk-keys.
struct KeyWalk
{
    int max = 100;               ///< number of presses after which the step fails
    std::optional<int> wrongKey; ///< hal key that is pressed once before the first blinking key
    qint64 pace = 300;           ///< milliseconds between two presses
};

/// A step of a scenario. The members that are used depend on the kind.
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
    QString file; ///< the file of the step: the scenario or a file that it uses
    SourceLocation where;
    QString text;                    ///< the step as one line, for progress and reports
    QVector<OperatorAction> actions; ///< Act
    QStringList path;                ///< Open
    KeyWalk walk;                    ///< WalkKeys
    qint64 duration = 0;             ///< Wait, in milliseconds
    Expectations expectations;       ///< Expect
    std::optional<qint64> within;    ///< Expect: for how long to wait, in milliseconds; absent: not at all
    QString name;                    ///< Screenshot, Note, Mark
    int times = 1;                   ///< Act, Repeat
    QVector<Step> steps;             ///< Repeat
};

/// A session as data: the device and the steps of the operator.
struct Scenario
{
    QString file;
    QStringList files; ///< all files that were read: the scenario and the files that it uses
    QString title;
    QString unit; ///< serial number of the unit that is tested when the session begins; empty: unknown
    Session::Options device;
    QVector<OperatorAction> preparation; ///< performed before the steps, such as plugging
    QVector<Step> steps;
};

/// Returns the number of steps to play. The steps of a repeat count each time.
qint64 playedSteps(const QVector<Step> &steps);

/// Returns the expectations of @p steps, including those of steps in repeats.
Expectations expectationsOf(const QVector<Step> &steps);

}
