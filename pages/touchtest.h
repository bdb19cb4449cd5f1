#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Returns a test of the touch screen. It passes as soon as the operator has touched all cells of the page.
std::unique_ptr<PageTest> makeTouchTest();

}
