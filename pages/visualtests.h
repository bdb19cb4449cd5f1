#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Return the tests whose verdict the operator gives after watching the device.
std::unique_ptr<PageTest> makeScreenLightTest();
std::unique_ptr<PageTest> makeScreenBadPixelTest();
std::unique_ptr<PageTest> makeButtonLightTest();

}
