#pragma once

#include "journal/journal.h"
#include "lcd/factorymode/itbarcalibration.h"

#include <map>
#include <memory>
#include <mutex>

namespace panelhost {

class Device;

/// Service "lcdTBarCalibration". Each command is a step of the device's calibration. Callbacks for results and progress
/// (in percent) are called on the device's thread.
class TBarCalibrationService final : public LCD::FactoryMode::ITBarCalibration
{
public:
    TBarCalibrationService(Device &device, Journal &journal);

    void setBarCalibration(const LCD::ProtocolImpl::s_BarCalibration &command,
                           const std::function<void(bool, const std::string &)> &result) override;
    void registerBarCalibrationCallback(
        const std::string &subscriber,
        const std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)> &callback) override;

private:
    void onProgress(int command, int percent);

    Device &m_device;
    Journal &m_journal;
    std::mutex m_mutex;
    std::map<std::string, std::function<void(const LCD::ProtocolImpl::s_BarCalibration &)>> m_subscribers;
};

}
