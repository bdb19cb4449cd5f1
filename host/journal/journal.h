#pragma once

#include "time/virtualclock.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <deque>
#include <functional>
#include <mutex>

namespace panelhost {

/// Records everything that crosses the component's boundary, in order. Written as one JSON object per line, with the
/// members in this order:
/// {"seq":12,"t":2000,"thread":"gui|device|other","kind":"call|event|signal|log|screen|action","name":"...",
///  "data":{...}}
/// `t` is the virtual time in milliseconds. The content of `data` depends on kind and name. It is left out if it is
/// empty; its members are in alphabetical order. Only the newest entries are kept in memory; a sink gets all of them.
/// Thread-safe.
class Journal
{
public:
    static constexpr int DefaultLineLimit = 100000; ///< number of entries that are kept

    enum class Kind {
        Call,
        Event,
        Signal,
        Log,
        Screen,
        Action
    };

    struct Entry
    {
        qint64 sequence = 0;
        Milliseconds at = 0;
        QString thread;
        Kind kind = Kind::Call;
        QString name;                  ///< such as "lcdKeyboardEvent.setKeyLed"
        QJsonObject data;              ///< arguments, text, or what changed
        QByteArray toJsonLine() const; ///< without line end
        QString toText() const;        ///< one readable line
    };

    static QString kindName(Kind kind);

    /// Called for each new entry on the thread that adds it. Calls come in the order of the sequence numbers and never
    /// at the same time. The function must not use the journal.
    using Sink = std::function<void(const Entry &)>;

    /// Keeps the newest @p lineLimit entries.
    explicit Journal(Sink sink = {}, int lineLimit = DefaultLineLimit) : m_lineLimit(lineLimit), m_sink(std::move(sink))
    {
    }

    void add(Kind kind, const QString &name, const QJsonObject &data = {});
    /// Returns the number of entries that were added since the journal was created.
    qint64 count() const;
    /// Returns the entries that are kept.
    QVector<Entry> entries() const;
    /// Returns the newest @p count entries that are kept.
    QVector<Entry> tail(int count) const;
    /// Returns the first @p count kept entries whose sequence number is @p sequence or higher.
    QVector<Entry> entriesFrom(qint64 sequence, int count) const;
    /// Replaces the sink. The previous one isn't called any more after this returns.
    void setSink(Sink sink);
    /// Returns the entries that are kept, one JSON object per line.
    QByteArray toJsonLines() const;

private:
    QVector<Entry> range(qint64 first, qint64 count) const;

    mutable std::mutex m_mutex;
    const int m_lineLimit;
    std::deque<Entry> m_entries; ///< without gaps; the last one has the number m_count
    qint64 m_count = 0;
    Sink m_sink;
};

}
