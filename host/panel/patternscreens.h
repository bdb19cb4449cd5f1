#pragma once

#include "device/board/boardconfiguration.h"
#include "time/realtimetimer.h"

#include <memory>
#include <vector>

namespace panelhost {

class Device;
class PatternWindow;

/// Shows the test patterns of a device on the outputs that the screens of a board are connected to: each in a window
/// that fills the output as long as there is a pattern. GUI thread.
class PatternScreens
{
public:
    /// @p device must outlive it.
    PatternScreens(const Device &device, const QVector<ScreenConfiguration> &screens);
    ~PatternScreens();

private:
    Q_DISABLE_COPY(PatternScreens)

    void refresh();

    const Device &m_device;
    std::vector<std::unique_ptr<PatternWindow>> m_windows;
    RealTimeTimer m_refresh;
};

}
