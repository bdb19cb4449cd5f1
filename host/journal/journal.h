#pragma once

#include "time/virtualclock.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <deque>
#include <functional>
#include <mutex>

namespace panelhost {

/// Everything that crosses the component's boundary, in order. One JSON object a line, keys in this order:
/// {"seq":12,"t":2000,"thread":"gui|device|other","kind":"call|event|signal|log|screen|action","name":"...",
///  "data":{...}}
/// `t` is in virtual milliseconds. What `data` holds depends on kind and name; it is left out when empty, and its
/// keys stand in alphabetical order. Any thread may add. Only the newest entries are remembered: a sink takes them all.
class Journal
{
public:
    static constexpr int Kept = 100000; ///< entries that are remembered unless told otherwise

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

    /// Called for each new entry on the thread that adds it, in the order of their numbers and never twice at once. It
    /// must not use the journal.
    using Sink = std::function<void(const Entry &)>;

    explicit Journal(Sink sink = {}, int kept = Kept) : m_kept(kept), m_sink(std::move(sink)) {}

    void add(Kind kind, const QString &name, const QJsonObject &data = {});
    /// Number of entries that were ever added.
    qint64 count() const;
    /// The entries that are remembered.
    QVector<Entry> entries() const;
    /// The newest @p count of them.
    QVector<Entry> tail(int count) const;
    /// The first @p count remembered entries whose number is @p sequence or more.
    QVector<Entry> entriesFrom(qint64 sequence, int count) const;
    /// Replaces the sink; it isn't called any more when this returns.
    void setSink(Sink sink);
    /// The remembered entries, one JSON object a line.
    QByteArray toJsonLines() const;

private:
    QVector<Entry> range(qint64 first, qint64 count) const;

    mutable std::mutex m_mutex;
    const int m_kept;
    std::deque<Entry> m_entries; ///< without gaps; the last one has the number m_count
    qint64 m_count = 0;
    Sink m_sink;
};

}
