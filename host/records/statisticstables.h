#pragma once

#include "records/run.h"

namespace panelhost {

class StoreConnection;

/// Returns @p milliseconds in the precision in which the statistics count durations: 0.1 s, 1 s from 100 s on, and 10 s
/// from 1000 s on.
qint64 roundedDuration(qint64 milliseconds);

/// Adds a run that is new in the store to the tables of statistics. Call it in the transaction that saves the run.
/// Returns false on an error.
bool countRun(StoreConnection &connection, const Run &run);

}
