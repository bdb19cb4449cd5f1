#pragma once

#include "recordinghost.h"

#include <functional>
#include <vector>

/// What the operator of the complete machine test and the device under test do, on the caller's thread.
class MachineOperator
{
public:
    MachineOperator(RecordingHost &host, std::function<void()> pressRight);

    /// The keys of the check list, in its order: 10, 27, 33.
    static QList<QPair<int, QString>> keys();

    /// Does what is to be done in @p phase until one press of the right button is left to pass it.
    void bringToVerdict(int phase) const;
    void pressKeys() const;
    void netReport(const std::vector<std::pair<int, bool>> &ports) const;
    void usbReport(const std::vector<RecordingUsb::Node> &nodes) const;

private:
    RecordingHost &m_host;
    std::function<void()> m_pressRight;
};
