#pragma once

#include "lcd/factorymode/iconfig.h"
#include "lcd/factorymode/ifactorymodebiz.h"
#include "lcd/factorymode/ikeyboardevent.h"
#include "lcd/factorymode/inetworkport.h"
#include "lcd/factorymode/itbarcalibration.h"
#include "lcd/factorymode/iusb.h"
#include "mirel/api.h"

namespace LCD::FactoryModeImpl {

// The host's services. Each gives nullptr while there is no host, or when the host has no such service. The objects
// are not owned and outlive the component.

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

/// The component's own widget as the host offers it back, seen as @p Widget.
template <class Widget>
Widget *factoryModeWidgetService()
{
    return mirel::api::get().service<Widget>("lcdFactoryModeWidget");
}

/// Looked up and kept by the bad pixel test; nothing is called on it.
inline void *screenDetailService()
{
    return mirel::api::get().service<void>("lcdMemoryCacheScreenDetail");
}

}
