#include "records/runrecording.h"

namespace panelhost {

RunRecording::~RunRecording() = default;

QList<QCommandLineOption> RunRecording::options()
{
    return recordsOptions() + identityOptions();
}

bool RunRecording::open(const QCommandLineParser &parser, Default fallback, const RunSaver::Listener &listener,
                        QString *error)
{
    const auto place = readRecordsPlace(parser, error);
    if (!place)
        return false;
    m_listener = listener;
    m_unit = parser.value(QStringLiteral("unit"));
    m_station = parser.value(QStringLiteral("station"));
    m_operator = parser.value(QStringLiteral("operator"));
    if (place->isNone() || (place->isDefault && fallback == Default::DoNotSave))
        return true;
    m_saver = std::make_unique<RunSaver>(place->path, listener);
    m_recorder = std::make_unique<SessionRecorder>(*m_saver);
    return true;
}

QByteArray RunRecording::beginSession(const QString &language, const QString &share)
{
    if (!m_recorder && m_unit.isEmpty() && m_station.isEmpty() && m_operator.isEmpty())
        return {};
    const SessionInfo info = newSessionInfo(m_unit, m_station, m_operator, language, share);
    if (m_recorder)
        m_recorder->begin(info);
    return info.toJsonLine() + '\n';
}

void RunRecording::add(const Journal::Entry &entry)
{
    if (m_recorder)
        m_recorder->add(entry);
}

void RunRecording::endSession()
{
    if (m_recorder)
        m_recorder->end();
}

bool RunRecording::finish()
{
    const int lost = m_saver ? m_saver->finish() : 0;
    if (lost > 0)
        m_listener(lost == 1 ? QStringLiteral("One run could not be saved.")
                             : QStringLiteral("%1 runs could not be saved.").arg(lost));
    return lost == 0;
}

}
