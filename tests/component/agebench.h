#pragma once

#include "agetestbiz.h"
#include "recordinghost.h"

#include <QtCore/QStringList>
#include <QtGui/QColor>

#include <optional>

/// An aging test between recording services. What it writes goes into the same list as what it asks of the services:
/// "clear", "white <text>", "red <text>", and "finished" when the button light step ends.
class AgeBench
{
public:
    AgeBench();

    /// Makes a new test and listens to it.
    void make();
    QStringList take() { return host.calls.take(); }

    /// Ends the step at hand by the clock, from step 0 to the net port step.
    void runBrightness();
    void runBadPixel();
    void runButtonLight();
    void runToNetStep();
    /// A change of the links, as the services deliver it, on this thread.
    void netChanged(const std::vector<std::pair<int, bool>> &ports);
    void usbChanged(const std::vector<RecordingUsb::Node> &nodes);

    RecordingHost host;
    std::optional<LCD::FactoryModeImpl::AgeTestBiz> biz;
};

/// What one ordinary update of the text is: the step's line, and the red one.
QStringList lines(const QString &step, const QString &failures = QStringLiteral(" "));
