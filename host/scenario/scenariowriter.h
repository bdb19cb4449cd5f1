#pragma once

#include "operator/action.h"
#include "session.h"

#include <QtCore/QFile>
#include <QtCore/QObject>

namespace panelhost {

/// Writes what an operator does as a scenario that plays again: each action, and the time that passed before it.
/// Each step is handed to the system whole as soon as it is done, so that the file is a readable scenario whatever
/// becomes of the process. GUI thread.
class ScenarioWriter : public QObject
{
    Q_OBJECT

public:
    /// The session must outlive the writer.
    ScenarioWriter(const QString &path, Session &session);
    /// Closes.
    ~ScenarioWriter() override;

    /// Writes the device's description and begins to listen. False, with a sentence in @p error, if the file can't
    /// be written.
    bool open(QString *error);
    /// Writes the time that passed since the last action and ends the recording.
    void close();
    /// Empty as long as every step could be written.
    QString error() const { return m_error; }

private:
    QByteArray header() const;
    void writeStep(const Action &action, Instant at);
    QByteArray waitUntil(Instant at);
    bool write(const QByteArray &bytes);

    QFile m_file;
    Session &m_session;
    Instant m_written = 0;
    QString m_error;
};

}
