#include "records/openrecords.h"

#include "records/recordsoptions.h"

namespace panelhost {

std::unique_ptr<RecordStore> openRecords(const QCommandLineParser &parser, QString *error)
{
    const auto location = readRecordsLocation(parser, error);
    if (!location)
        return nullptr;
    if (location->isNone()) {
        *error = QStringLiteral("There are no run records: --records or PANELHOST_RECORDS is none.");
        return nullptr;
    }
    return location->server ? RecordStore::openServer(*location->server, error)
                            : RecordStore::openExisting(location->path, error);
}

}
