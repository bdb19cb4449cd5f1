#include "device/board/boardinputs.h"

namespace panelhost {

BoardInputs::BoardInputs(const BoardConfiguration &board, HardwareHandler handler)
    : m_board(board), m_handler(std::move(handler))
{
}

BoardInputs::~BoardInputs() = default;

bool BoardInputs::start(QString *)
{
    return true;
}

void BoardInputs::setGrabbed(bool)
{
}

void BoardInputs::calibrate(int)
{
}

}
