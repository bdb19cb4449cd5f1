#pragma once
#include <QString>
namespace LCD {
namespace FactoryMode {
class IConfig
{
public:
    virtual QString getFactoryTestKeyMode() = 0;

protected:
    ~IConfig() = default;
};
}
}
