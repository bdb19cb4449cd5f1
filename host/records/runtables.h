#pragma once

#include "records/run.h"
#include "records/storeconnection.h"

namespace panelhost {

/// A run with its part of the journal, as a store keeps it.
struct StoredRun
{
    Run run;
    QByteArray journal; ///< compressed by qCompress()
};

/// The order of runs in a store. Unique.
struct RunKey
{
    QString begin;
    int position = 0;
    QString id;
};

/// Adds @p stored. A run that already exists isn't changed, and @p isNew is set to false. Returns false on an error.
bool insertRun(StoreConnection &connection, const StoredRun &stored, bool *isNew);

/// Returns the start of a query for readRuns(), to which conditions and an order can be added.
QString selectRuns();
/// Reads the rows of such a query, without the phases, failures, keys and ports. Sets @p last, unless it is nullptr, to
/// the key of the last row.
QVector<Run> readRuns(StoreRows &rows, RunKey *last = nullptr);
/// Adds the phases, failures, keys and ports to @p runs. Returns false on an error.
bool readDetails(StoreConnection &connection, QVector<Run> &runs);

/// Return the texts that are stored.
QString idText(const QUuid &id);
QString timeText(const QDateTime &time);

}
