#pragma once

#include "records/storereader.h"

#include <QtWidgets/QDockWidget>

#include <functional>

class QGridLayout;
class QLabel;

namespace panelhost {

/// A dock with the figures of the complete machine tests of today (in UTC) and the last runs of all kinds. They are
/// read on another thread when a run has been saved and when a day begins. GUI thread.
class TodayView : public QDockWidget
{
    Q_OBJECT

public:
    static constexpr int LastRuns = 8;

    /// @p reader must outlive the dock. @p savedCount returns the number of runs that have been saved.
    TodayView(StoreReader &reader, const std::function<int()> &savedCount, QWidget *parent);

    /// Reads the figures again if they may have changed. Costs little otherwise.
    void poll();
    /// Shows @p figures.
    void showFigures(const TodayFigures &figures);

private:
    void setTexts();
    QLabel *addLine(QGridLayout *grid, const QString &name);

    StoreReader &m_reader;
    std::function<int()> m_savedCount;
    QDate m_day;          ///< for which the figures were last read
    int m_seenCount = -1; ///< of saved runs, when the figures were last read
    QLabel *m_firstPass;
    QLabel *m_final;
    QLabel *m_runs;
    QLabel *m_failing;
    QVector<QLabel *> m_captions;
    QVector<QLabel *> m_lastRuns;
};

}
