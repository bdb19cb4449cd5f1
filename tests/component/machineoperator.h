#pragma once

#include "recordinghost.h"

#include <functional>
#include <vector>

/// Does what the operator of the complete machine test and the device do. Works on the caller's thread.
class MachineOperator
{
public:
    MachineOperator(RecordingHost &host, std::function<void()> pressRight);

    /// The hal keys of the key check list, in order: 10, 27, 33.
    static QList<QPair<int, QString>> keys();

    /// Brings @p phase to the point where one press of the right button passes it.
    void bringToVerdict(int phase) const;
    void pressKeys() const;
    void netReport(const std::vector<std::pair<int, bool>> &ports) const;
    void usbReport(const std::vector<RecordingUsb::Node> &nodes) const;

private:
    RecordingHost &m_host;
    std::function<void()> m_pressRight;
};
