#pragma once

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QString>

namespace LCD::FactoryMode {
class ILcdFactoryMode;
}

namespace LCD::RepairMode {
class ILcdRepairMode;
}

namespace panelhost {

class Device;
class Journal;
class Lcd;

/// Does for the component's widget what lies with its host: gives it size and configuration, enters and leaves
/// factory mode, and answers its two requests with pages of the repair mode or of the LCD. Signals are connected by
/// name, since the widget's meta-object is the component's. GUI thread.
class FactoryModeDriver : public QObject
{
    Q_OBJECT

public:
    FactoryModeDriver(LCD::FactoryMode::ILcdFactoryMode &widget, Lcd &lcd, Device &device, Journal &journal);

    /// The pages that answer containers; a container without a page, and each one without this, gets a page of the LCD.
    /// Before setUp().
    void setRepairMode(LCD::RepairMode::ILcdRepairMode *repairMode);
    /// Configuration and size, once, before the first enter(). An empty @p share leaves the component's default.
    void setUp(const QString &share, const QSize &size);
    void enter();
    void exit();

private Q_SLOTS:
    void onRequestShowContainer(const QString &containerKey);
    void onRequestExitFactoryMode();
    void onRepairBackRequested();

private:
    void leaveRepairPage();
    void onTestPattern(int type, int index, int level);

    LCD::FactoryMode::ILcdFactoryMode &m_widget;
    LCD::RepairMode::ILcdRepairMode *m_repairMode = nullptr;
    Lcd &m_lcd;
    Device &m_device;
    Journal &m_journal;
};

}
