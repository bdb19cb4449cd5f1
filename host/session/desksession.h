#pragma once

#include "component/factorymodedriver.h"
#include "component/servicehost.h"
#include "device/simulateddevice.h"
#include "journal/logtap.h"
#include "journal/screenwatch.h"
#include "lcd/lcd.h"
#include "services/services.h"
#include "session.h"

#include <optional>

namespace panelhost {

/// The session with a simulated device. Its parts end in the reverse of their order here, after the component has.
class DeskSession final : public Session
{
public:
    explicit DeskSession(const Options &options);
    ~DeskSession() override;

    static bool isAnyAlive() { return s_isAlive; }

    /// The climb up the states of the library, and the entry into factory mode.
    bool load(QString *error);
    /// The climb of the component alone, in this process.
    bool climb(const LoadObserver &observer);
    /// The climb of the repair mode's pages, after that of the component.
    bool climbPages(const LoadObserver &observer);
    /// The library whose loading went on last.
    const ComponentLibrary &lastLoaded() const { return m_hasLoadedComponent && m_pages ? *m_pages : m_library; }

    const Options &options() const override { return m_options; }
    QString shareDirectory() const override { return m_share; }
    const ComponentLibrary &library() const override { return m_library; }
    const ComponentLibrary *pagesLibrary() const override { return m_pages ? &*m_pages : nullptr; }
    QStringList serviceNames() const override;
    VirtualClock &clock() override { return m_clock; }
    Device &device() override { return m_device; }
    Journal &journal() override { return m_journal; }
    Operator &panelOperator() override { return m_operator; }
    Faults &faults() override { return m_faults; }
    QWidget *lcd() override { return &m_lcd; }
    QStringList languages() const override;
    QString language() const override;
    bool setLanguage(const QString &code) override;
    void enterFactoryMode() override;
    void exitFactoryMode() override;

private:
    bool applyOptions(QString *error);
    bool climb(ComponentLibrary &library, const LoadObserver &observer);
    bool probe(ComponentLibrary &library);
    bool loadComponent(QString *error);
    bool loadPages(QString *error);

    // The clock, the logger and the component's handle of its host are the process's.
    static bool s_isAlive;

    const Options m_options;
    const QString m_share;
    VirtualClock &m_clock;
    ComponentLibrary m_library;
    std::optional<ComponentLibrary> m_pages;
    bool m_hasLoadedComponent = false;
    Faults m_faults;
    Journal m_journal;
    LogTap m_logTap;
    SimulatedDevice m_device;
    Services m_services;
    ServiceHost m_host;
    Lcd m_lcd;
    ScreenWatch m_screenWatch;
    std::optional<FactoryModeDriver> m_driver;
    Operator m_operator;
};

}
