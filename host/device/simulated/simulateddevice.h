#pragma once

#include "device/device.h"

#include <memory>
#include <mutex>

namespace panelhost {

class Faults;
class VirtualClock;

/// A simulated device with keys, screens, T-Bar and ports. Its listeners are called on the device thread of the virtual
/// clock. It must be destroyed on the GUI thread; what it has scheduled does nothing after that.
class SimulatedDevice final : public Device
{
public:
    static constexpr int DefaultLinkDelay = 20;

    struct Configuration
    {
        QList<KeyState> keys;
        TBarType tbarType = TBarType::Slider;
        double tbarTolerance = TBarState::DefaultTolerance;
        int netPorts = 4;
        int usbPorts = 4;
        int linkDelay = DefaultLinkDelay; ///< virtual milliseconds from the plug to the changed link
        /// The results of calibration steps come through finishCalibration(): they were recorded or are measured by a
        /// board.
        bool hasCalibrationResults = false;
    };

    SimulatedDevice(const Configuration &configuration, VirtualClock &clock, const Faults &faults);
    ~SimulatedDevice() override;

    DeviceState state() const override;
    void setKeyLed(int halKey, const KeyLed &led) override;
    void setAllKeyBrightness(int level) override;
    void setScreenBrightness(int screen, int level) override;
    void setTestPattern(int type, int index) override;
    void setPatternLevel(int level) override;
    void setPanelMode(int mode) override;
    void setTestType(int type) override;
    void setMachineTestKind(int kind) override;
    void setFactoryMode(bool active) override;
    void calibrate(int command, const std::function<void(bool, const std::string &)> &result) override;
    void resetToFactoryState(const std::function<void(bool, const std::string &)> &result) override;
    bool setKeyDown(int halKey, bool down) override;
    void setTBarPosition(double position) override;
    bool setPlugged(const QString &port, bool plugged) override;
    bool setBlocked(const QString &port, bool blocked) override;
    bool setPortSpeed(const QString &port, double speed) override;
    bool finishCalibration(int command, bool ok, const QString &message) override;
    bool setPartPresent(const QString &part, bool present) override;
    void setKeyListener(KeyListener listener) override;
    void setNetListener(LinkListener changed) override;
    void setUsbListener(LinkListener changed) override;
    void setCalibrationListener(CalibrationListener listener) override;
    std::any netReport() const override;
    std::any usbReport() const override;

private:
    class Work;

    // One calibration step that waits for its answer.
    struct Calibration
    {
        int command;
        int step;        // counted from 1, the one that begins
        int run;         // number of the calibration that it belongs to
        QString problem; // why it fails regardless of faults
        bool hasFailed;  // fails regardless of faults
        std::function<void(bool ok, const std::string &message)> result;
    };

    template <class Change>
    auto change(Change &&change);
    void later(int delay, void (SimulatedDevice::*event)(int, int), int first, int second);
    bool changePort(const QString &name, bool PortState::*field, bool value);
    void sendKey(int halKey, int down);
    void sendNet(int, int);
    void sendUsb(int, int);
    void sendCalibration(int command, int percent);
    void startStep(TBarState &bar, int command);
    QString failureOf(const Calibration &calibration) const;
    void endCalibration(const Calibration &calibration);
    void sendProgress(int command, int quarter);
    bool isWaiting(int command) const;
    void finishReset(const std::function<void(bool, const std::string &)> &result);

    VirtualClock &m_clock;
    const Faults &m_faults;
    std::shared_ptr<Work> m_work;
    mutable std::mutex m_mutex;
    DeviceState m_state;
    const int m_linkDelay;
    const bool m_hasCalibrationResults;
    QList<Calibration> m_waiting; // for finishCalibration()
    int m_calibrationStep = 0;
    int m_calibrationRun = 0; // counts calibrations that begin and T-Bar phases that are left
    KeyListener m_keyListener;
    LinkListener m_netListener;
    LinkListener m_usbListener;
    CalibrationListener m_calibrationListener;
};

}
