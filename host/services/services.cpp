#include "services/services.h"

#include "component/servicehost.h"

namespace panelhost {

Services::Services(Device &device, Journal &journal, const Faults &faults, LinkBehaviour behaviour)
    : keyboard(device, journal, faults), factoryModeBiz(device, journal),
      networkPort(device, journal, faults, behaviour), usb(device, journal, faults, behaviour),
      tbarCalibration(device, journal), config(journal)
{
}

// A component makes no type check: each name stands for exactly the interface.
void Services::offerTo(ServiceHost &host)
{
    using namespace LCD::FactoryMode;
    host.offer("lcdKeyboardEvent", static_cast<IKeyboardEvent *>(&keyboard));
    host.offer("lcdFactoryModeBiz", static_cast<IFactoryModeBiz *>(&factoryModeBiz));
    host.offer("lcdMemoryCacheNetworkPort", static_cast<INetworkPort *>(&networkPort));
    host.offer("lcdMemoryCacheNodeUSB", static_cast<IUSB *>(&usb));
    host.offer("lcdMemoryCacheScreenDetail", &screenDetail);
    host.offer("lcdTBarCalibration", static_cast<ITBarCalibration *>(&tbarCalibration));
    host.offer("lcdConfig", static_cast<IConfig *>(&config));
}

}
