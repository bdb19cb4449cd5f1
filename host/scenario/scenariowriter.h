#pragma once

#include "operator/operatoraction.h"
#include "output/linefile.h"
#include "scenario/steptext.h"
#include "session/session.h"

#include <QtCore/QObject>

#include <optional>

namespace panelhost {

/// Records what an operator does as a scenario: each action, and the time before it. Each step is written as soon as it
/// is performed, so that the file is a valid scenario even if the process is killed. On a full disk it ends with the
/// last complete step. GUI thread.
class ScenarioWriter : public QObject
{
    Q_OBJECT

public:
    /// The session must outlive the writer.
    ScenarioWriter(const QString &path, Session &session);
    /// Closes the file.
    ~ScenarioWriter() override;

    /// An action that was performed before the recording was started, and when.
    struct PerformedAction
    {
        OperatorAction action;
        Milliseconds at;
    };

    /// Lets open() write @p actions first: all that were performed since the session began, so that the file plays the
    /// whole session. Call it before open().
    void setBeginning(const QVector<PerformedAction> &actions) { m_beginning = actions; }
    /// Writes the description of the device and starts recording. Returns false and sets @p error to a sentence if the
    /// file can't be written, is being written by another process, or exists and @p ifExists is Refuse.
    bool open(LineFile::IfExists ifExists, QString *error);
    /// Writes the time since the last action and ends the recording.
    void close();
    /// Returns why a step could not be written; empty if all were written.
    QString error() const { return m_file.error(); }

Q_SIGNALS:
    /// Emitted once when a step could not be written. @p error has the path of the file and the system's reason. The
    /// recording ends with the previous step.
    void failed(const QString &error);

private:
    QByteArray header() const;
    void writeStep(const OperatorAction &action, Milliseconds at);
    QByteArray waitUntil(Milliseconds at);
    LineFile m_file;
    std::optional<QVector<PerformedAction>> m_beginning;
    const QString m_path;
    Session &m_session;
    const KeyNames m_keys;
    Milliseconds m_written = 0;
};

}
