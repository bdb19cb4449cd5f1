#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

// The tests of ports: they pass by themselves as soon as all ports are linked.
std::unique_ptr<PageTest> makeNetTest();
std::unique_ptr<PageTest> makeUsbTest();

} // namespace LCD::RepairPages
