#pragma once

#include "expectations/expectation.h"
#include "journal/journal.h"

namespace panelhost {

/// The properties that ask what crossed the boundary: call, event, signal, log-line.
QStringList journalPropertyNames();
bool isJournalProperty(const QString &property);
QString logLineProperty();

/// The kind of entry that @p property, one of these, asks for.
Journal::Kind journalKind(const QString &property);
/// True if @p entry is what @p expectation, about one of these properties, asks for.
bool matches(const Journal::Entry &entry, const Expectation &expectation);

}
