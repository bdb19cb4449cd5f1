#pragma once

#include "expectations/expectation.h"
#include "journal/journal.h"

namespace panelhost {

/// Returns the properties that are about the journal: call, event, signal and log-line.
QStringList journalPropertyNames();
bool isJournalProperty(const QString &property);
QString logLineProperty();

/// Returns the kind of entries that @p property is about. It must be a journal property.
Journal::Kind journalKind(const QString &property);
/// Returns true if @p entry matches @p expectation, whose property is a journal property.
bool matches(const Journal::Entry &entry, const Expectation &expectation);

}
