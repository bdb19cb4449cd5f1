#pragma once

#include "scenario/result.h"

namespace panelhost {

class JournalTally;
class Session;

/// What becomes of each of @p expectations if it is asked for now. @p tally has counted the journal.
QVector<Outcome> outcomesOf(const Expectations &expectations, Session &session, const JournalTally &tally);
/// True if all of @p outcomes hold.
bool allHold(const QVector<Outcome> &outcomes);

}
