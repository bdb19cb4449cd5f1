#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// The walk over the keys of the key check list.
std::unique_ptr<PageTest> makeKeyWalkTest();

} // namespace LCD::RepairPages
