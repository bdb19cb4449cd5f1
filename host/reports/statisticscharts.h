#pragma once

#include "records/statistics.h"

class QByteArray;

namespace panelhost {

// The charts of the statistics page, as PNG files with twice as many pixels as on the page in each direction. GUI
// thread.

/// Returns the numbers of runs of each group, by outcome.
QByteArray runsChart(const Statistics &statistics);
/// Returns the first-pass yield and the final yield of each group that has units.
QByteArray yieldChart(const Statistics &statistics);
/// Returns the phases that have failed, with their cumulative share.
QByteArray paretoChart(const RunCounts &counts);
/// Returns the median and the 90th percentile of the duration of each phase.
QByteArray durationsChart(const QVector<PhaseDuration> &durations);

}
