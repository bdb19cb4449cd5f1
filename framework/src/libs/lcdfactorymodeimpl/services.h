#pragma once

#include "lcd/factorymode/iconfig.h"
#include "lcd/factorymode/ifactorymodebiz.h"
#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/factorymode/inetworkport.h"
#include "lcd/factorymode/itbarcalibration.h"
#include "lcd/factorymode/iusb.h"
#include "mirel/api.h"

namespace LCD::FactoryModeImpl {

// The services of the host. Each function returns nullptr if there is no host or if the host has no such service. The
// host owns the objects; they outlive the component.

inline FactoryMode::IKeyboardEvent *keyboardEventService()
{
    return mirel::api::get().service<FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
}

inline FactoryMode::IFactoryModeBiz *factoryModeBizService()
{
    return mirel::api::get().service<FactoryMode::IFactoryModeBiz>("lcdFactoryModeBiz");
}

inline FactoryMode::INetworkPort *networkPortService()
{
    return mirel::api::get().service<FactoryMode::INetworkPort>("lcdMemoryCacheNetworkPort");
}

inline FactoryMode::IUSB *usbService()
{
    return mirel::api::get().service<FactoryMode::IUSB>("lcdMemoryCacheNodeUSB");
}

inline FactoryMode::ITBarCalibration *tbarCalibrationService()
{
    return mirel::api::get().service<FactoryMode::ITBarCalibration>("lcdTBarCalibration");
}

inline FactoryMode::IConfig *configService()
{
    return mirel::api::get().service<FactoryMode::IConfig>("lcdConfig");
}

/// Returns the component's own widget, which the host offers as a service, as a @p Widget.
template <class Widget>
Widget *factoryModeWidgetService()
{
    return mirel::api::get().service<Widget>("lcdFactoryModeWidget");
}

/// The bad pixel test looks this service up and keeps the pointer, but never calls it.
inline void *screenDetailService()
{
    return mirel::api::get().service<void>("lcdMemoryCacheScreenDetail");
}

}
