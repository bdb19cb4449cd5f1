#pragma once

#include "lcd/repairmode/ilcdrepairmode.h"

#include <QtCore/QHash>

namespace LCD::RepairPages {

class RepairPage;
struct PageInfo;

/// The component "lcd.repair.mode". Creates each page of the table when it is first shown, and keeps it. At most one
/// page is open. GUI thread.
class RepairMode : public LCD::RepairMode::ILcdRepairMode
{
    Q_OBJECT

public:
    explicit RepairMode(QWidget *parent);
    ~RepairMode() override;

    QStringList containerKeys() const override;
    bool showPage(const QString &containerKey) override;
    void leavePage() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    RepairPage *pageOf(const PageInfo &info);

    QHash<const PageInfo *, RepairPage *> m_pages;
    RepairPage *m_open = nullptr;
};

}
