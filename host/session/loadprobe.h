#pragma once

#include "component/componentlibrary.h"

namespace panelhost {

/// The result of loading a component in a separate process.
struct LoadReport
{
    QList<LoadStep> steps;
    QString failure; ///< empty if the process ended normally, even if the component isn't valid
};

/// How long loading a component may take, in real milliseconds.
constexpr int MaxLoadTime = 20000;

/// Loads the component at @p component in a process of its own first, with services and all, and after it the repair
/// mode's @p pages, if given: then the report is on them. A library that crashes, hangs or
/// ends its process does so there, and the report says in which call. One that did well isn't loaded a second time in
/// that way. The report is empty, too, if no process can be started. GUI thread.
LoadReport probeLoading(const QString &component, const QString &pages = {}, int timeout = MaxLoadTime);

/// Loads the library and ends the process if probeLoading() has started it; does nothing in any other process. Call it
/// before the application object is made and after VirtualClock::install().
void runAsProbe();

}
