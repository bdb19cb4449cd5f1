#pragma once

#include "operator/operatoraction.h"
#include "output/linefile.h"
#include "session/session.h"

#include <QtCore/QObject>

namespace panelhost {

/// Writes what an operator does as a scenario that plays again: each action, and the time that passed before it.
/// Each step is handed to the system whole as soon as it is done, so that the file is a readable scenario whatever
/// becomes of the process. On a full disk it ends with the last whole step. GUI thread.
class ScenarioWriter : public QObject
{
    Q_OBJECT

public:
    /// The session must outlive the writer.
    ScenarioWriter(const QString &path, Session &session);
    /// Closes.
    ~ScenarioWriter() override;

    /// Writes the device's description and begins to listen. False, with a sentence in @p error, if the file can't
    /// be written, is being written by another process, or is there and @p ifExists is Refuse.
    bool open(LineFile::IfExists ifExists, QString *error);
    /// Writes the time that passed since the last action and ends the recording.
    void close();
    /// Empty as long as every step could be written.
    QString error() const { return m_file.error(); }

Q_SIGNALS:
    /// Emitted once, with the file's path and the system's reason, when a step could not be written. The recording has
    /// ended with the step before.
    void failed(const QString &error);

private:
    QByteArray header() const;
    void writeStep(const OperatorAction &action, Milliseconds at);
    QByteArray waitUntil(Milliseconds at);
    LineFile m_file;
    const QString m_path;
    Session &m_session;
    Milliseconds m_written = 0;
};

}
