#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

// The tests that the operator judges by eye.
std::unique_ptr<PageTest> makeScreenLightTest();
std::unique_ptr<PageTest> makeScreenBadPixelTest();
std::unique_ptr<PageTest> makeButtonLightTest();

} // namespace LCD::RepairPages
