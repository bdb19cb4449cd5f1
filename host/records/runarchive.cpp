#include "records/runarchive.h"

#include "output/replacefile.h"
#include "records/storefile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

constexpr int ArchiveBatch = 100;

void removeStore(const QString &path)
{
    for (const char *suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + QLatin1String(suffix));
}

bool writeArchive(RecordStore &store, const QVector<QUuid> &ids, const QString &path, QString *error)
{
    const auto archive = RecordStore::open(path, error);
    if (!archive)
        return false;
    for (int first = 0; first < ids.size(); first += ArchiveBatch) {
        const auto runs = store.storedRuns(ids.mid(first, ArchiveBatch), error);
        if (!runs || !archive->saveAll(*runs, RecordStore::Forwarding::None, error))
            return false;
    }
    const qint64 count = archive->count({}, error);
    if (count >= 0 && count != ids.size())
        *error = QStringLiteral("%1 has %2 runs instead of %3.").arg(path).arg(count).arg(ids.size());
    return count == ids.size();
}

}

// The file gets its name when the store has accepted that the runs are deleted, and before it deletes them.
bool moveToArchive(RecordStore &store, const QVector<QUuid> &ids, const QString &path, QString *error)
{
    if (QFileInfo::exists(path)) {
        *error = QStringLiteral("%1 exists; give a new file for the copies.").arg(path);
        return false;
    }
    const QString draft = partialPath(path);
    removeStore(draft); // of a process that was killed
    const auto move = [&](QString *reason) { return moveStoreFile(draft, path, reason); };
    const bool isDone = writeArchive(store, ids, draft, error) && store.remove(ids, move, error);
    removeStore(draft);
    if (isDone || !QFileInfo::exists(path))
        return isDone;
    // They are deleted all or not at all. If the server can't be asked, it may have deleted them.
    QString unknown;
    if (store.run(ids.first(), &unknown))
        *error += QStringLiteral(" No run was deleted.");
    *error += QStringLiteral(" Copies of the runs are in %1.").arg(path);
    return false;
}

}
