#include "repairmode.h"

#include "pagetable.h"
#include "repairpage.h"

#include <utility>

namespace LCD::RepairPages {

RepairMode::RepairMode(QWidget *parent) : ILcdRepairMode(parent)
{
    setObjectName(QStringLiteral("RepairMode"));
}

// The test of an open page ends while the page is whole.
RepairMode::~RepairMode()
{
    RepairMode::leavePage();
}

QStringList RepairMode::containerKeys() const
{
    QStringList keys;
    for (const PageInfo &info : pageTable()) {
        for (const char *key : info.containerKeys)
            keys << QLatin1String(key);
    }
    return keys;
}

bool RepairMode::showPage(const QString &containerKey)
{
    const PageInfo *info = findPage(containerKey);
    if (!info)
        return false;
    leavePage();
    m_open = pageOf(*info);
    m_open->setGeometry(rect());
    m_open->show();
    m_open->raise();
    m_open->enter();
    return true;
}

void RepairMode::leavePage()
{
    RepairPage *page = std::exchange(m_open, nullptr);
    if (!page)
        return;
    page->leave();
    page->hide();
}

RepairPage *RepairMode::pageOf(const PageInfo &info)
{
    RepairPage *&page = m_pages[&info];
    if (!page) {
        page = new RepairPage(info, this);
        connect(page, &RepairPage::backRequested, this, &RepairMode::backRequested);
    }
    return page;
}

void RepairMode::resizeEvent(QResizeEvent *)
{
    if (m_open)
        m_open->setGeometry(rect());
}

}
