#include "session/devicesession.h"

#include "device/keylist.h"
#include "diagnostics/reporterror.h"
#include "lcd/factorymode/ilcdfactorymode.h"
#include "lcd/repairmode/ilcdrepairmode.h"
#include "lcd/translate/lcdfwtranslatemanager.h"
#include "session/loadprobe.h"

#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

// Returns an empty string if the session has no pages.
QString pagesPathOf(const Session::Options &options)
{
    if (options.pages == Session::noPages)
        return {};
    if (!options.pages.isEmpty())
        return options.pages;
    const QString path = defaultComponentPath(repairModeComponent);
    return QFileInfo::exists(path) ? path : QString();
}

SimulatedDevice::Configuration configurationOf(const Session::Options &options, const QString &share)
{
    return {readKeyList(share), options.tbarType,  options.tbarTolerance,        options.netPorts,
            options.usbPorts,   options.linkDelay, options.hasCalibrationResults};
}

}

bool DeviceSession::s_isAlive = false;

DeviceSession::DeviceSession(const Options &options)
    : m_options(options),
      m_share(options.share.isEmpty() ? shareDirectoryOf(options) : QFileInfo(options.share).absoluteFilePath()),
      m_clock(VirtualClock::instance()),
      m_library(options.component.isEmpty() ? defaultComponentPath() : options.component),
      m_journal(options.journalSink, options.journalLineLimit), m_logCapture(m_journal, m_share),
      m_device(makeDevice()), m_services(*m_device, m_journal, m_faults, options.changedOnSubscribe, exportOptions()),
      m_host(m_journal, m_faults), m_lcd(options.lcdSize), m_screenLogger(m_journal, m_lcd), m_operator(*this)
{
    s_isAlive = true;
    const QString pages = pagesPathOf(options);
    if (!pages.isEmpty())
        m_pages.emplace(pages, repairModeComponent);
    m_services.addTo(m_host);
}

// Deletes the pages and the component first, while everything that they can call still exists, and then what they have
// scheduled.
DeviceSession::~DeviceSession()
{
    m_alive.reset();
    m_clock.setObserver({});
    m_controller.reset();
    if (m_pages)
        m_pages->destroy();
    m_library.shutDown();
    m_pages.reset();
    m_clock.restart();
    s_isAlive = false;
}

std::unique_ptr<Device> DeviceSession::makeDevice()
{
    const SimulatedDevice::Configuration configuration = configurationOf(m_options, m_share);
    if (!m_options.board)
        return std::make_unique<SimulatedDevice>(configuration, m_clock, m_faults);
    auto board = std::make_unique<BoardDevice>(*m_options.board, configuration, m_clock, m_faults, hardwareHandler());
    m_board = board.get();
    return board;
}

// Called on threads of the board. The operator performs the action when the clock has caught up with the wall clock.
HardwareHandler DeviceSession::hardwareHandler()
{
    return [&clock = m_clock, alive = std::weak_ptr(m_alive)](const HardwareEvent &event) {
        clock.post([alive, event] {
            const auto session = alive.lock();
            const auto kind = actionKind(event.action);
            QString error;
            if (session && kind && !(*session)->m_operator.perform({*kind, event.arguments}, &error))
                reportError(error);
        });
    };
}

LogExportOptions DeviceSession::exportOptions()
{
    LogExportOptions exported{m_options.usbStick, m_options.sessionLine, m_options.deriveRuns};
    if (m_options.usbStick == noUsbStick)
        exported.directory.clear();
    else if (m_options.usbStick == temporaryUsbStick)
        exported.directory = m_usbStick.emplace().path();
    return exported;
}

bool DeviceSession::applyOptions(QString *error)
{
    for (const InitialFault &fault : m_options.faults) {
        if (!m_faults.set(fault.name, true, fault.arguments, error))
            return false;
    }
    if (setLanguage(m_options.language))
        return true;
    *error = QStringLiteral("There is no catalog for the language \"%1\"; available: %2.")
                 .arg(m_options.language, languages().join(QStringLiteral(", ")));
    return false;
}

bool DeviceSession::loadLibrary(ComponentLibrary &library, const LoadObserver &observer)
{
    library.setObserver(observer);
    return library.locate() && library.open() && library.check()
        && library.initialize(static_cast<mirel::IHost *>(&m_host)) && library.create();
}

bool DeviceSession::loadLibrary(const LoadObserver &observer)
{
    return loadLibrary(m_library, observer);
}

bool DeviceSession::loadPagesLibrary(const LoadObserver &observer)
{
    return m_pages && loadLibrary(*m_pages, observer);
}

bool DeviceSession::probe(ComponentLibrary &library)
{
    if (!QFileInfo(library.path()).isFile())
        return true;
    const auto load = [&](const LoadObserver &observer) {
        m_journal.setSink({}); // only in the separate process
        loadLibrary(library, observer);
    };
    const LoadReport report = probeLoading(m_library.path(), &library == &m_library ? QString() : library.path(), load);
    return report.failure.isEmpty() || library.setFailure(report.steps, report.failure);
}

bool DeviceSession::loadComponent(QString *error)
{
    const bool isLoaded = probe(m_library) && loadLibrary({});
    *error = m_library.errorString();
    return isLoaded;
}

// Called after the component was loaded: the pages use its library, which the linker then finds by its name.
bool DeviceSession::loadPages(QString *error)
{
    m_hasLoadedComponent = true;
    if (!m_pages)
        return true;
    const bool isLoaded = probe(*m_pages) && loadPagesLibrary({});
    *error = m_pages->errorString();
    return isLoaded;
}

bool DeviceSession::load(QString *error)
{
    if (!applyOptions(error) || (m_board && !m_board->start(error)) || !loadComponent(error) || !loadPages(error))
        return false;
    auto *widget = static_cast<LCD::FactoryMode::ILcdFactoryMode *>(m_library.widget());
    m_host.addService("lcdFactoryModeWidget", widget);
    m_controller.emplace(*widget, m_lcd, *m_device, m_journal);
    if (m_pages)
        m_controller->setRepairMode(static_cast<LCD::RepairMode::ILcdRepairMode *>(m_pages->widget()));
    m_controller->setUp(m_options.share.isEmpty() ? QString() : m_share, m_options.lcdSize);
    // The widget hides itself in the first iteration of the event loop. Factory mode is entered after that.
    m_clock.settle();
    if (m_options.startsInFactoryMode)
        m_controller->enter();
    else
        m_lcd.showHome();
    m_clock.setObserver([this] { endTurn(); });
    m_clock.settle();
    return true;
}

void DeviceSession::endTurn()
{
    m_screenLogger.logChanges();
    if (m_options.turnListener)
        m_options.turnListener(*this);
}

QStringList DeviceSession::serviceNames() const
{
    QStringList names;
    for (const std::string &name : m_host.serviceNames())
        names << QString::fromStdString(name);
    return names;
}

QStringList DeviceSession::languages() const
{
    return LCDFWTranslateManager::instance()->languages();
}

QString DeviceSession::language() const
{
    return LCDFWTranslateManager::instance()->language();
}

bool DeviceSession::setLanguage(const QString &code)
{
    const bool isKnown = LCDFWTranslateManager::instance()->setLanguage(code);
    m_lcd.translate();
    return isKnown;
}

bool DeviceSession::isInFactoryMode() const
{
    return m_controller->isEntered();
}

void DeviceSession::enterFactoryMode()
{
    m_controller->enter();
}

void DeviceSession::exitFactoryMode()
{
    m_controller->exit();
}

}
