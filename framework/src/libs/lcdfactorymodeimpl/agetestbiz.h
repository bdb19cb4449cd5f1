#pragma once

#include <functional>

#include <QtCore/QString>
#include <QtGui/QColor>

namespace LCD::FactoryModeImpl {

/// The aging test: five single tests in an endless loop, until stop(). It gives no verdict and counts no rounds; what
/// it has to say are text lines. Neither a callback nor an operation of a host service that a step calls may destroy
/// the test.
///
/// Threads: lives on the thread that made it, which has an event loop, and all operations are called there; callbacks
/// may be registered on any thread. Link results arrive on the threads of the port services, and their step is queued
/// to the test's own thread. Both callbacks are called there, inside the step that they tell of.
class AgeTestBiz
{
public:
    AgeTestBiz();
    /// Ends the timers and the listening to the host's services, without the steps of stop(). Waits for link results
    /// that are under way on other threads, which must therefore not wait for this one.
    ~AgeTestBiz();
    AgeTestBiz(const AgeTestBiz &) = delete;
    AgeTestBiz &operator=(const AgeTestBiz &) = delete;

    /// Where the text lines go: an empty text clears the page, any other is a line to add. Takes the place of an
    /// earlier one, and must be set before any of start(), stop() and recount().
    void registerSetAgeTextInfoCallBack(const std::function<void(const QString &, const QColor &)> &callback);
    /// Called when the button light step has ended, before the next one starts. Takes the place of an earlier one; an
    /// empty function ends the calls.
    void registerOnButtonLightFinishedCallback(const std::function<void()> &callback);

    /// Runs from the first step, also when a run is under way. Link results that are still queued are dropped.
    void start();
    /// Ends the run and resets the visual tests. Link results that are still queued are dropped. The last lines stay.
    /// The port tests stay subscribed: a link that changes afterwards sets the loop going again.
    void stop();
    /// Forgets the port failures seen so far and writes the lines anew. The running step goes on.
    void recount();

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(AgeTestBiz) == sizeof(void *));

}
