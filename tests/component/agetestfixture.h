#pragma once

#include "agetestbiz.h"
#include "recordinghost.h"

#include <QtCore/QMetaType>
#include <QtCore/QStringList>
#include <QtGui/QColor>

#include <functional>
#include <optional>

/// An aging test with recording services. Its text lines and its calls to the services are recorded in the same list:
/// "clear", "white <text>", "red <text>", and "finished" when the button light step ends.
class AgeTestFixture
{
public:
    AgeTestFixture();

    /// Creates a new test and registers listeners with it.
    void make();
    QStringList take() { return host.calls.take(); }

    /// Advances the clock to the end of the current step, from step 0 to the net port step.
    void runBrightness();
    void runBadPixel();
    void runButtonLight();
    void runToNetStep();
    /// Delivers a changed event of the service on this thread.
    void netChanged(const std::vector<std::pair<int, bool>> &ports);
    void usbChanged(const std::vector<RecordingUsb::Node> &nodes);

    RecordingHost host;
    std::optional<LCD::FactoryModeImpl::AgeTestBiz> biz;
};

/// Returns the calls of a normal update of the text: the line of the step and the red line.
QStringList lines(const QString &step, const QString &failures = QStringLiteral(" "));

// An operation as the data of a test.
Q_DECLARE_METATYPE(std::function<void(LCD::FactoryModeImpl::AgeTestBiz &)>)
