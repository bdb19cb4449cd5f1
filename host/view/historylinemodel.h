#pragma once

#include "history/sessionhistory.h"

#include <QtCore/QAbstractListModel>

namespace panelhost {

/// The lines of the journal of a session that was played. They are read when they are shown.
class HistoryLineModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// @p history must outlive the model.
    HistoryLineModel(const SessionHistory &history, QObject *parent);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    /// Highlights @p line as the first one that differs from another session; 0 for none.
    void setDifference(qint64 line);

private:
    const SessionHistory &m_history;
    qint64 m_difference = 0;
};

}
