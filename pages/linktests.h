#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Return the tests of the net ports and of the USB ports. A test passes as soon as all ports are linked.
std::unique_ptr<PageTest> makeNetTest();
std::unique_ptr<PageTest> makeUsbTest();

}
