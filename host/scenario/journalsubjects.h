#pragma once

#include "journal/journal.h"
#include "scenario/expectation.h"

namespace panelhost {

/// The subjects that ask what crossed the boundary: call, event, signal, log-line.
QStringList journalSubjectNames();
bool isJournalSubject(const QString &subject);
QString logLineSubject();

/// How many of @p entries are what @p expectation asks for.
int countMatches(const QVector<Journal::Entry> &entries, const Expectation &expectation);

}
