#include "records/storereader.h"

#include "records/recordstore.h"

namespace panelhost {

namespace {

QDateTime lastPassed(const QString &path, const QString &unit)
{
    QString error;
    QDateTime passedAt;
    const auto store = RecordStore::openExisting(path, &error);
    RunFilter filter;
    filter.unit = unit;
    filter.outcome = RunOutcome::Passed;
    const auto take = [&passedAt](const Run &run) {
        if (run.kind == RunKind::Machine)
            passedAt = run.endUtc();
    };
    if (store)
        store->read(filter, take, &error);
    return passedAt;
}

}

StoreReader::StoreReader(const QString &path) : m_path(path), m_worker(new QObject)
{
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.start();
}

StoreReader::~StoreReader()
{
    m_thread.quit();
    m_thread.wait();
}

void StoreReader::readPassed(const QString &unit)
{
    if (m_path.isEmpty())
        return;
    QMetaObject::invokeMethod(m_worker, [this, unit] {
        const QDateTime passedAt = lastPassed(m_path, unit);
        if (passedAt.isValid())
            Q_EMIT passedRead(unit, passedAt);
    });
}

}
