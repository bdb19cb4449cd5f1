#pragma once

#include "time/timeline.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <functional>
#include <mutex>

namespace panelhost {

/// Everything that crosses the component's boundary, in order. One JSON object a line, keys in this order:
/// {"seq":12,"t":2000,"thread":"gui|device|other","kind":"call|event|signal|log|screen|action|note","name":"...",
///  "data":{...}}
/// `t` is in virtual milliseconds. What `data` holds depends on kind and name; it is left out when empty, and its
/// keys stand in alphabetical order. Any thread may add.
class Journal
{
public:
    enum class Kind {
        Call,
        Event,
        Signal,
        Log,
        Screen,
        Action,
        Note
    };

    struct Entry
    {
        qint64 sequence = 0;
        Instant at = 0;
        QString thread;
        Kind kind = Kind::Note;
        QString name;                  ///< such as "lcdKeyboardEvent.setKeyLed"
        QJsonObject data;              ///< arguments, text, or what changed
        QByteArray toJsonLine() const; ///< without line end
        QString toText() const;        ///< one readable line
    };

    static QString kindName(Kind kind);

    void add(Kind kind, const QString &name, const QJsonObject &data = {});
    QVector<Entry> entries() const;
    QVector<Entry> tail(int count) const;
    /// Called for each new entry, on the thread that added it.
    void setSink(std::function<void(const Entry &)> sink);
    QByteArray toJsonLines() const;

private:
    mutable std::mutex m_mutex;
    QVector<Entry> m_entries;
    std::function<void(const Entry &)> m_sink;
};

}
