#pragma once

#include "time/virtualclock.h"

#include <QtCore/QString>

namespace panelhost {

/// Returns minutes, seconds and milliseconds as "1:05.250", from one hour on "10:01:05.250".
QString timeText(Milliseconds at);

}
