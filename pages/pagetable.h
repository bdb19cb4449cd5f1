#pragma once

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace LCD::RepairPages {

class PageTest;

/// One page: what it shows, what it needs, and the test behind it. Texts are
/// keys of the catalogues.
struct PageInfo
{
    std::vector<const char *> containerKeys;
    const char *title;
    const char *icon;
    std::vector<const char *> steps;
    std::vector<const char *> services; ///< without these the test can't run
    int panelMode;
    std::unique_ptr<PageTest> (*makeTest)();
};

/// All pages. The rows stay where they are as long as the library is loaded.
const std::vector<PageInfo> &pageTable();

/// nullptr when no page has this container key.
const PageInfo *findPage(const QString &containerKey);

} // namespace LCD::RepairPages
