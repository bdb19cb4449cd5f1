#include "records/runrecords.h"

#include "session/loadprobe.h"

#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

constexpr std::chrono::seconds SendLimit(5);

// Empty if the library can't be loaded; opening the session says why then. A library that passes is tried only once.
QString componentVersion(const QString &component)
{
    const QString path = component.isEmpty() ? defaultComponentPath() : component;
    if (!QFileInfo(path).isFile() || !probeLoading(path).failure.isEmpty())
        return {};
    ComponentLibrary library(path);
    const bool isValid = library.locate() && library.open() && library.check();
    return isValid ? QString::fromUtf8(library.pluginInfo()->pluginVersion) : QString();
}

}

RunRecords::~RunRecords() = default;

QList<QCommandLineOption> RunRecords::options()
{
    return recordsOptions() + identityOptions();
}

bool RunRecords::open(const QCommandLineParser &parser, Default fallback, const RunSaver::Listener &listener,
                      QString *error)
{
    const auto location = readRecordsLocation(parser, error);
    if (!location || !checkIdentity(parser, error))
        return false;
    m_listener = listener;
    m_unit = parser.value(QStringLiteral("unit"));
    m_station = parser.value(QStringLiteral("station"));
    m_operator = parser.value(QStringLiteral("operator"));
    const bool isSaving = !location->isNone() && (!location->isDefault || fallback == Default::Save);
    if (isSaving) {
        m_location = *location;
        m_saver = std::make_unique<RunSaver>(m_location, listener, m_pendingListener, RunForwarder::Pace(),
                                             m_sendingListener);
        m_saver->setSavedListener(m_savedListener);
    }
    if (isSaving || m_runListener)
        m_sessionRuns = std::make_unique<SessionRuns>(m_saver.get(), m_runListener);
    return true;
}

QByteArray RunRecords::beginSession(const Session::Options &device, const QString &unit)
{
    if (!m_sessionRuns && unit.isEmpty() && m_station.isEmpty() && m_operator.isEmpty())
        return {};
    SessionInfo info = newSessionInfo(unit, m_station, m_operator, device.language, device.share);
    info.componentVersion = componentVersion(device.component);
    if (m_sessionRuns)
        m_sessionRuns->begin(info);
    return info.toJsonLine() + '\n';
}

void RunRecords::add(const Journal::Entry &entry)
{
    if (m_sessionRuns)
        m_sessionRuns->add(entry);
}

void RunRecords::endSession()
{
    if (m_sessionRuns)
        m_sessionRuns->end();
}

bool RunRecords::finish()
{
    const int lost = m_saver ? m_saver->finish() : 0;
    if (lost > 0)
        m_listener(lost == 1 ? QStringLiteral("One run could not be saved.")
                             : QStringLiteral("%1 runs could not be saved.").arg(lost));
    if (m_saver && !m_saver->sendPending(SendLimit)) {
        const int pending = m_saver->pending();
        m_listener(pending == 1
                       ? QStringLiteral("One run waits to be sent. It is sent at the next start.")
                       : QStringLiteral("%1 runs wait to be sent. They are sent at the next start.").arg(pending));
    }
    return lost == 0;
}

}
