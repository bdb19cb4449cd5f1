#pragma once

#include "journal/journal.h"
#include "records/lcdstate.h"
#include "records/portstates.h"
#include "records/run.h"

#include <QtCore/QCryptographicHash>

#include <functional>

namespace panelhost {

/// The session whose runs are derived: what runs of all kinds have in common.
class SessionFollower
{
public:
    SessionFollower(const SessionInfo &info, const std::function<void(const Run &)> &listener);

    /// Takes over what @p entry says of time, LCD, ports, unit and language.
    void add(const Journal::Entry &entry);

    const LcdState &lcd() const { return m_lcd; }
    /// Who or what was at work when the LCD changed.
    VerdictSource cause() const { return m_cause; }
    qint64 now() const { return m_now; }
    qint64 lineCount() const { return m_line; }

    /// Returns a run that begins now.
    Run open(RunKind kind);
    /// Ends @p run now and passes it on.
    void close(Run &run, RunOutcome outcome);
    /// Ports of @p family that were reported in this session.
    QStringList knownPorts(PortFamily family) const;

private:
    QUuid idOf(const Run &run) const;
    void readAction(const Journal::Entry &entry);
    void readPorts(const Journal::Entry &entry);

    SessionInfo m_info;
    std::function<void(const Run &)> m_listener;
    QCryptographicHash m_hash{QCryptographicHash::Sha256}; ///< of the lines, if the session has no id
    LcdState m_lcd;
    QMap<QString, QString> m_ports;
    VerdictSource m_cause = VerdictSource::Test; ///< what came last before the screen changed
    bool m_isAfterScreen = false;
    qint64 m_now = 0;
    qint64 m_line = 0;
    int m_opened = 0;
};

}
