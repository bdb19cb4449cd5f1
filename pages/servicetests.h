#pragma once

#include <memory>

namespace LCD::RepairPages {

class PageTest;

/// Returns what the page Log Export does: it lets the host write its logs to a USB stick.
std::unique_ptr<PageTest> makeLogExport();
/// Returns what the page Factory Reset does: it asks for a confirmation and lets the host reset the device.
std::unique_ptr<PageTest> makeFactoryReset();

}
