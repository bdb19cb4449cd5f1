#include "component/factorymodecontroller.h"

#include "device/device.h"
#include "journal/journal.h"
#include "lcd/factorymode/ilcdfactorymode.h"
#include "lcd/lcd.h"
#include "lcd/repairmode/ilcdrepairmode.h"

namespace panelhost {

FactoryModeController::FactoryModeController(LCD::FactoryMode::ILcdFactoryMode &widget, Lcd &lcd, Device &device,
                                             Journal &journal)
    : m_widget(widget), m_lcd(lcd), m_device(device), m_journal(journal)
{
    connect(&widget, SIGNAL(requestShowContainer(QString)), this, SLOT(onRequestShowContainer(QString)));
    connect(&widget, SIGNAL(requestExitFactoryMode()), this, SLOT(onRequestExitFactoryMode()));
    connect(&lcd, &Lcd::containerLeft, this, [this] { m_lcd.showComponent(); });
    connect(&lcd, &Lcd::factoryModeWanted, this, &FactoryModeController::enter);
}

void FactoryModeController::setRepairMode(LCD::RepairMode::ILcdRepairMode *repairMode)
{
    m_repairMode = repairMode;
    m_lcd.setRepairMode(repairMode);
    connect(repairMode, SIGNAL(backRequested()), this, SLOT(onRepairBackRequested()));
}

void FactoryModeController::setUp(const QString &share, const QSize &size)
{
    m_lcd.setComponent(&m_widget);
    m_widget.registerTestPatternDisplayCallback(
        "panelhost", [this](int type, int index, int level) { onTestPattern(type, index, level); });
    if (!share.isEmpty())
        m_widget.setFactoryModeData(QStringLiteral("menuConfigPath"), share);
    m_widget.setFactoryModeSize(size);
}

void FactoryModeController::enter()
{
    leaveRepairPage();
    m_lcd.showComponent();
    m_device.setFactoryMode(true);
    m_widget.enterFactoryMode();
    m_isEntered = true;
}

void FactoryModeController::exit()
{
    leaveRepairPage();
    m_widget.exitFactoryMode();
    m_isEntered = false;
    m_device.setFactoryMode(false);
    m_lcd.showHome();
}

void FactoryModeController::onRequestShowContainer(const QString &containerKey)
{
    m_journal.add(Journal::Kind::Signal, QStringLiteral("requestShowContainer"),
                  {{QStringLiteral("containerKey"), containerKey}});
    if (m_repairMode && m_repairMode->showPage(containerKey))
        m_lcd.showRepairMode();
    else
        m_lcd.showContainer(containerKey);
}

void FactoryModeController::onRepairBackRequested()
{
    m_journal.add(Journal::Kind::Signal, QStringLiteral("backRequested"));
    leaveRepairPage();
    m_lcd.showComponent();
}

void FactoryModeController::leaveRepairPage()
{
    if (m_repairMode)
        m_repairMode->leavePage();
}

void FactoryModeController::onRequestExitFactoryMode()
{
    m_journal.add(Journal::Kind::Signal, QStringLiteral("requestExitFactoryMode"));
    exit();
}

// The component may report a pattern on any thread; the device takes it on any.
void FactoryModeController::onTestPattern(int type, int index, int level)
{
    m_journal.add(Journal::Kind::Call, QStringLiteral("testPatternDisplay"),
                  {{QStringLiteral("type"), type}, {QStringLiteral("index"), index}, {QStringLiteral("level"), level}});
    m_device.setPatternLevel(level);
}

}
