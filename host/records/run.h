#pragma once

#include "records/sessioninfo.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QUuid>
#include <QtCore/QVector>

#include <optional>

namespace panelhost {

/// What was tested.
enum class RunKind {
    Machine, ///< the complete machine test
    Aging,   ///< the aging test, from its start to its stop
    Repair   ///< a visit to one repair page
};

enum class RunOutcome {
    Passed,
    Failed,
    Aborted ///< ended without a verdict
};

/// What decided the verdict of a phase.
enum class VerdictSource {
    None,
    Operator,
    Test,  ///< the phase ended by itself
    Report ///< a link report of the device
};

QString toText(RunKind kind);
QString toText(RunOutcome outcome);
QString toText(VerdictSource source);
std::optional<RunKind> runKindFromText(const QString &text);
std::optional<RunOutcome> runOutcomeFromText(const QString &text);
std::optional<VerdictSource> verdictSourceFromText(const QString &text);

/// One phase of a machine test, or the page of a repair run.
struct RunPhase
{
    QString name;
    RunOutcome outcome = RunOutcome::Aborted;
    qint64 begin = 0;    ///< device time in milliseconds
    qint64 duration = 0; ///< milliseconds
    VerdictSource source = VerdictSource::None;
};

/// A link change during an aging test after which at least one port was down.
struct AgingFailure
{
    qint64 at = 0; ///< device time in milliseconds
    QStringList ports;
};

/// One test of one unit, as a value. It is derived from the journal.
struct Run
{
    /// The largest number of failures and of wrong keys that are listed. All of them are counted.
    static constexpr int MaxListed = 1000;

    QUuid id;
    SessionInfo session; ///< with the unit and the language at the start of the run
    RunKind kind = RunKind::Machine;
    RunOutcome outcome = RunOutcome::Aborted;
    qint64 begin = 0; ///< device time in milliseconds
    qint64 end = 0;
    QVector<RunPhase> phases;
    int rounds = 0; ///< complete rounds of an aging test
    int failureCount = 0;
    QVector<AgingFailure> failures;
    int wrongKeyCount = 0;
    QVector<int> wrongKeys; ///< hal keys that were pressed while another key was awaited
    QVector<int> skippedKeys;
    QMap<QString, QString> ports; ///< "net1" to "plugged", "unplugged" or "blocked", as last reported
    int position = 0;             ///< number of the run in its session, counted from 1 in the order in which runs began
    qint64 firstLine = 0;         ///< sequence number of its first line in the journal
    qint64 lastLine = 0;
    int attempt = 0; ///< number of the run among the stored runs of its unit, from 1; 0: not stored, or unit unknown

    /// Return the start and the end in UTC; invalid if the journal doesn't contain the time when the session began.
    QDateTime beginUtc() const;
    QDateTime endUtc() const;
    /// Returns the name of the phase that failed; empty if none did.
    QString failedPhase() const;
    QJsonObject toJson() const;
};

}
