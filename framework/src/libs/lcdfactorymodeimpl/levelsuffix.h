#pragma once

#include "statecodes.h"

#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// Returns " 30%" for the level 30, with a leading blank. Returns an empty string if @p level isn't one of the five
/// levels.
inline QString levelSuffix(int level)
{
    switch (level) {
    case StateLevel10:
    case StateLevel30:
    case StateLevel50:
    case StateLevel70:
    case StateLevel100:
        return QStringLiteral(" %1%").arg(level);
    default:
        return {};
    }
}

/// Returns levelSuffix(@p level). While a level test is idle, returns the suffix of the level that it will show first.
inline QString brightnessPercentSuffix(int level)
{
    return levelSuffix(level == StateIdle ? StateLevel10 : level);
}

}
