#include "services/services.h"

#include "component/servicehost.h"

namespace panelhost {

Services::Services(Device &device, Journal &journal, const Faults &faults, bool changedOnSubscribe,
                   const LogExportOptions &exportOptions)
    : keyboard(device, journal, faults), factoryModeBiz(device, journal),
      networkPort(device, journal, faults, changedOnSubscribe), usb(device, journal, faults, changedOnSubscribe),
      tbarCalibration(device, journal), config(journal), logExport(exportOptions, journal, faults),
      factoryReset(device, journal)
{
}

// The component casts the pointer without a check, so it must be a pointer to exactly this interface.
void Services::addTo(ServiceHost &host)
{
    using namespace LCD::FactoryMode;
    host.addService("lcdKeyboardEvent", static_cast<IKeyboardEvent *>(&keyboard));
    host.addService("lcdFactoryModeBiz", static_cast<IFactoryModeBiz *>(&factoryModeBiz));
    host.addService("lcdMemoryCacheNetworkPort", static_cast<INetworkPort *>(&networkPort));
    host.addService("lcdMemoryCacheNodeUSB", static_cast<IUSB *>(&usb));
    host.addService("lcdMemoryCacheScreenDetail", &screenDetail);
    host.addService("lcdTBarCalibration", static_cast<ITBarCalibration *>(&tbarCalibration));
    host.addService("lcdConfig", static_cast<IConfig *>(&config));
    host.addService("lcdLogExport", static_cast<LCD::RepairMode::ILogExport *>(&logExport));
    host.addService("lcdFactoryReset", static_cast<LCD::RepairMode::IFactoryReset *>(&factoryReset));
}

}
