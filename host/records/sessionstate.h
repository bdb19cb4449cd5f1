#pragma once

#include "journal/journal.h"
#include "records/lcdstate.h"
#include "records/portstates.h"
#include "records/run.h"

#include <QtCore/QCryptographicHash>

#include <functional>

namespace panelhost {

/// Follows a session through its journal: the time, the LCD, the ports, the unit and the language, which runs of all
/// kinds need. Creates and ends the runs.
class SessionState
{
public:
    SessionState(const SessionInfo &info, const std::function<void(const Run &)> &listener);

    /// Reads the time, LCD, ports, unit and language from @p entry.
    void add(const Journal::Entry &entry);

    const LcdState &lcd() const { return m_lcd; }
    /// Returns what caused the last change of the LCD.
    VerdictSource cause() const { return m_cause; }
    qint64 now() const { return m_now; }
    qint64 lineCount() const { return m_line; }

    /// Returns a new run that begins now.
    Run open(RunKind kind);
    /// Ends @p run now and passes it to the listener.
    void close(Run &run, RunOutcome outcome);
    /// Returns the names of the ports of @p family that were reported in this session.
    QStringList knownPorts(PortFamily family) const;

private:
    QUuid idOf(const Run &run) const;
    void readAction(const Journal::Entry &entry);
    void readPorts(const Journal::Entry &entry);

    SessionInfo m_info;
    std::function<void(const Run &)> m_listener;
    QCryptographicHash m_hash{QCryptographicHash::Sha256}; ///< hash of all lines; used if the session has no id
    LcdState m_lcd;
    QMap<QString, QString> m_ports;
    VerdictSource m_cause = VerdictSource::Test; ///< cause of the last change of the LCD
    bool m_isAfterScreen = false;
    qint64 m_now = 0;
    qint64 m_line = 0;
    int m_opened = 0;
};

}
