#include "window/journalmodel.h"

#include "journal/entrytext.h"
#include "panel/linelist.h"

#include <algorithm>

namespace panelhost {

JournalModel::JournalModel(const Journal &journal, QObject *parent) : QAbstractListModel(parent), m_journal(journal)
{
    for (int kind = int(Journal::Kind::Call); kind <= int(Journal::Kind::Action); ++kind)
        m_kinds.insert(kind);
}

int JournalModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_visible.size());
}

const JournalModel::Line &JournalModel::lineAt(qint64 sequence) const
{
    return m_lines[static_cast<size_t>(sequence - forgotten() - 1)];
}

QVariant JournalModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Line &line = lineAt(m_visible[static_cast<size_t>(index.row())]);
    if (role == Qt::DisplayRole)
        return lineText(line.entry);
    if (role == TextRole)
        return line.text;
    if (role == Qt::ToolTipRole)
        return wrappedToolTip(line.text);
    if (role == SequenceRole)
        return m_visible[static_cast<size_t>(index.row())];
    return role == KindRole ? QVariant(int(line.entry.kind)) : QVariant();
}

// The journal may have discarded lines that were not read yet. Lines before those are not the newest any more.
void JournalModel::poll()
{
    const auto entries = m_journal.entriesFrom(m_nextSequence, PollBudget);
    if (entries.isEmpty())
        return;
    const bool hasGap = entries.first().sequence > m_nextSequence;
    const int surplus = total() + entries.size() - LineLimit;
    forgetOldest(hasGap ? total() : qBound(0, surplus, total()));
    m_nextSequence = entries.first().sequence;
    append(entries);
}

bool JournalModel::matches(const Line &line) const
{
    return m_kinds.contains(int(line.entry.kind))
        && (m_text.isEmpty() || line.text.contains(m_text, Qt::CaseInsensitive));
}

void JournalModel::append(const QVector<Journal::Entry> &entries)
{
    std::vector<qint64> visible;
    for (const Journal::Entry &entry : entries) {
        m_nextSequence = entry.sequence + 1;
        m_lines.push_back({entry.toText(), entry});
        if (matches(m_lines.back()))
            visible.push_back(entry.sequence);
    }
    if (visible.empty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(visible.size()) - 1);
    m_visible.insert(m_visible.end(), visible.begin(), visible.end());
    endInsertRows();
}

void JournalModel::forgetOldest(int count)
{
    const qint64 firstKept = forgotten() + count + 1;
    const auto end = std::lower_bound(m_visible.begin(), m_visible.end(), firstKept);
    const int rows = static_cast<int>(end - m_visible.begin());
    if (rows > 0)
        beginRemoveRows({}, 0, rows - 1);
    m_visible.erase(m_visible.begin(), end);
    m_lines.erase(m_lines.begin(), m_lines.begin() + count);
    if (rows > 0)
        endRemoveRows();
}

void JournalModel::filterAgain()
{
    beginResetModel();
    m_visible.clear();
    for (qint64 sequence = qMax(forgotten(), m_clearedUntil) + 1; sequence < m_nextSequence; ++sequence) {
        if (matches(lineAt(sequence)))
            m_visible.push_back(sequence);
    }
    endResetModel();
}

void JournalModel::clear()
{
    m_clearedUntil = everSeen();
    filterAgain();
}

int JournalModel::rowFrom(qint64 sequence) const
{
    return static_cast<int>(std::lower_bound(m_visible.begin(), m_visible.end(), sequence) - m_visible.begin());
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
