#pragma once
#include <any>
#include <functional>
#include <string>
namespace LCD {
namespace FactoryMode {
class IUSB
{
public:
    virtual void registerReportCallback(const std::string &, int, const std::function<void(std::any)> &) = 0;
    virtual void registerChangedCallback(const std::string &, int, const std::function<void(std::any)> &) = 0;

protected:
    ~IUSB() = default;
};
}
}
