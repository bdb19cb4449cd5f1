#pragma once

#include "component/factorymodecontroller.h"
#include "component/servicehost.h"
#include "device/board/boarddevice.h"
#include "device/simulated/simulateddevice.h"
#include "journal/logcapture.h"
#include "lcd/lcd.h"
#include "lcd/screenlogger.h"
#include "output/temporarydirectory.h"
#include "services/services.h"
#include "session/session.h"

#include <optional>

namespace panelhost {

/// A session on a simulated device or on a board. The order of the members matters: the component is destroyed first,
/// then the members in reverse order.
class DeviceSession final : public Session
{
public:
    explicit DeviceSession(const Options &options);
    ~DeviceSession() override;

    static bool isAnyAlive() { return s_isAlive; }

    /// Loads the component and the pages, if any, and enters factory mode. Returns false and sets @p error on failure.
    bool load(QString *error);
    /// Only loads the component, in this process.
    bool loadLibrary(const LoadObserver &observer);
    /// Only loads the library of the repair mode's pages, in this process. Call it after loadLibrary().
    bool loadPagesLibrary(const LoadObserver &observer);
    /// Returns the library that was loaded last.
    const ComponentLibrary &lastLoaded() const { return m_hasLoadedComponent && m_pages ? *m_pages : m_library; }

    const Options &options() const override { return m_options; }
    QString shareDirectory() const override { return m_share; }
    const ComponentLibrary &library() const override { return m_library; }
    const ComponentLibrary *pagesLibrary() const override { return m_pages ? &*m_pages : nullptr; }
    QStringList serviceNames() const override;
    VirtualClock &clock() override { return m_clock; }
    Device &device() override { return *m_device; }
    Journal &journal() override { return m_journal; }
    Operator &panelOperator() override { return m_operator; }
    Faults &faults() override { return m_faults; }
    QWidget *lcd() override { return &m_lcd; }
    QStringList languages() const override;
    QString language() const override;
    bool setLanguage(const QString &code) override;
    bool isInFactoryMode() const override;
    void enterFactoryMode() override;
    void exitFactoryMode() override;

private:
    std::unique_ptr<Device> makeDevice();
    HardwareHandler hardwareHandler();
    LogExportOptions exportOptions();
    bool applyOptions(QString *error);
    bool loadLibrary(ComponentLibrary &library, const LoadObserver &observer);
    bool probe(ComponentLibrary &library);
    bool loadComponent(QString *error);
    bool loadPages(QString *error);
    void endTurn();

    // The clock, the message handler and the component's pointer to its host exist once in a process.
    static bool s_isAlive;

    std::shared_ptr<DeviceSession *> m_alive = std::make_shared<DeviceSession *>(this); ///< for late input of the board
    const Options m_options;
    const QString m_share;
    VirtualClock &m_clock;
    ComponentLibrary m_library;
    std::optional<ComponentLibrary> m_pages;
    bool m_hasLoadedComponent = false;
    Faults m_faults;
    Journal m_journal;
    LogCapture m_logCapture;
    BoardDevice *m_board = nullptr; ///< the device, if it is a board
    std::unique_ptr<Device> m_device;
    std::optional<TemporaryDirectory> m_usbStick;
    Services m_services;
    ServiceHost m_host;
    Lcd m_lcd;
    ScreenLogger m_screenLogger;
    std::optional<FactoryModeController> m_controller;
    Operator m_operator;
};

}
