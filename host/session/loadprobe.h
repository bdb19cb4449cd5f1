#pragma once

#include "component/componentlibrary.h"

#include <functional>

namespace panelhost {

/// The result of loading a component in a separate process.
struct LoadReport
{
    QList<LoadStep> steps;
    QString failure; ///< empty if the process ended normally, even if the component isn't valid
};

/// How long loading a component may take, in real milliseconds.
constexpr int MaxLoadTime = 20000;

/// Loads a library and tells the observer what it does.
using ProbeLoad = std::function<void(const LoadObserver &)>;

/// Loads the library @p component in a separate process, with all services. If @p pages isn't empty, the process
/// then loads this library of the repair mode. In this case the report is about @p pages. If a library crashes, hangs
/// or ends the process, the report says in which call. A library that was loaded without a failure isn't tried again.
/// The report is also empty if no process can be started. GUI thread.
///
/// The separate process is a copy of this one, or a new one if this process has other threads. In a copy, @p load loads
/// the library, unless it is empty.
LoadReport probeLoading(const QString &component, const QString &pages = {}, const ProbeLoad &load = {},
                        int timeout = MaxLoadTime);

/// Loads the library and ends the process if probeLoading() has started it anew; does nothing in any other process.
/// Call it before the application object is made and after VirtualClock::install().
void runAsProbe();

}
