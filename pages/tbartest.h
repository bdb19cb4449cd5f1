#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// The calibration of the T-Bar, step by step. A step that the calibration
/// doesn't report as done fails the test.
std::unique_ptr<PageTest> makeTBarTest();

} // namespace LCD::RepairPages
