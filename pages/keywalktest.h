#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Returns a test that walks through the keys of the key check list.
std::unique_ptr<PageTest> makeKeyWalkTest();

}
