#pragma once

#include "records/runextractor.h"

#include <optional>

class QIODevice;

namespace panelhost {

/// Returns the journal's entry in @p line, an object as Journal::Entry::toJsonLine() writes it. Returns nothing and
/// sets
/// @p error to what was expected if it isn't one.
std::optional<Journal::Entry> entryFromJson(const QJsonObject &line, QString *error);

/// Passes the lines of the journal in @p device to @p extractor. The device must be open; error messages call it @p
/// name. Stops at the first line that isn't a journal line: returns false and sets @p error to a sentence with the line
/// number and what was expected. The runs before that line have been extracted. A killed process may leave a last line
/// without line end. This is an error only if the line is incomplete.
bool readJournal(QIODevice &device, const QString &name, RunExtractor &extractor, QString *error);

}
