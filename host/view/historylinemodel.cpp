#include "view/historylinemodel.h"

#include "journal/entrytext.h"
#include "panel/linelist.h"
#include "panel/windowtheme.h"

#include <QtGui/QFont>

namespace panelhost {

HistoryLineModel::HistoryLineModel(const SessionHistory &history, QObject *parent)
    : QAbstractListModel(parent), m_history(history)
{
}

int HistoryLineModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_history.lineCount());
}

static QFont boldFont()
{
    QFont font;
    font.setBold(true);
    return font;
}

QVariant HistoryLineModel::data(const QModelIndex &index, int role) const
{
    const qint64 line = index.row() + 1;
    if (!index.isValid() || line > m_history.lineCount())
        return {};
    if (role == Qt::ForegroundRole && line == m_difference)
        return QColor(theme::colors().red);
    if (role == Qt::FontRole && line == m_difference)
        return boldFont(); // is seen in a selected line, too
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const auto entry = m_history.entry(line);
    if (!entry)
        return {};
    return role == Qt::DisplayRole ? lineText(*entry) : wrappedToolTip(entry->toText());
}

void HistoryLineModel::setDifference(qint64 line)
{
    m_difference = line;
    if (line > 0)
        Q_EMIT dataChanged(index(static_cast<int>(line) - 1), index(static_cast<int>(line) - 1));
}

}
