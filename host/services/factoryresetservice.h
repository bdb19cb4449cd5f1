#pragma once

#include "journal/journal.h"
#include "lcd/repairmode/ifactoryreset.h"

namespace panelhost {

class Device;

/// Service "lcdFactoryReset" for a device.
class FactoryResetService final : public LCD::RepairMode::IFactoryReset
{
public:
    FactoryResetService(Device &device, Journal &journal) : m_device(device), m_journal(journal) {}

    void resetDevice(const Listener &listener) override;

private:
    Device &m_device;
    Journal &m_journal;
};

}
