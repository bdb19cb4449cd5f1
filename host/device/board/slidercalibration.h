#pragma once

#include <QtCore/QString>

#include <optional>

namespace panelhost {

/// The values of a slider at its two ends. `top` is lower than `bottom` if the slider counts downwards.
struct SliderEnds
{
    int bottom = 0;
    int top = 0;
    bool operator==(const SliderEnds &o) const { return bottom == o.bottom && top == o.top; }
};

/// Returns the position of @p value, from 0 (bottom) to 1 (top).
double sliderPosition(const SliderEnds &ends, int value);

/// Returns the ends that saveSliderEnds() has written; nothing if the file doesn't exist. Sets @p error, and returns
/// nothing, if the file can't be read or holds something else.
std::optional<SliderEnds> loadSliderEnds(const QString &path, QString *error);
/// Replaces the file, so that it has either the old or the new ends even after a power cut. Makes the directory if
/// needed. Returns false and sets @p error on failure; the file keeps its content then.
bool saveSliderEnds(const QString &path, const SliderEnds &ends, QString *error);

/// Finds the ends of a slider while an operator moves it from end to end. The commands are those of
/// device/calibrationcommand.h.
class SliderCalibration
{
public:
    /// @p range holds the values at the ends according to the driver or the profile. A slider need not reach them.
    /// @p tolerance, in units of position, is the distance that two measurements of the same end may have.
    SliderCalibration(const SliderEnds &range, double tolerance) : m_range(range), m_tolerance(tolerance) {}

    /// Takes the step @p command with the slider at @p value. Returns why it failed; empty if it was successful.
    QString step(int command, int value);
    /// Returns the ends that were found by a successful "end" step.
    std::optional<SliderEnds> result() const { return m_result; }

private:
    QString measure(std::optional<int> SliderCalibration::*end, bool isTop, int value);
    QString finish(int value);
    double distance(int left, int right) const;

    SliderEnds m_range;
    double m_tolerance;
    std::optional<int> m_top;
    std::optional<int> m_bottom;
    std::optional<SliderEnds> m_result;
};

}
