#pragma once

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace LCD::RepairPages {

class PageTest;

/// One page: what it shows, what it needs, and its test. Texts are keys of the catalogs.
struct PageInfo
{
    std::vector<const char *> containerKeys;
    const char *title;
    const char *icon;
    std::vector<const char *> steps;
    std::vector<const char *> services; ///< the services without which the test can't run
    int panelMode;
    std::unique_ptr<PageTest> (*makeTest)();
};

/// Returns all pages. The rows stay valid as long as the library is loaded.
const std::vector<PageInfo> &pageTable();

/// Returns the page with this container key; nullptr if there is none.
const PageInfo *findPage(const QString &containerKey);

}
