#pragma once
#include "lcd/protocol/records.h"
#include <functional>
#include <string>
namespace LCD {
namespace FactoryMode {
class ITBarCalibration
{
public:
    virtual void setBarCalibration(const LCD::ProtocolImpl::s_BarCalibration &,
                                   const std::function<void(bool, const std::string &)> &) = 0;
    virtual void
    registerBarCalibrationCallback(const std::string &,
                                   const std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> &) = 0;

protected:
    ~ITBarCalibration() = default;
};
}
}
