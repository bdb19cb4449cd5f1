#pragma once

#include "records/run.h"

namespace panelhost {

/// Selects runs. An empty member selects all of them.
struct RunFilter
{
    QString unit;
    QDateTime since; ///< begin, UTC
    std::optional<RunOutcome> outcome;
    QDateTime before = {}; ///< begin, UTC
};

}
