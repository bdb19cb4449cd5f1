#pragma once

#include "journal/journal.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QSet>

#include <deque>

namespace panelhost {

/// A model of the newest lines of a journal that pass a filter. poll() adds new lines, a limited number each time, so
/// that a fast growing journal doesn't block the window. GUI thread.
class JournalModel : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int LineLimit = Journal::DefaultLineLimit; ///< number of lines that are kept
    static constexpr int PollBudget = 4000;                     ///< number of lines added by one poll()

    enum Role {
        KindRole = Qt::UserRole,
        TextRole,    ///< the whole line as text, with the thread
        SequenceRole ///< the number of the line in the journal
    };

    explicit JournalModel(const Journal &journal, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    void poll();
    void setKinds(const QSet<int> &kinds);
    void setText(const QString &text);
    /// Shows only lines that come from now on. The journal keeps the others.
    void clear();
    /// Returns the first row whose sequence number is @p sequence or higher; rowCount() if there is none.
    int rowFrom(qint64 sequence) const;
    /// Returns the number of lines that are kept, visible or not.
    int total() const { return static_cast<int>(m_lines.size()); }
    /// Returns the number of all lines of the journal up to the last poll().
    qint64 everSeen() const { return m_nextSequence - 1; }
    /// Returns the number of lines that are no longer kept.
    qint64 forgotten() const { return everSeen() - total(); }

private:
    struct Line
    {
        QString text; ///< for the filter
        Journal::Entry entry;
    };

    bool matches(const Line &line) const;
    const Line &lineAt(qint64 sequence) const;
    void append(const QVector<Journal::Entry> &entries);
    void forgetOldest(int count);
    void filterAgain();

    const Journal &m_journal;
    qint64 m_nextSequence = 1;
    std::deque<Line> m_lines;     ///< the last one has the sequence m_nextSequence - 1
    std::deque<qint64> m_visible; ///< sequences of lines
    QSet<int> m_kinds;
    QString m_text;
    qint64 m_clearedUntil = 0; ///< the last sequence that isn't shown
};

}
