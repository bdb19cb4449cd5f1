#pragma once

#include <QtCore/QString>

namespace panelhost {

class Faults;

/// What faults of the front panel apply to.
enum class FaultTarget {
    Key,
    Links,
    TBar
};

/// Returns the descriptions of the faults that are on for @p target, one per line. @p halKey is the key.
QString activeFaults(const Faults &faults, FaultTarget target, int halKey = -1);

}
