#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Return the tests of the knob and of the joystick. A test passes as soon as the operator has made all movements.
std::unique_ptr<PageTest> makeKnobTest();
std::unique_ptr<PageTest> makeJoystickTest();

}
