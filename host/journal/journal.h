#pragma once

#include "time/timeline.h"

#include <QtCore/QJsonObject>
#include <QtCore/QMutex>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <functional>

namespace panelhost {

/// Everything that crosses the component's boundary, in order. One JSON object a line:
/// {"seq":12,"t":2000,"thread":"gui|device|other","kind":"call|event|signal|log|screen|action|note","name":"...", ...}
/// Keys in this order; what else a line holds depends on its kind. Any thread may add.
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

    void add(Kind kind, const QString &name, const QJsonObject &data = {});
    QVector<Entry> entries() const;
    QVector<Entry> tail(int count) const;
    /// Called for each new entry, on the thread that added it.
    void setSink(std::function<void(const Entry &)> sink);
    QByteArray toJsonLines() const;
};

}
