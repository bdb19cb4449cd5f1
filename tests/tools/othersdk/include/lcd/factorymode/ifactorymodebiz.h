#pragma once
namespace LCD {
namespace FactoryMode {
class IFactoryModeBiz
{
public:
    virtual void setFactoryTestType(int testType) = 0;
    virtual void setMachineTestKind(int kind) = 0;

protected:
    ~IFactoryModeBiz() = default;
};
}
}
