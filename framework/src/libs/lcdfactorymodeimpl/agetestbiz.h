#pragma once

#include <functional>

#include <QtCore/QString>
#include <QtGui/QColor>

namespace LCD::FactoryModeImpl {

/// The driver of the aging test: runs five single tests in a loop until stop(). It gives no verdict and counts no
/// rounds. Its only output is text lines. The test must not be deleted by one of its callbacks, or by an operation of a
/// host service that a step calls.
///
/// Threads: call all operations on the thread that created the object, which needs an event loop. Callbacks may be
/// registered on any thread. Link results arrive on the threads of the port services; the next step is queued to the
/// test's own thread. Both callbacks are called on the test's own thread, during the step.
class AgeTestBiz
{
public:
    AgeTestBiz();
    /// Stops the timers and ignores later events of the host's services, but doesn't do what stop() does. Waits for
    /// link results that are being handled on other threads. These threads therefore must not wait for this thread.
    ~AgeTestBiz();
    AgeTestBiz(const AgeTestBiz &) = delete;
    AgeTestBiz &operator=(const AgeTestBiz &) = delete;

    /// Sets the callback for the text lines and replaces an earlier one. An empty text clears the page, any other text
    /// is a line to add. Set it before start(), stop() and recount().
    void registerSetAgeTextInfoCallBack(const std::function<void(const QString &, const QColor &)> &callback);
    /// Sets the callback that is called after the button light step, before the next step starts. It replaces an
    /// earlier one; an empty function removes it.
    void registerOnButtonLightFinishedCallback(const std::function<void()> &callback);

    /// Starts a run at the first step, even if one is in progress. Link results that are still queued are handled
    /// later, as part of this run.
    void start();
    /// Ends the run and resets the visual tests. The last lines remain. The port tests stay subscribed, so a later link
    /// change starts the loop again, and so does a link result that is still queued.
    void stop();
    /// Clears the recorded port failures and writes the lines again. The current step continues.
    void recount();

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(AgeTestBiz) == sizeof(void *));

}
