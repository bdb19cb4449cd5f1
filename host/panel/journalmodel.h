#pragma once

#include "journal/journal.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QSet>

namespace panelhost {

/// The newest lines of a journal that pass a filter. It looks for new ones when poll() is called, a bounded number
/// each time, so that a journal that grows fast never blocks the window. GUI thread.
class JournalModel : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int Kept = 100000;     ///< lines that are remembered
    static constexpr int PollBudget = 4000; ///< lines taken in by one poll()

    enum Role {
        KindRole = Qt::UserRole
    };

    explicit JournalModel(const Journal &journal, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    void poll();
    void setKinds(const QSet<int> &kinds);
    void setText(const QString &text);
    int total() const { return m_lines.size(); }

private:
    struct Line
    {
        QString text;
        int kind;
    };

    bool matches(const Line &line) const;
    void append(const QVector<Journal::Entry> &entries);
    void forgetOldest();
    void filterAgain();

    const Journal &m_journal;
    qint64 m_nextSequence = -1;
    QVector<Line> m_lines;
    qint64 m_forgotten = 0;    ///< lines before m_lines
    QVector<qint64> m_visible; ///< numbers of lines, counted from the first ever
    QSet<int> m_kinds;
    QString m_text;
};

}
