#pragma once

#include "journal/journal.h"
#include "lcd/factorymode/ifactorymodebiz.h"

namespace panelhost {

class Device;

/// Service "lcdFactoryModeBiz": tells the device which test is running.
class FactoryModeBizService final : public LCD::FactoryMode::IFactoryModeBiz
{
public:
    FactoryModeBizService(Device &device, Journal &journal) : m_device(device), m_journal(journal) {}

    void setFactoryTestType(int testType) override;
    void setMachineTestKind(int kind) override;

private:
    Device &m_device;
    Journal &m_journal;
};

}
