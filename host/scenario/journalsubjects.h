#pragma once

#include "journal/journal.h"
#include "scenario/expectation.h"

namespace panelhost {

/// The subjects that ask what crossed the boundary: call, event, signal, log-line.
QStringList journalSubjectNames();
bool isJournalSubject(const QString &subject);
QString logLineSubject();

/// The kind of entry that @p subject, one of these, asks for.
Journal::Kind journalKind(const QString &subject);
/// True if @p entry is what @p expectation, about one of these subjects, asks for.
bool isAskedFor(const Journal::Entry &entry, const Expectation &expectation);

}
