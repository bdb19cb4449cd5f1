#pragma once

#include "scenario/result.h"

namespace panelhost {

class Session;

/// What becomes of each of @p expectations if it is asked for now. Entries of the journal count from @p mark on.
QVector<Outcome> outcomesOf(const Expectations &expectations, Session &session, int mark);
/// True if all of @p outcomes hold.
bool allHold(const QVector<Outcome> &outcomes);

}
