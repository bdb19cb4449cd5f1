#include "records/sessionrecorder.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace panelhost {

namespace {

QString configurationHash(const QString &share)
{
    const QString directory =
        share.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/../share") : share;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const char *name : {"factorymenu.xml", "factorykeychecklist.xml"}) {
        QFile file(QDir(directory).filePath(QString::fromLatin1(name)));
        if (file.open(QIODevice::ReadOnly))
            hash.addData(&file);
    }
    return QString::fromLatin1(hash.result().toHex());
}

}

SessionRecorder::SessionRecorder(RunSaver &saver) : m_saver(saver), m_extractor([this](const Run &run) { take(run); })
{
}

void SessionRecorder::begin(const SessionInfo &info)
{
    const std::lock_guard lock(m_mutex);
    m_extractor.beginSession(info);
    m_sessionLine = info.toJsonLine() + '\n';
    m_lines.clear();
}

void SessionRecorder::add(const Journal::Entry &entry)
{
    const std::lock_guard lock(m_mutex);
    m_lines.push_back(entry.toJsonLine() + '\n');
    if (m_lines.size() > MaxLines)
        m_lines.pop_front();
    m_extractor.add(entry);
}

void SessionRecorder::end()
{
    const std::lock_guard lock(m_mutex);
    m_extractor.endSession();
}

// With the lock held.
void SessionRecorder::take(const Run &run)
{
    QByteArray journal = m_sessionLine;
    for (const QByteArray &line : m_lines)
        journal += line;
    m_lines.clear();
    m_saver.save(run, journal);
}

SessionInfo newSessionInfo(const QString &unit, const QString &station, const QString &operatorName,
                           const QString &language, const QString &share)
{
    SessionInfo info;
    info.id = QUuid::createUuid();
    info.begin = QDateTime::currentDateTimeUtc();
    info.unit = unit;
    info.station = station;
    info.operatorName = operatorName;
    info.language = language;
    info.panelhostVersion = QCoreApplication::applicationVersion();
    info.configuration = configurationHash(share);
    return info;
}

}
