#pragma once

#include "records/runfilter.h"
#include "records/runtables.h"

#include <functional>
#include <memory>

namespace panelhost {

/// Runs in an SQLite file or on a PostgreSQL server. Belongs to the thread that has opened it.
class RecordStore
{
public:
    static constexpr int SchemaVersion = StoreSchemaVersion;

    enum class Problem {
        None,
        Unusable, ///< damaged, written by a newer panelhost, or no store at all: use another file
        Temporary ///< the directory, the disk or the server: it may work later
    };

    /// Whether a saved run waits to be sent to a server. Only files remember it.
    enum class Forwarding {
        None,
        Pending
    };

    /// Opens the file at @p path and creates it, with its directory, if it doesn't exist. A file of an earlier version
    /// is upgraded. Returns nullptr and sets @p error to a sentence on failure; a file that can't be used isn't
    /// changed.
    static std::unique_ptr<RecordStore> open(const QString &path, QString *error, Problem *problem = nullptr);
    /// Like open(), but returns nullptr if the file doesn't exist.
    static std::unique_ptr<RecordStore> openExisting(const QString &path, QString *error, Problem *problem = nullptr);
    /// Connects to a server. Its tables must have this version.
    static std::unique_ptr<RecordStore> openServer(const ServerAddress &address, QString *error);
    /// Returns true if the server still answers and its tables have this version. Otherwise sets @p error to a
    /// sentence.
    bool checkServer(QString *error);
    RecordStore(const RecordStore &) = delete;
    RecordStore &operator=(const RecordStore &) = delete;

    /// Returns the path of the file, or the address of the server without its password.
    QString path() const { return m_connection->name(); }
    /// For statements for which this class has no function.
    StoreConnection &connection() { return *m_connection; }

    /// Saves @p run with @p journal, its part of the journal as lines, in one transaction. A run that exists stays as
    /// it is. Returns false and sets @p error to a sentence if nothing was saved.
    bool save(const Run &run, const QByteArray &journal, QString *error, Problem *problem = nullptr);
    /// Saves all @p runs in one transaction. Returns false and sets @p error to a sentence if none was saved.
    bool saveAll(const QVector<StoredRun> &runs, Forwarding forwarding, QString *error, Problem *problem = nullptr);

    /// Calls @p listener with each run that @p filter selects, in the order of their start. Returns false and sets @p
    /// error to a sentence on an error. The listener may not use this store.
    bool read(const RunFilter &filter, const std::function<void(const Run &)> &listener, QString *error);
    /// Returns the run; nullopt, with @p error empty, if it doesn't exist.
    std::optional<Run> run(const QUuid &id, QString *error);
    /// Returns the lines of the journal of a run.
    QByteArray journal(const QUuid &id, QString *error);
    /// Returns the runs @p ids with their journals; nullopt on an error, or if one of them doesn't exist.
    std::optional<QVector<StoredRun>> storedRuns(const QVector<QUuid> &ids, QString *error);
    /// Returns the ids of the runs that @p filter selects, without those that wait to be sent; nullopt on an error.
    std::optional<QVector<QUuid>> sentIds(const RunFilter &filter, QString *error);
    /// Deletes the runs @p ids, in one transaction. @p beforeCommit is called when the deletion would succeed; if it
    /// returns false, with a sentence in its argument, nothing is deleted. Returns false and sets @p error to a
    /// sentence if none was deleted.
    bool remove(const QVector<QUuid> &ids, const std::function<bool(QString *error)> &beforeCommit, QString *error);
    /// Returns the number of runs that @p filter selects; -1 on an error.
    qint64 count(const RunFilter &filter, QString *error);
    /// Returns the start of the session that the newest run belongs to; invalid if there is no run or on an error.
    QDateTime latestSessionBegin();

    /// Returns at most @p count of the runs that wait to be sent, in the order in which they were saved; nullopt on an
    /// error. Only for files, like the next two functions.
    std::optional<QVector<StoredRun>> pending(int count, QString *error);
    /// Removes @p runs from the runs that wait to be sent, after they were sent. Returns false and sets @p error to a
    /// sentence if none was removed.
    bool removePending(const QVector<StoredRun> &runs, QString *error);
    /// Returns the number of runs that wait to be sent; -1 on an error.
    int pendingCount(QString *error);

private:
    explicit RecordStore(std::unique_ptr<StoreConnection> connection);
    bool upgrade(QString *error, Problem *problem);
    bool insertAll(const QVector<StoredRun> &runs, Forwarding forwarding);
    bool failed(QString *error, Problem *problem = nullptr) const;
    std::optional<QByteArray> compressedJournal(const QUuid &id, QString *error);

    std::unique_ptr<StoreConnection> m_connection;
};

}
