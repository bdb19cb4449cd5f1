#pragma once

#include "mirel/api.h"
#include "mirel/component.h"

namespace LCD::FactoryModeImpl {
class FactoryModeWidget;
}

namespace mirel {

// The one component of this library. All four members are this library's own, whatever the SDK makes of the template.
template <>
void *ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::creator();
template <>
void ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::deletor(void *object);
template <>
IMessageHandler *ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::getMessageHandler(void *object);
template <>
ComponentInfo ComponentTmpl<LCD::FactoryModeImpl::FactoryModeWidget>::componentInfo;

}

extern "C" {

/// Ends with a null pointer.
extern mirel::ComponentInfo *const lcdfactorymodeimpl_mirel_componentInfoTable[2];

/// What this library is and offers. May be called at any time after loading.
const mirel::PluginInfo *pluginfo();

/// Hands over the host, a mirel::IHost that outlives every component. Before this no service is found.
void pluginit(void *host);
}
