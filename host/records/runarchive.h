#pragma once

#include "records/recordstore.h"

namespace panelhost {

/// Copies the runs @p ids of @p store, with their journals, to a new file at @p path, which is a store of its own. The
/// file appears only when it is complete and on the disk. Returns false and sets @p error to a sentence on failure.
bool archiveRuns(RecordStore &store, const QVector<QUuid> &ids, const QString &path, QString *error);

}
