#pragma once

#include "playing/scenarioresult.h"
#include "scenario/scenario.h"

namespace panelhost {

/// Returns what a reader of a report has to know about the session of @p scenario, which begins now: date, versions,
/// device and faults. @p session is nullptr if the component couldn't be loaded.
QVector<SessionFact> sessionFacts(const Scenario &scenario, const Session *session);

}
