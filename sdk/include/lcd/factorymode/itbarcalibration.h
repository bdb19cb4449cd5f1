#pragma once

#include "lcd/protocol/records.h"

#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// Service "lcdTBarCalibration". Results and reports may arrive on a thread of the service's own.
class ITBarCalibration
{
public:
    /// Sends one calibration command; @p result hears whether it worked, and a message.
    virtual void setBarCalibration(const LCD::ProtocolImpl::s_BarCalibration &command,
                                   const std::function<void(bool ok, const std::string &message)> &result) = 0;
    /// Subscribes @p subscriber to reports; a second registration under one name replaces the first.
    virtual void registerBarCalibrationCallback(
        const std::string &subscriber,
        const std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> &callback) = 0;

protected:
    ~ITBarCalibration() = default;
};

}
