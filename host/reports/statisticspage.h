#pragma once

class QByteArray;

namespace panelhost {

struct Statistics;

/// Returns a self-contained HTML page with charts and tables. @p byPeriod is grouped by day, week or month, @p
/// byStation by station; both are about the same runs. GUI thread.
QByteArray statisticsPage(const Statistics &byPeriod, const Statistics &byStation);

}
