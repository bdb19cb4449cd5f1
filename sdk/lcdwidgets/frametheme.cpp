#include "frametheme.h"

#include <algorithm>
#include <cmath>

namespace LCD::Widget {

namespace {

constexpr QSize DesignSize(800, 480);
constexpr int NarrowestWithLogColumn = 600;
constexpr int LargestContentFont = 120;

double scaleFor(const QSize &frame)
{
    const double fitting =
        std::min(double(frame.width()) / DesignSize.width(), double(frame.height()) / DesignSize.height());
    // A small screen is read from a shorter distance, so text may shrink, but less than the screen.
    return fitting >= 1.0 ? std::min(fitting, 2.5) : std::pow(std::max(fitting, 0.2), 0.85);
}

}

Metrics::Metrics(const QSize &frame) : m_scale(scaleFor(frame))
{
    titleBar = length(68);
    buttonBar = length(88);
    padding = length(24);
    gap = length(12);
    logColumn = frame.width() >= NarrowestWithLogColumn ? frame.width() * 3 / 10 : 0;
    logStrip = length(34);
    smallestFont = std::max(7, length(13));
}

int Metrics::contentFont(int size) const
{
    return std::clamp(length(std::min(size, LargestContentFont)), smallestFont, length(LargestContentFont));
}

int Metrics::length(int designed) const
{
    return int(std::lround(designed * m_scale));
}

}
