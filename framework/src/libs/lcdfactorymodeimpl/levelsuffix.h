#pragma once

#include "statecodes.h"

#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// " 30%" for a brightness level of 30, with the leading blank; empty for a number that is none of the five levels.
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

/// The percentage of the level that shows, or that is about to show while the test is idle.
inline QString brightnessPercentSuffix(int level)
{
    return levelSuffix(level == StateIdle ? StateLevel10 : level);
}

}
