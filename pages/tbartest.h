#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Returns a test that calibrates the T-Bar step by step. It fails if a step isn't reported as done in time.
std::unique_ptr<PageTest> makeTBarTest();

}
