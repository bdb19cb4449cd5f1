#pragma once

#include "records/run.h"

#include <QtSql/QSqlDatabase>

#include <functional>
#include <memory>

namespace panelhost {

/// Which runs are asked for. Empty members ask for all.
struct RunFilter
{
    QString unit;
    QDateTime since; ///< begin, UTC
    std::optional<RunOutcome> outcome;
};

/// Runs in an SQLite file. Belongs to the thread that has opened it.
class RecordStore
{
public:
    static constexpr int SchemaVersion = 1;

    enum class Problem {
        None,
        Unusable, ///< damaged, of a newer version, or no store at all: another file may be taken
        Failed    ///< the place or the disk: it may work later
    };

    /// Opens the store at @p path and creates it, with its directory, if there is none. Returns nullptr, with one
    /// sentence in @p error, if that can't be done; a file that can't be used isn't changed.
    static std::unique_ptr<RecordStore> open(const QString &path, QString *error, Problem *problem = nullptr);
    /// The same, but returns nullptr if there is no file.
    static std::unique_ptr<RecordStore> openExisting(const QString &path, QString *error, Problem *problem = nullptr);
    ~RecordStore();
    RecordStore(const RecordStore &) = delete;
    RecordStore &operator=(const RecordStore &) = delete;

    QString path() const { return m_path; }

    /// Saves @p run with @p journal, its part of the journal as lines, in one transaction, and counts its attempt. A
    /// run that is there already stays as it is. Returns false, with one sentence in @p error, if nothing was saved.
    bool save(const Run &run, const QByteArray &journal, QString *error, Problem *problem = nullptr);

    /// Calls @p listener with each run that @p filter lets through, by begin. False, with a sentence, on an error.
    bool read(const RunFilter &filter, const std::function<void(const Run &)> &listener, QString *error) const;
    /// Returns the run; nullopt, with @p error empty, if there is none.
    std::optional<Run> run(const QUuid &id, QString *error) const;
    /// The lines of the journal of a run.
    QByteArray journal(const QUuid &id, QString *error) const;

private:
    RecordStore(const QString &path, const QString &connection);
    bool connect(QString *error, Problem *problem);
    bool insert(const Run &run, const QByteArray &journal, QString *error, Problem *problem);

    QString m_path;
    QString m_connection;
};

}
