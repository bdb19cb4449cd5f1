#include "panel/journalmodel.h"

#include <algorithm>

namespace panelhost {

constexpr int ForgetChunk = JournalModel::Kept / 10;

JournalModel::JournalModel(const Journal &journal, QObject *parent) : QAbstractListModel(parent), m_journal(journal)
{
    for (int kind = int(Journal::Kind::Call); kind <= int(Journal::Kind::Note); ++kind)
        m_kinds.insert(kind);
}

int JournalModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_visible.size();
}

QVariant JournalModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_visible.size())
        return {};
    const Line &line = m_lines[static_cast<int>(m_visible[index.row()] - m_forgotten)];
    if (role == Qt::DisplayRole)
        return line.text;
    return role == KindRole ? QVariant(line.kind) : QVariant();
}

void JournalModel::poll()
{
    const auto newest = m_journal.tail(1);
    if (newest.isEmpty())
        return;
    const qint64 missing = newest.first().sequence - m_nextSequence + 1;
    if (m_nextSequence >= 0 && missing <= 0)
        return;
    const int wanted = m_nextSequence < 0 ? Kept : static_cast<int>(qMin<qint64>(missing, Kept));
    append(m_journal.tail(wanted).mid(0, PollBudget));
}

bool JournalModel::matches(const Line &line) const
{
    return m_kinds.contains(line.kind) && (m_text.isEmpty() || line.text.contains(m_text, Qt::CaseInsensitive));
}

void JournalModel::append(const QVector<Journal::Entry> &entries)
{
    QVector<qint64> visible;
    for (const Journal::Entry &entry : entries) {
        if (entry.sequence < m_nextSequence)
            continue;
        m_nextSequence = entry.sequence + 1;
        m_lines.append({entry.toText(), int(entry.kind)});
        if (matches(m_lines.last()))
            visible.append(m_forgotten + m_lines.size() - 1);
    }
    if (!visible.isEmpty()) {
        beginInsertRows({}, m_visible.size(), m_visible.size() + visible.size() - 1);
        m_visible += visible;
        endInsertRows();
    }
    if (m_lines.size() > Kept + ForgetChunk)
        forgetOldest();
}

void JournalModel::forgetOldest()
{
    const int surplus = m_lines.size() - Kept;
    const qint64 first = m_forgotten + surplus;
    const auto end = std::lower_bound(m_visible.cbegin(), m_visible.cend(), first);
    const int rows = static_cast<int>(end - m_visible.cbegin());
    if (rows > 0)
        beginRemoveRows({}, 0, rows - 1);
    m_visible.remove(0, rows);
    m_lines.remove(0, surplus);
    m_forgotten = first;
    if (rows > 0)
        endRemoveRows();
}

void JournalModel::filterAgain()
{
    beginResetModel();
    m_visible.clear();
    for (int i = 0; i < m_lines.size(); ++i)
        if (matches(m_lines[i]))
            m_visible.append(m_forgotten + i);
    endResetModel();
}

void JournalModel::setKinds(const QSet<int> &kinds)
{
    m_kinds = kinds;
    filterAgain();
}

void JournalModel::setText(const QString &text)
{
    m_text = text;
    filterAgain();
}

}
