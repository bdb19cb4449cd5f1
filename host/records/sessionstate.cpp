#include "records/sessionstate.h"

#include <QtCore/QSet>

namespace panelhost {

namespace {

// The namespace of the names from which the ids of runs are computed.
const QUuid idNamespace(0x8b0d3c5a, 0x6f1e, 0x4c0b, 0x9a, 0x57, 0x2e, 0x41, 0x7d, 0x90, 0xc3, 0x18);

// Returns true for what an operator does to the panel, except for plugging.
bool isInput(const QString &action)
{
    static const QSet<QString> inputs = {QStringLiteral("soft"),  QStringLiteral("navigate"),
                                         QStringLiteral("touch"), QStringLiteral("press"),
                                         QStringLiteral("hold"),  QStringLiteral("release")};
    return inputs.contains(action);
}

}

SessionState::SessionState(const SessionInfo &info, const std::function<void(const Run &)> &listener)
    : m_info(info), m_listener(listener)
{
}

void SessionState::add(const Journal::Entry &entry)
{
    m_now = entry.at;
    m_line = entry.sequence;
    if (m_info.isNull())
        m_hash.addData(entry.toJsonLine() + '\n');
    if (m_isAfterScreen)
        m_cause = VerdictSource::Test;
    m_isAfterScreen = entry.kind == Journal::Kind::Screen;
    if (entry.kind == Journal::Kind::Screen)
        m_lcd.apply(entry.data);
    else if (entry.kind == Journal::Kind::Action)
        readAction(entry);
    else if (entry.kind == Journal::Kind::Event && portFamily(entry.name) != PortFamily::None)
        readPorts(entry);
}

void SessionState::readPorts(const Journal::Entry &entry)
{
    m_cause = VerdictSource::Report;
    const auto states = portStates(portFamily(entry.name), entry.data);
    for (auto state = states.begin(); state != states.end(); ++state)
        m_ports.insert(state.key(), state.value());
}

void SessionState::readAction(const Journal::Entry &entry)
{
    if (entry.name == QLatin1String("unit"))
        m_info.unit = entry.data.value(QLatin1String("unit")).toString();
    else if (entry.name == QLatin1String("language"))
        m_info.language = entry.data.value(QLatin1String("code")).toString();
    else if (isInput(entry.name))
        m_cause = VerdictSource::Operator;
}

// If the session has no id, the hash of its lines distinguishes its runs from those of other sessions.
QUuid SessionState::idOf(const Run &run) const
{
    const QString session =
        m_info.isNull() ? QString::fromLatin1(m_hash.result().toHex()) : m_info.id.toString(QUuid::WithoutBraces);
    return QUuid::createUuidV5(idNamespace, QStringLiteral("%1/%2").arg(session).arg(run.position));
}

Run SessionState::open(RunKind kind)
{
    Run run;
    run.position = ++m_opened;
    run.session = m_info;
    run.kind = kind;
    run.begin = m_now;
    run.firstLine = m_line;
    return run;
}

void SessionState::close(Run &run, RunOutcome outcome)
{
    run.id = idOf(run);
    run.outcome = outcome;
    run.end = m_now;
    run.lastLine = m_line;
    run.ports = m_ports;
    m_listener(run);
}

QStringList SessionState::knownPorts(PortFamily family) const
{
    const QString prefix = family == PortFamily::Usb ? QStringLiteral("usb") : QStringLiteral("net");
    return m_ports.keys().filter(prefix);
}

}
