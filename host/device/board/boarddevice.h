#pragma once

#include "device/board/boardinputs.h"
#include "device/board/boardoutputs.h"
#include "device/simulated/simulateddevice.h"

namespace panelhost {

/// A Linux board as a device. A simulated device holds its state and replaces the parts that the profile declares as
/// simulated. What the component sets is passed on to the hardware. What the hardware reports is passed to the handler;
/// the state changes when it is performed as an operator action. Therefore each change has a virtual time, and the
/// performed actions are a recording of the hardware. It must be destroyed on the GUI thread.
class BoardDevice final : public Device
{
public:
    BoardDevice(const BoardConfiguration &board, const SimulatedDevice::Configuration &configuration,
                VirtualClock &clock, const Faults &faults, const HardwareHandler &handler);
    ~BoardDevice() override;

    /// Opens the hardware. Returns false and sets @p error to a sentence with the reason and the remedy if a part isn't
    /// there.
    bool start(QString *error);

    DeviceState state() const override { return m_model.state(); }
    void setKeyLed(int halKey, const KeyLed &led) override;
    void setAllKeyBrightness(int level) override;
    void setScreenBrightness(int screen, int level) override;
    void setTestPattern(int type, int index) override { m_model.setTestPattern(type, index); }
    void setPatternLevel(int level) override { m_model.setPatternLevel(level); }
    void setPanelMode(int mode) override { m_model.setPanelMode(mode); }
    void setTestType(int type) override { m_model.setTestType(type); }
    void setMachineTestKind(int kind) override { m_model.setMachineTestKind(kind); }
    void setFactoryMode(bool active) override;
    void calibrate(int command, const std::function<void(bool, const std::string &)> &result) override;
    bool setKeyDown(int halKey, bool down) override { return m_model.setKeyDown(halKey, down); }
    void setTBarPosition(double position) override { m_model.setTBarPosition(position); }
    bool setPlugged(const QString &port, bool plugged) override { return m_model.setPlugged(port, plugged); }
    bool setBlocked(const QString &port, bool blocked) override { return m_model.setBlocked(port, blocked); }
    bool setPortSpeed(const QString &port, double speed) override { return m_model.setPortSpeed(port, speed); }
    bool finishCalibration(int command, bool ok, const QString &message) override;
    bool setPartPresent(const QString &part, bool present) override { return m_model.setPartPresent(part, present); }
    void setKeyListener(KeyListener listener) override { m_model.setKeyListener(std::move(listener)); }
    void setNetListener(LinkListener changed) override { m_model.setNetListener(std::move(changed)); }
    void setUsbListener(LinkListener changed) override { m_model.setUsbListener(std::move(changed)); }
    void setCalibrationListener(CalibrationListener listener) override
    {
        m_model.setCalibrationListener(std::move(listener));
    }
    std::any netReport() const override { return m_model.netReport(); }
    std::any usbReport() const override { return m_model.usbReport(); }

private:
    SimulatedDevice m_model;
    const bool m_hasRealTBar;
    BoardOutputs m_outputs;
    BoardInputs m_inputs;
};

}
