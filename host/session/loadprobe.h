#pragma once

#include "component/componentlibrary.h"

namespace panelhost {

/// What became of a component that was loaded in a process of its own.
struct LoadReport
{
    QList<LoadStep> steps;
    QString failure; ///< empty if the process came to its end, whether or not the component was as it should be
};

/// How long a component may take to be loaded, in milliseconds of the wall clock.
constexpr int MaxLoadTime = 20000;

/// Loads the component at @p component in a process of its own first, with services and all, and after it the repair
/// mode's @p pages, if given: then the report is on them. A library that crashes, hangs or
/// ends its process does so there, and the report says in which call. One that did well isn't loaded a second time in
/// that way. The report is empty, too, if no process can be started. GUI thread.
LoadReport probeLoading(const QString &component, const QString &pages = {}, int timeout = MaxLoadTime);

/// Does what probeLoading() started this process for, and ends it; returns at once in any other process. Called before
/// there is an application object, after VirtualClock::install().
void runAsProbe();

}
