#pragma once

namespace LCD::FactoryMode {

/// Service "lcdFactoryModeBiz": what the device knows of the test under way. Called on the caller's thread.
class IFactoryModeBiz
{
public:
    /// 0 screen brightness, 1 screen bad pixel, 2 button light, 6 T-Bar, 9 USB port, 10 net port.
    virtual void setFactoryTestType(int testType) = 0;
    /// 0 for the aging page, 1 for the complete machine page.
    virtual void setMachineTestKind(int kind) = 0;

protected:
    ~IFactoryModeBiz() = default;
};

}
