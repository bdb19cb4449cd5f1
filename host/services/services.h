#pragma once

#include "services/configservice.h"
#include "services/factorymodebizservice.h"
#include "services/factoryresetservice.h"
#include "services/keyboardservice.h"
#include "services/logexportservice.h"
#include "services/networkportservice.h"
#include "services/tbarcalibrationservice.h"
#include "services/usbservice.h"

namespace panelhost {

class ServiceHost;

/// All services of a device. They must outlive the component.
struct Services
{
    /// @p changedOnSubscribe: whether a new subscriber to the changes of a link service gets the current value, see
    /// LinkSubscriptions. @p exportOptions: what the log export writes, and where to.
    Services(Device &device, Journal &journal, const Faults &faults, bool changedOnSubscribe,
             const LogExportOptions &exportOptions = {});

    /// Adds the services to @p host under the names of the contract.
    void addTo(ServiceHost &host);

    KeyboardService keyboard;
    FactoryModeBizService factoryModeBiz;
    NetworkPortService networkPort;
    UsbService usb;
    TBarCalibrationService tbarCalibration;
    ConfigService config;
    LogExportService logExport;
    FactoryResetService factoryReset;
    /// Service "lcdMemoryCacheScreenDetail". It is looked up, but none of its functions is called.
    struct
    {
    } screenDetail;
};

}
