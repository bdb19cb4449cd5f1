#pragma once

#include "records/runextractor.h"

class QIODevice;

namespace panelhost {

/// Feeds @p extractor with the lines of the journal @p device, which is open and named @p name in errors. Returns
/// false, with one sentence in @p error that names the line and what was expected, at the first line that isn't one of
/// a journal; the runs before it have been derived by then. A last line without an end, as a killed process leaves it,
/// is an error only if it isn't whole.
bool readJournal(QIODevice &device, const QString &name, RunExtractor &extractor, QString *error);

}
