#pragma once

#include "records/run.h"

namespace panelhost {

/// Which runs are asked for. Empty members ask for all.
struct RunFilter
{
    QString unit;
    QDateTime since; ///< begin, UTC
    std::optional<RunOutcome> outcome;
    QDateTime before = {}; ///< begin, UTC
};

}
