#pragma once

#include "records/recordsoptions.h"
#include "records/statistics.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QThread>

namespace panelhost {

/// What happened on one day.
struct TodayFigures
{
    RunCounts counts;      ///< of the complete machine tests
    QVector<Run> lastRuns; ///< of all kinds, the last one first; without details
};

/// Reads from the store of runs on a thread of its own, so that a slow disk doesn't block the window. A store that
/// isn't there or can't be read has no runs. GUI thread.
class StoreReader : public QObject
{
    Q_OBJECT

public:
    explicit StoreReader(const RecordsLocation &location);
    /// Waits for what is being read.
    ~StoreReader() override;

    /// Looks for a complete machine test that @p unit has passed. If there is a server, the test may be from any
    /// station.
    void readPassed(const QString &unit);
    /// Reads the figures of today, in UTC, from the file, with the last @p runs runs.
    void readToday(int runs);

Q_SIGNALS:
    /// Emitted if @p unit has passed. @p passedAt is the end of its last such run in UTC.
    void passedRead(const QString &unit, const QDateTime &passedAt);
    /// Emitted when the figures of today were read.
    void todayRead(const panelhost::TodayFigures &figures);

private:
    const RecordsLocation m_location;
    QThread m_thread;
    QObject *m_worker; ///< what is called with it runs on the thread
};

}

Q_DECLARE_METATYPE(panelhost::TodayFigures)
