#pragma once

#include "records/recordstore.h"

class QCommandLineParser;

namespace panelhost {

/// Opens the existing runs that the options of a command name: a file, or those of a server. Returns nullptr and sets
/// @p error to a sentence if there are none or they can't be read.
std::unique_ptr<RecordStore> openRecords(const QCommandLineParser &parser, QString *error);

}
