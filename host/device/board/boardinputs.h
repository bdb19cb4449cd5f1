#pragma once

#include "device/board/boardconfiguration.h"
#include "device/board/eventloop.h"
#include "device/board/hardwareevent.h"

namespace panelhost {

/// The keys, knob, T-Bar and ports of a board. Everything that they report is a hardware event. They live on a thread
/// of their own, on which the handler is called.
class BoardInputs
{
public:
    BoardInputs(const BoardConfiguration &board, HardwareHandler handler);
    ~BoardInputs();

    /// Starts all parts. Returns false and sets @p error to a sentence if one of them isn't there.
    bool start(QString *error);

    // Return immediately. Any thread.

    /// Takes the input devices for this process, or releases them.
    void setGrabbed(bool grabbed);
    /// Begins the calibration step @p command. Its result is an event.
    void calibrate(int command);

private:
    const BoardConfiguration m_board;
    const HardwareHandler m_handler;
    EventLoop m_loop;
};

}
