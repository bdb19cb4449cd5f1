#pragma once

#include "records/runextractor.h"

class QIODevice;

namespace panelhost {

/// Passes the lines of the journal in @p device to @p extractor. The device must be open; error messages call it
/// @p name. Stops at the first line that isn't a journal line: returns false and sets @p error to a sentence with the
/// line number and what was expected. The runs before that line have been extracted. A last line without line end, as a
/// killed process may leave it, is an error only if it is incomplete.
bool readJournal(QIODevice &device, const QString &name, RunExtractor &extractor, QString *error);

}
