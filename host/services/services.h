#pragma once

#include "services/config.h"
#include "services/factorymodebiz.h"
#include "services/keyboard.h"
#include "services/networkport.h"
#include "services/tbarcalibration.h"
#include "services/usb.h"

namespace panelhost {

class ServiceHost;

/// The services of a device, one of each, and the names under which a component finds them. They outlive it.
struct Services
{
    Services(Device &device, Journal &journal, const Faults &faults, LinkBehaviour behaviour);

    void addTo(ServiceHost &host);

    KeyboardService keyboard;
    FactoryModeBizService factoryModeBiz;
    NetworkPortService networkPort;
    UsbService usb;
    TBarCalibrationService tbarCalibration;
    ConfigService config;
    /// Service "lcdMemoryCacheScreenDetail": looked up, and nothing is ever called on it.
    struct
    {
    } screenDetail;
};

}
