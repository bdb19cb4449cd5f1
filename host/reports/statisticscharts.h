#pragma once

#include "records/statistics.h"

#include <QtCore/QByteArray>

namespace panelhost {

/// A chart of the statistics page.
struct ChartImage
{
    QByteArray png;     ///< with twice as many pixels as on the page in each direction
    QStringList labels; ///< the texts in it as they are shown
};

/// The labels of an axis with numbers.
struct AxisTicks
{
    double least;
    double most;
    int count;    ///< with both ends
    int decimals; ///< that tell the labels apart
};

/// Returns about five round numbers, at least @p minStep apart, of which the first isn't above @p least and the last
/// isn't below @p most. One of them is 0 if the range contains it.
AxisTicks axisTicks(double least, double most, double minStep);

// GUI thread.

/// Returns the numbers of runs of each group, by outcome.
ChartImage runsChart(const Statistics &statistics);
/// Returns the first-pass yield and the final yield of each group that has units.
ChartImage yieldChart(const Statistics &statistics);
/// Returns the phases that have failed, with their cumulative share.
ChartImage paretoChart(const RunCounts &counts);
/// Returns the median and the 90th percentile of the duration of each phase.
ChartImage durationsChart(const QVector<PhaseDuration> &durations);

}
