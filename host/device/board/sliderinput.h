#pragma once

#include "device/board/slidercalibration.h"
#include "device/board/udevmonitor.h"
#include "device/tbarstate.h"

#include <QtCore/QList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace panelhost {

/// The T-Bar of a board: an axis of an EvdevInput, or a channel of an IIO device.
class SliderInput
{
public:
    /// A channel of an IIO device, such as an analog-to-digital converter.
    struct IioChannel
    {
        QString device;  ///< name that the driver gives, such as "ads1015"
        QString channel; ///< such as "voltage1": the value is in the attribute in_voltage1_raw
        /// Without events, or as long as the T-Bar moves, the channel is read at this rate.
        int readingsPerSecond = 50;
        bool usesEvents = true; ///< if the driver has threshold events
    };

    struct Configuration
    {
        std::optional<IioChannel> iio; ///< empty: the values come through setRaw()
        /// The values at the ends if there is no calibration yet; empty: the limits that setRaw() states.
        std::optional<SliderEnds> range;
        double tolerance = TBarState::DefaultTolerance; ///< as in TBarState
        double resolution = 0.01; ///< the smallest movement that is reported, in units of position
        QString stateFile;        ///< where the calibrated ends are kept
    };

    struct Callbacks
    {
        std::function<void(double position)> moved; ///< from 0 (bottom) to 1 (top), in thousandths
        /// Called with a sentence when the T-Bar is missing or can't be read, and with an empty one when it works
        /// again.
        std::function<void(const QString &problem)> status;
    };

    SliderInput(const Configuration &configuration, Callbacks callbacks);
    ~SliderInput();

    /// Loads the calibration and begins to read the IIO channel, if any. The T-Bar also works without a calibration. If
    /// the stored one can't be used, sets @p warning to a sentence.
    void start(QString *warning);
    QList<EventSource *> sources();

    /// Sets the value of the axis and the limits that its driver states. Not for an IIO channel.
    void setRaw(int value, int minimum, int maximum);
    /// Call it when the axis has disappeared. Its value is unknown until the next setRaw().
    void setMissing(const QString &problem);

    /// Takes the calibration step @p command (see device/calibrationcommand.h) with the T-Bar where it is. Returns why
    /// the step failed; empty if it was successful. The last step stores the ends that were found.
    QString calibrate(int command);

    std::optional<double> position() const { return m_position; }

private:
    class IioReader;

    std::pair<int, int> restingRange(int value) const;
    void update(int value);
    void report(double exactPosition);
    SliderEnds ends() const;
    QString store();
    void setProblem(const QString &problem);

    const Configuration m_configuration;
    const Callbacks m_callbacks;
    std::unique_ptr<IioReader> m_iio;
    std::optional<SliderEnds> m_calibrated;
    SliderEnds m_range;
    std::optional<int> m_value;
    std::optional<double> m_position; // as reported
    std::optional<SliderCalibration> m_calibration;
    QString m_problem;
};

}
