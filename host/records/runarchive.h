#pragma once

#include "records/recordstore.h"

namespace panelhost {

/// Moves the runs @p ids of @p store, with their journals, to a new file at @p path, which is a store of its own. The
/// file appears when it is complete and on the disk, and only if the runs may be deleted. Returns false and sets @p
/// error to a sentence if no run was deleted.
bool moveToArchive(RecordStore &store, const QVector<QUuid> &ids, const QString &path, QString *error);

}
