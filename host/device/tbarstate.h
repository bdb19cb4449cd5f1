#pragma once

#include <QtCore/QString>

#include <optional>

namespace panelhost {

enum class TBarType {
    Fader = 0,
    Slider = 1
};

/// An end of the T-Bar's travel. Both types of T-Bar have the same two ends.
enum class TBarEnd {
    Bottom,
    Top
};

/// Returns "bottom" or "top".
QString tbarEndName(TBarEnd end);

/// The T-Bar and its calibration.
struct TBarState
{
    static constexpr double DefaultTolerance = 0.05; ///< in units of position: 5 % of the travel

    TBarType type = TBarType::Slider;
    double position = 0; ///< from 0 (bottom) to 1 (top)
    /// Distance from an end, in units of position, at which the bar still counts as being there.
    double tolerance = DefaultTolerance;
    QString step;                  ///< the running calibration step; empty if there is none
    std::optional<TBarEnd> target; ///< where the bar must be for the next calibration step
    QString failure;               ///< message of the last step that failed since the calibration began

    /// Returns whether the bar is at @p end or no further than the tolerance away from it.
    bool isAt(TBarEnd end) const;
    bool operator==(const TBarState &o) const
    {
        return type == o.type && position == o.position && tolerance == o.tolerance && step == o.step
            && target == o.target && failure == o.failure;
    }
};

}
