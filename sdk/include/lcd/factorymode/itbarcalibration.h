#pragma once

#include "lcd/protocol/records.h"

#include <functional>
#include <string>

namespace LCD::FactoryMode {

/// The service "lcdTBarCalibration": calibrates the T-Bar. It may deliver results and reports on any thread.
class ITBarCalibration
{
public:
    /// Sends a calibration command. @p result is called with true if it succeeded, else with false and a message.
    virtual void setBarCalibration(const LCD::ProtocolImpl::s_BarCalibration &command,
                                   const std::function<void(bool ok, const std::string &message)> &result) = 0;
    /// Registers @p callback for calibration reports. A second registration with the same name replaces the first.
    virtual void registerBarCalibrationCallback(
        const std::string &subscriber,
        const std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> &callback) = 0;

protected:
    ~ITBarCalibration() = default;
};

}
