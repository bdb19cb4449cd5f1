#include "device/tbarstate.h"

namespace panelhost {

QString tbarEndName(TBarEnd end)
{
    return end == TBarEnd::Top ? QStringLiteral("top") : QStringLiteral("bottom");
}

bool TBarState::isAt(TBarEnd end) const
{
    constexpr double RoundingError = 1e-9; // 1 - 0.95 is a little more than 0.05
    return qAbs(position - (end == TBarEnd::Top ? 1 : 0)) <= tolerance + RoundingError;
}

}
