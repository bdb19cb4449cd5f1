#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QThread>

namespace panelhost {

/// Reads from the store of runs on a thread of its own, so that no disk holds up the window. A store that isn't there
/// or can't be read has no runs. GUI thread.
class StoreReader : public QObject
{
    Q_OBJECT

public:
    /// @p path is the file of the store; nothing is read if it is empty.
    explicit StoreReader(const QString &path);
    /// Waits for what is being read.
    ~StoreReader() override;

    /// Looks for a complete machine test that @p unit has passed.
    void readPassed(const QString &unit);

Q_SIGNALS:
    /// Emitted if @p unit has passed. @p passedAt is the end of its last such run in UTC.
    void passedRead(const QString &unit, const QDateTime &passedAt);

private:
    const QString m_path;
    QThread m_thread;
    QObject *m_worker; ///< what is called with it runs on the thread
};

}
