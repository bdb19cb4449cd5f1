#include "records/storereader.h"

#include "records/recordstore.h"

namespace panelhost {

namespace {

// The server knows the runs of other stations, the file those that the server doesn't have yet.
QDateTime lastPassed(const RecordsLocation &location, const QString &unit)
{
    QString error;
    QDateTime passedAt;
    RunFilter filter;
    filter.unit = unit;
    filter.outcome = RunOutcome::Passed;
    const auto take = [&passedAt](const Run &run) {
        if (run.kind == RunKind::Machine && (!passedAt.isValid() || run.endUtc() > passedAt))
            passedAt = run.endUtc();
    };
    if (const auto file = RecordStore::openExisting(location.path, &error))
        file->read(filter, take, &error);
    const auto server = location.server ? RecordStore::openServer(*location.server, &error) : nullptr;
    if (server)
        server->read(filter, take, &error);
    return passedAt;
}

std::optional<TodayFigures> today(const QString &path, int runs)
{
    QString error;
    const auto store = RecordStore::openExisting(path, &error);
    StatisticsQuery query;
    query.since = QDateTime::currentDateTimeUtc().date();
    const auto statistics = store ? readStatistics(*store, query, &error) : std::nullopt;
    if (!statistics)
        return std::nullopt;
    StoreRows rows = store->connection().execute(
        selectRuns()
            + QStringLiteral(" WHERE begin >= ? ORDER BY begin DESC, position DESC, id DESC LIMIT %1").arg(runs),
        {query.since.toString(Qt::ISODate)});
    return TodayFigures{statistics->counts, rows ? readRuns(rows) : QVector<Run>()};
}

}

StoreReader::StoreReader(const RecordsLocation &location) : m_location(location), m_worker(new QObject)
{
    qRegisterMetaType<TodayFigures>();
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
    if (m_location.isNone())
        return;
    QMetaObject::invokeMethod(m_worker, [this, unit] {
        const QDateTime passedAt = lastPassed(m_location, unit);
        if (passedAt.isValid())
            Q_EMIT passedRead(unit, passedAt);
    });
}

void StoreReader::readToday(int runs)
{
    QMetaObject::invokeMethod(m_worker, [this, runs] {
        if (const auto figures = today(m_location.path, runs))
            Q_EMIT todayRead(*figures);
    });
}

}
