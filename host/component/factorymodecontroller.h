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

/// Controls the component's widget as its host: sets its size and configuration, enters and exits factory mode, and
/// shows a page of the repair mode or of the LCD when the widget requests a container. Signals are connected by name,
/// because the meta-object of the widget belongs to the component. GUI thread.
class FactoryModeController : public QObject
{
    Q_OBJECT

public:
    FactoryModeController(LCD::FactoryMode::ILcdFactoryMode &widget, Lcd &lcd, Device &device, Journal &journal);

    /// Sets the pages of the containers. A container without a page is shown by a page of the LCD. Call it before
    /// setUp().
    void setRepairMode(LCD::RepairMode::ILcdRepairMode *repairMode);
    /// Sets configuration and size. Call it once, before enter(). With an empty @p share the component uses its
    /// default.
    void setUp(const QString &share, const QSize &size);
    void enter();
    void exit();
    bool isEntered() const { return m_isEntered; }

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
    bool m_isEntered = false;
};

}
