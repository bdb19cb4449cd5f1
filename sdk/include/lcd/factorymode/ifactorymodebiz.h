#pragma once

namespace LCD::FactoryMode {

/// The service "lcdFactoryModeBiz": is told which test is active. "Biz" marks a class with logic and no widget. Called
/// on the caller's thread.
class IFactoryModeBiz
{
public:
    /// Sets the active single test: 0 screen brightness, 1 screen bad pixel, 2 button light, 6 T-Bar, 9 USB port, 10
    /// net port.
    virtual void setFactoryTestType(int testType) = 0;
    /// Sets the open test page: 0 for the aging test, 1 for the complete machine test.
    virtual void setMachineTestKind(int kind) = 0;

protected:
    ~IFactoryModeBiz() = default;
};

}
