#include "records/openrecords.h"

#include "records/recordsplace.h"

namespace panelhost {

std::unique_ptr<RecordStore> openRecords(const QCommandLineParser &parser, QString *error)
{
    const auto place = readRecordsPlace(parser, error);
    if (!place)
        return nullptr;
    if (place->isNone()) {
        *error = QStringLiteral("There are no run records: --records or PANELHOST_RECORDS is none.");
        return nullptr;
    }
    return place->server ? RecordStore::openServer(*place->server, error)
                         : RecordStore::openExisting(place->path, error);
}

}
